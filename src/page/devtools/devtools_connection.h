#pragma once
// A connection to one page of a Chromium browser through its DevTools port on
// the loopback address. Every network step is bounded in time, so a missing
// browser, a hung page or a browser that closes ends a call with "none"
// instead of blocking; after a failed call the connection stays failed.
#include <chrono>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string_view>

namespace kx::devtools {

struct Timeouts {
  std::chrono::milliseconds connect{2000};  // each TCP connect, request and handshake
  std::chrono::milliseconds call{5000};     // one evaluate, from request to reply
};

class DevToolsConnection {
 public:
  // The page with that tab id on the browser on that port, or with an empty
  // id the first page it lists (its most recently active); none when nothing
  // answers there in time or the browser lists no such page.
  static std::unique_ptr<DevToolsConnection> OpenPage(int port, std::string_view tab = {},
                                                      const Timeouts& timeouts = {});
  ~DevToolsConnection();
  DevToolsConnection(const DevToolsConnection&) = delete;
  DevToolsConnection& operator=(const DevToolsConnection&) = delete;

  // The expression's value in the page; none on any failure.
  std::optional<nlohmann::json> Evaluate(std::string_view expression);
  // False once a call failed on the wire (closed, timed out): the browser
  // or the page has gone. An error answer leaves the connection up.
  bool Connected() const;

 private:
  class Impl;
  explicit DevToolsConnection(std::unique_ptr<Impl> impl);
  std::unique_ptr<Impl> impl_;
};

}  // namespace kx::devtools
