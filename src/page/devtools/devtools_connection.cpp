#include "page/devtools/devtools_connection.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <string>
#include <utility>

#include "page/devtools/devtools_messages.h"

namespace kx::devtools {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
namespace websocket = beast::websocket;
using tcp = asio::ip::tcp;
using Clock = std::chrono::steady_clock;

constexpr std::string_view kTargetList = "/json/list";
constexpr int kHttpVersion = 11;  // HTTP/1.1
constexpr unsigned kOkStatus = 200;
// A large page's element list is one message; anything bigger is refused.
constexpr std::uint64_t kMaxMessageBytes = 64u << 20;

tcp::endpoint Loopback(int port) {
  return {asio::ip::address_v4::loopback(), static_cast<unsigned short>(port)};
}

std::string HostHeader(int port) {
  return "127.0.0.1:" + std::to_string(port);
}

// Runs one asynchronous operation on the context until it completes or the
// time is up. On time-out the socket is closed, which ends the operation
// with an error, and the caller sees that error.
template <typename Start>
beast::error_code RunFor(asio::io_context& context, tcp::socket& socket,
                         std::chrono::milliseconds limit, Start start) {
  std::optional<beast::error_code> outcome;
  start([&outcome](beast::error_code error, auto&&...) { outcome = error; });
  context.restart();
  context.run_for(limit);
  if (outcome) return *outcome;
  beast::error_code ignored;
  socket.close(ignored);
  context.restart();
  context.run();
  return asio::error::timed_out;
}

// The body of GET path on the loopback port; none on any failure.
std::optional<std::string> HttpGet(asio::io_context& context, int port, std::string_view path,
                                   std::chrono::milliseconds limit) {
  tcp::socket socket(context);
  if (RunFor(context, socket, limit,
             [&](auto done) { socket.async_connect(Loopback(port), std::move(done)); }))
    return std::nullopt;
  http::request<http::empty_body> request(http::verb::get, std::string(path), kHttpVersion);
  request.set(http::field::host, HostHeader(port));
  request.set(http::field::connection, "close");
  if (RunFor(context, socket, limit,
             [&](auto done) { http::async_write(socket, request, std::move(done)); }))
    return std::nullopt;
  beast::flat_buffer buffer;
  http::response<http::string_body> response;
  if (RunFor(context, socket, limit,
             [&](auto done) { http::async_read(socket, buffer, response, std::move(done)); }))
    return std::nullopt;
  if (response.result_int() != kOkStatus) return std::nullopt;
  return std::move(response.body());
}

}  // namespace

class DevToolsConnection::Impl {
 public:
  explicit Impl(const Timeouts& timeouts) : timeouts_(timeouts) {}

  bool Connect(int port) {
    const auto list = HttpGet(context_, port, kTargetList, timeouts_.connect);
    if (!list) return false;
    const auto page = FirstPageSocket(*list);
    if (!page) return false;
    tcp::socket& socket = socket_.next_layer();
    if (RunFor(context_, socket, timeouts_.connect,
               [&](auto done) { socket.async_connect(Loopback(page->port), std::move(done)); }))
      return false;
    socket_.read_message_max(kMaxMessageBytes);
    return !RunFor(context_, socket, timeouts_.connect, [&](auto done) {
      socket_.async_handshake(HostHeader(page->port), page->path, std::move(done));
    });
  }

  std::optional<nlohmann::json> Evaluate(std::string_view expression) {
    if (failed_) return std::nullopt;
    const int id = ++last_id_;
    const auto reply = Call(EvaluateRequest(id, expression), id);
    if (!reply) {
      failed_ = true;
      return std::nullopt;
    }
    return EvaluateValue(*reply);
  }

  bool Connected() const { return !failed_; }

 private:
  // Sends a request and reads messages until the reply with that id, all
  // within one call's time; events and stale replies are passed over.
  std::optional<std::string> Call(const std::string& request, int id) {
    const auto deadline = Clock::now() + timeouts_.call;
    tcp::socket& socket = socket_.next_layer();
    socket_.text(true);
    if (RunFor(context_, socket, timeouts_.call,
               [&](auto done) { socket_.async_write(asio::buffer(request), std::move(done)); }))
      return std::nullopt;
    for (;;) {
      const auto left =
          std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
      if (left.count() <= 0) return std::nullopt;
      beast::flat_buffer buffer;
      if (RunFor(context_, socket, left,
                 [&](auto done) { socket_.async_read(buffer, std::move(done)); }))
        return std::nullopt;
      std::string message = beast::buffers_to_string(buffer.data());
      if (MessageId(message) == id) return message;
    }
  }

  Timeouts timeouts_;
  asio::io_context context_;
  websocket::stream<tcp::socket> socket_{context_};
  int last_id_ = 0;
  bool failed_ = false;
};

std::unique_ptr<DevToolsConnection> DevToolsConnection::OpenPage(int port,
                                                                 const Timeouts& timeouts) {
  constexpr int kMaxPort = 65535;
  if (port <= 0 || port > kMaxPort) return nullptr;
  auto impl = std::make_unique<Impl>(timeouts);
  if (!impl->Connect(port)) return nullptr;
  return std::unique_ptr<DevToolsConnection>(new DevToolsConnection(std::move(impl)));
}

DevToolsConnection::DevToolsConnection(std::unique_ptr<Impl> impl) : impl_(std::move(impl)) {}
DevToolsConnection::~DevToolsConnection() = default;

std::optional<nlohmann::json> DevToolsConnection::Evaluate(std::string_view expression) {
  return impl_->Evaluate(expression);
}

bool DevToolsConnection::Connected() const {
  return impl_->Connected();
}

}  // namespace kx::devtools
