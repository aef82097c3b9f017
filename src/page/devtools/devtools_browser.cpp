#include "page/devtools/devtools_browser.h"

#include "page/devtools/devtools_http.h"
#include "page/devtools/devtools_messages.h"

namespace kx::devtools {
namespace {

constexpr std::string_view kVersion = "/json/version";
constexpr std::string_view kTargetList = "/json/list";
constexpr int kOkStatus = 200;
constexpr int kMaxPort = 65535;

bool ValidPort(int port) {
  return port > 0 && port <= kMaxPort;
}

}  // namespace

PortAnswer DevToolsBrowser::Probe(int port) {
  if (!ValidPort(port)) return PortAnswer::kNothing;
  boost::asio::io_context context;
  const HttpOutcome outcome =
      HttpRequest(context, port, HttpVerb::kGet, kVersion, timeouts_.connect);
  if (!outcome.connected) return PortAnswer::kNothing;
  if (outcome.status == kOkStatus && IsBrowserVersion(outcome.body)) return PortAnswer::kBrowser;
  return PortAnswer::kOther;
}

std::optional<std::string> DevToolsBrowser::OpenTab(int port, std::string_view url) {
  if (!ValidPort(port)) return std::nullopt;
  boost::asio::io_context context;
  // Chromium refuses GET here: opening a tab changes the browser.
  const HttpOutcome outcome =
      HttpRequest(context, port, HttpVerb::kPut, NewTabTarget(url), timeouts_.connect);
  if (outcome.status != kOkStatus) return std::nullopt;
  return NewTabId(outcome.body);
}

std::optional<std::string> DevToolsBrowser::ActiveTab(int port) {
  if (!ValidPort(port)) return std::nullopt;
  boost::asio::io_context context;
  const auto list = HttpGet(context, port, kTargetList, timeouts_.connect);
  if (!list) return std::nullopt;
  return FirstPageId(*list);
}

std::optional<TabState> DevToolsBrowser::ReadTab(int port, std::string_view tab) {
  const auto connection = DevToolsConnection::OpenPage(port, tab, timeouts_);
  if (!connection) return std::nullopt;
  const auto value = connection->Evaluate(TabStateScript());
  if (!value) {
    // A page between two documents answers with an error: still loading.
    if (connection->Connected()) return TabState{"", "loading"};
    return std::nullopt;
  }
  return ReadTabState(*value);
}

}  // namespace kx::devtools
