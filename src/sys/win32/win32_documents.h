#pragma once
// Browser documents on Windows: Internet Explorer engine windows through
// WM_HTML_GETOBJECT, Chromium pages through their DevTools port.
#include "sys/document_port.h"

namespace kx::win32 {

class Win32Documents final : public DocumentPort {
 public:
  std::unique_ptr<PageDocument> FromWindow(WindowHandle window) override;
  std::unique_ptr<PageDocument> FromDevTools(int port, std::string_view tab) override;
};

}  // namespace kx::win32
