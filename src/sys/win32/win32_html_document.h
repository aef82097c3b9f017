#pragma once
// The document of an Internet Explorer engine window, reached through
// WM_HTML_GETOBJECT and read through the HTML document object model.
#include <memory>

#include "sys/document_port.h"

namespace kx::win32 {

// None when the window does not answer within a second or shows no HTML
// document.
std::unique_ptr<PageDocument> HtmlDocumentOfWindow(WindowHandle window);

}  // namespace kx::win32
