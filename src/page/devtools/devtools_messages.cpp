#include "page/devtools/devtools_messages.h"

#include <charconv>

namespace kx::devtools {
namespace {

using nlohmann::json;

constexpr std::string_view kScheme = "ws://";
constexpr std::string_view kLoopbackHosts[] = {"127.0.0.1", "localhost", "[::1]"};
constexpr int kMaxPort = 65535;

std::optional<json> Parse(std::string_view text) {
  json value = json::parse(text, nullptr, /*allow_exceptions=*/false);
  if (value.is_discarded()) return std::nullopt;
  return value;
}

bool IsLoopbackHost(std::string_view host) {
  for (std::string_view h : kLoopbackHosts)
    if (host == h) return true;
  return false;
}

bool IsPage(const json& target) {
  return target.is_object() && target.value("type", json()) == "page";
}

std::optional<std::string> StringField(const json& object, const char* key) {
  if (!object.is_object()) return std::nullopt;
  const auto field = object.find(key);
  if (field == object.end() || !field->is_string()) return std::nullopt;
  return field->get<std::string>();
}

std::optional<int> ParsePort(std::string_view text) {
  int port = 0;
  const char* end = text.data() + text.size();
  const auto [rest, error] = std::from_chars(text.data(), end, port);
  if (error != std::errc() || rest != end || port <= 0 || port > kMaxPort) return std::nullopt;
  return port;
}

}  // namespace

std::optional<SocketAddress> ParseSocketUrl(std::string_view url) {
  if (!url.starts_with(kScheme)) return std::nullopt;
  url.remove_prefix(kScheme.size());
  const size_t slash = url.find('/');
  if (slash == std::string_view::npos) return std::nullopt;
  const std::string_view authority = url.substr(0, slash);
  const size_t colon = authority.rfind(':');
  if (colon == std::string_view::npos) return std::nullopt;
  if (!IsLoopbackHost(authority.substr(0, colon))) return std::nullopt;
  const auto port = ParsePort(authority.substr(colon + 1));
  if (!port) return std::nullopt;
  return SocketAddress{*port, std::string(url.substr(slash))};
}

std::optional<SocketAddress> FirstPageSocket(std::string_view target_list) {
  return PageSocket(target_list, {});
}

std::optional<SocketAddress> PageSocket(std::string_view target_list, std::string_view tab) {
  const auto list = Parse(target_list);
  if (!list || !list->is_array()) return std::nullopt;
  for (const json& target : *list) {
    if (!IsPage(target)) continue;
    if (!tab.empty() && target.value("id", json()) != tab) continue;
    const auto url = target.find("webSocketDebuggerUrl");
    // A page another client is attached to has no address; the browser
    // lists it all the same, and it cannot be reached.
    if (url == target.end() || !url->is_string()) return std::nullopt;
    return ParseSocketUrl(url->get<std::string>());
  }
  return std::nullopt;
}

std::optional<std::string> FirstPageId(std::string_view target_list) {
  const auto list = Parse(target_list);
  if (!list || !list->is_array()) return std::nullopt;
  for (const json& target : *list)
    if (IsPage(target)) return StringField(target, "id");
  return std::nullopt;
}

bool IsBrowserVersion(std::string_view version) {
  const auto value = Parse(version);
  return value && StringField(*value, "Browser").has_value();
}

std::string NewTabTarget(std::string_view url) {
  static constexpr char kHex[] = "0123456789ABCDEF";
  std::string target = "/json/new?";
  for (const char c : url) {
    const auto byte = static_cast<unsigned char>(c);
    const bool unreserved = (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z') ||
                            (byte >= '0' && byte <= '9') || c == '-' || c == '.' || c == '_' ||
                            c == '~';
    if (unreserved) {
      target += c;
    } else {
      target += '%';
      target += kHex[byte >> 4];
      target += kHex[byte & 0xF];
    }
  }
  return target;
}

std::optional<std::string> NewTabId(std::string_view answer) {
  const auto value = Parse(answer);
  if (!value || !IsPage(*value)) return std::nullopt;
  return StringField(*value, "id");
}

std::string TabStateScript() {
  return "[location.href, document.readyState]";
}

std::optional<TabState> ReadTabState(const json& value) {
  if (!value.is_array() || value.size() != 2 || !value[0].is_string() || !value[1].is_string())
    return std::nullopt;
  return TabState{value[0].get<std::string>(), value[1].get<std::string>()};
}

std::string EvaluateRequest(int id, std::string_view expression) {
  const json request = {
      {"id", id},
      {"method", "Runtime.evaluate"},
      {"params", {{"expression", expression}, {"returnByValue", true}}},
  };
  return request.dump(-1, ' ', false, json::error_handler_t::replace);
}

std::optional<int> MessageId(std::string_view message) {
  const auto value = Parse(message);
  if (!value || !value->is_object()) return std::nullopt;
  const auto id = value->find("id");
  if (id == value->end() || !id->is_number_integer()) return std::nullopt;
  return id->get<int>();
}

std::optional<json> EvaluateValue(std::string_view reply) {
  const auto message = Parse(reply);
  if (!message || !message->is_object() || message->contains("error")) return std::nullopt;
  const auto outcome = message->find("result");
  if (outcome == message->end() || !outcome->is_object()) return std::nullopt;
  if (outcome->contains("exceptionDetails")) return std::nullopt;
  const auto remote = outcome->find("result");
  if (remote == outcome->end() || !remote->is_object()) return std::nullopt;
  const auto value = remote->find("value");
  if (value == remote->end()) return json();  // undefined
  return *value;
}

}  // namespace kx::devtools
