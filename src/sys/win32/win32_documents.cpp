#include "sys/win32/win32_documents.h"

#include "page/devtools/devtools_document.h"
#include "sys/win32/win32_html_document.h"

namespace kx::win32 {

std::unique_ptr<PageDocument> Win32Documents::FromWindow(WindowHandle window) {
  return HtmlDocumentOfWindow(window);
}

std::unique_ptr<PageDocument> Win32Documents::FromDevTools(int port, std::string_view tab) {
  return devtools::OpenPage(port, tab);
}

}  // namespace kx::win32
