#pragma once
// One HTTP request to the DevTools endpoints of a browser on a loopback port.
#include <boost/asio/io_context.hpp>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>

namespace kx::devtools {

enum class HttpVerb { kGet, kPut };

struct HttpOutcome {
  bool connected = false;     // something accepted the connection
  std::optional<int> status;  // none when no HTTP reply came in time
  std::string body;
};

// Each step (connect, send, read) is bounded by `limit`.
HttpOutcome HttpRequest(boost::asio::io_context& context, int port, HttpVerb verb,
                        std::string_view target, std::chrono::milliseconds limit);

// The body of a GET answered with 200; none on any failure.
std::optional<std::string> HttpGet(boost::asio::io_context& context, int port,
                                   std::string_view target, std::chrono::milliseconds limit);

}  // namespace kx::devtools
