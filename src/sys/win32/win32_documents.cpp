#include "sys/win32/win32_documents.h"

namespace kx::win32 {

std::unique_ptr<PageDocument> Win32Documents::FromWindow(WindowHandle) {
  return nullptr;
}

std::unique_ptr<PageDocument> Win32Documents::FromDevTools(int) {
  return nullptr;
}

}  // namespace kx::win32
