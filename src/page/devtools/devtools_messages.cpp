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
  const auto list = Parse(target_list);
  if (!list || !list->is_array()) return std::nullopt;
  for (const json& target : *list) {
    if (!target.is_object() || target.value("type", json()) != "page") continue;
    const auto url = target.find("webSocketDebuggerUrl");
    // A page another client is attached to has no address; the browser
    // lists it all the same, and it cannot be reached.
    if (url == target.end() || !url->is_string()) return std::nullopt;
    return ParseSocketUrl(url->get<std::string>());
  }
  return std::nullopt;
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
