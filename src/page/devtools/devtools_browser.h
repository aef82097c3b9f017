#pragma once
// The browser side of the automation browser reached over its DevTools port:
// what answers on the port, opening a tab, the most recently active tab and
// a tab's state. Starting the browser and finding it are the system's part.
#include <optional>
#include <string>
#include <string_view>

#include "page/devtools/devtools_connection.h"
#include "sys/browser_port.h"

namespace kx::devtools {

class DevToolsBrowser : public BrowserPort {
 public:
  explicit DevToolsBrowser(const Timeouts& timeouts = {}) : timeouts_(timeouts) {}
  PortAnswer Probe(int port) override;
  std::optional<std::string> OpenTab(int port, std::string_view url) override;
  std::optional<std::string> ActiveTab(int port) override;
  std::optional<TabState> ReadTab(int port, std::string_view tab) override;

 private:
  Timeouts timeouts_;
};

}  // namespace kx::devtools
