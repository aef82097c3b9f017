#include "page/devtools/devtools_http.h"

#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>

#include "page/devtools/devtools_io.h"

namespace kx::devtools {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using tcp = asio::ip::tcp;

constexpr int kHttpVersion = 11;  // HTTP/1.1
constexpr int kOkStatus = 200;
// A DevTools answer is a short JSON text; a program that sends more is not
// a browser, and is not read to its end.
constexpr std::uint64_t kMaxBodyBytes = 8u << 20;

}  // namespace

HttpOutcome HttpRequest(asio::io_context& context, int port, HttpVerb verb, std::string_view target,
                        std::chrono::milliseconds limit) {
  HttpOutcome outcome;
  tcp::socket socket(context);
  if (RunFor(context, socket, limit,
             [&](auto done) { socket.async_connect(Loopback(port), std::move(done)); }))
    return outcome;
  outcome.connected = true;
  http::request<http::empty_body> request(
      verb == HttpVerb::kPut ? http::verb::put : http::verb::get, std::string(target),
      kHttpVersion);
  request.set(http::field::host, HostHeader(port));
  request.set(http::field::connection, "close");
  if (RunFor(context, socket, limit,
             [&](auto done) { http::async_write(socket, request, std::move(done)); }))
    return outcome;
  beast::flat_buffer buffer;
  http::response_parser<http::string_body> parser;
  parser.body_limit(kMaxBodyBytes);
  if (RunFor(context, socket, limit,
             [&](auto done) { http::async_read(socket, buffer, parser, std::move(done)); }))
    return outcome;
  outcome.status = parser.get().result_int();
  outcome.body = std::move(parser.get().body());
  return outcome;
}

std::optional<std::string> HttpGet(asio::io_context& context, int port, std::string_view target,
                                   std::chrono::milliseconds limit) {
  HttpOutcome outcome = HttpRequest(context, port, HttpVerb::kGet, target, limit);
  if (outcome.status != kOkStatus) return std::nullopt;
  return std::move(outcome.body);
}

}  // namespace kx::devtools
