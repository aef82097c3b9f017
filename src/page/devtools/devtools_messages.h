#pragma once
// The JSON side of the DevTools protocol: the browser's list of targets, the
// Runtime.evaluate request and its reply. No input here is trusted: every
// parse answers "none" for text that is not what the browser should send.
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <string_view>

#include "sys/browser_port.h"

namespace kx::devtools {

// Where a page's WebSocket listens. The host is always the loopback address;
// only the port and the path come from the browser.
struct SocketAddress {
  int port = 0;
  std::string path;  // "/devtools/page/<id>"
};

// A loopback "ws://" address split up; none for another scheme or host.
std::optional<SocketAddress> ParseSocketUrl(std::string_view url);

// The WebSocket of the first target of type "page" in the text of
// /json/list; none when there is no such page or the text is not a list.
// The browser lists its most recently active page first.
std::optional<SocketAddress> FirstPageSocket(std::string_view target_list);
// The WebSocket of the page with that id; with an empty id, the first page.
std::optional<SocketAddress> PageSocket(std::string_view target_list, std::string_view tab);
// The id of the first page of /json/list; none when it lists no page.
std::optional<std::string> FirstPageId(std::string_view target_list);

// True for the text of /json/version as a Chromium browser answers it.
bool IsBrowserVersion(std::string_view version);
// The request target that opens the address as a new tab: the whole address
// percent-encoded after "/json/new?", so that spaces, "&", "#" and Japanese
// text reach the browser unchanged.
std::string NewTabTarget(std::string_view url);
// The id of the page target in the answer to /json/new; none otherwise.
std::optional<std::string> NewTabId(std::string_view answer);

// The expression that reads a tab's address and readyState, and its reading.
std::string TabStateScript();
std::optional<TabState> ReadTabState(const nlohmann::json& value);

// A Runtime.evaluate request that returns the expression's value as JSON.
std::string EvaluateRequest(int id, std::string_view expression);

// The id of a reply; none for events and for text that is not a message.
std::optional<int> MessageId(std::string_view message);

// The value of an evaluate reply; none when the browser answered with an
// error, the expression threw, or the reply is malformed. An expression whose
// value is undefined gives null.
std::optional<nlohmann::json> EvaluateValue(std::string_view reply);

}  // namespace kx::devtools
