#pragma once
// The page of a Chromium browser as a PageDocument, and a DocumentPort for
// systems that reach browsers only through their DevTools port.
#include <memory>

#include "page/devtools/devtools_connection.h"
#include "sys/document_port.h"

namespace kx::devtools {

// The tab of the browser on that loopback port (empty: its most recently
// active one); none when no browser answers there.
std::unique_ptr<PageDocument> OpenPage(int port, std::string_view tab = {},
                                       const Timeouts& timeouts = {});

// Documents where there are no Internet Explorer engine windows: FromWindow
// finds none, FromDevTools opens the browser's page.
class DevToolsDocuments final : public DocumentPort {
 public:
  std::unique_ptr<PageDocument> FromWindow(WindowHandle window) override;
  std::unique_ptr<PageDocument> FromDevTools(int port, std::string_view tab) override;
};

}  // namespace kx::devtools
