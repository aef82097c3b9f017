#include "page/devtools/devtools_connection.h"

#include <boost/asio/connect.hpp>
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/websocket.hpp>
#include <string>
#include <utility>

#include "page/devtools/devtools_http.h"
#include "page/devtools/devtools_io.h"
#include "page/devtools/devtools_messages.h"

namespace kx::devtools {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace websocket = beast::websocket;
using tcp = asio::ip::tcp;
using Clock = std::chrono::steady_clock;

constexpr std::string_view kTargetList = "/json/list";
// A large page's element list is one message; anything bigger is refused.
constexpr std::uint64_t kMaxMessageBytes = 64u << 20;

}  // namespace

class DevToolsConnection::Impl {
 public:
  explicit Impl(const Timeouts& timeouts) : timeouts_(timeouts) {}

  bool Connect(int port, std::string_view tab) {
    const auto list = HttpGet(context_, port, kTargetList, timeouts_.connect);
    if (!list) return false;
    const auto page = PageSocket(*list, tab);
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

std::unique_ptr<DevToolsConnection> DevToolsConnection::OpenPage(int port, std::string_view tab,
                                                                 const Timeouts& timeouts) {
  constexpr int kMaxPort = 65535;
  if (port <= 0 || port > kMaxPort) return nullptr;
  auto impl = std::make_unique<Impl>(timeouts);
  if (!impl->Connect(port, tab)) return nullptr;
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
