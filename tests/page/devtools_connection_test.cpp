// The DevTools connection against small stand-in servers on the loopback
// address: what it does with answers that are missing, wrong or late.
#include "page/devtools/devtools_connection.h"

#include <gtest/gtest.h>

#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <boost/beast/websocket.hpp>
#include <functional>
#include <string>
#include <thread>

namespace kx::devtools {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using tcp = asio::ip::tcp;
using std::chrono::milliseconds;

// Short time-outs: every case below ends on one of them or sooner.
constexpr Timeouts kShort{milliseconds(300), milliseconds(300)};

tcp::endpoint AnyLoopbackPort() {
  return {asio::ip::address_v4::loopback(), 0};
}

// A listener on a free loopback port; Serve runs one connection's exchange
// on a thread of its own.
class StandIn {
 public:
  StandIn() : acceptor_(context_, AnyLoopbackPort()) {}
  ~StandIn() {
    if (thread_.joinable()) thread_.join();
  }
  int Port() const { return acceptor_.local_endpoint().port(); }

  // Answers the target list with that body, then hands the next connection
  // to the WebSocket exchange, when there is one.
  void Serve(std::string target_list,
             std::function<void(beast::websocket::stream<tcp::socket>&)> exchange = {}) {
    thread_ = std::thread([this, list = std::move(target_list), exchange] {
      beast::error_code error;
      tcp::socket socket(context_);
      acceptor_.accept(socket, error);
      if (error) return;
      beast::flat_buffer buffer;
      http::request<http::string_body> request;
      http::read(socket, buffer, request, error);
      http::response<http::string_body> response(http::status::ok, request.version());
      response.body() = list;
      response.prepare_payload();
      http::write(socket, response, error);
      socket.close(error);
      if (!exchange) return;
      beast::websocket::stream<tcp::socket> ws(context_);
      acceptor_.accept(ws.next_layer(), error);
      if (error) return;
      ws.accept(error);
      if (!error) exchange(ws);
    });
  }

  std::string PageList() const {
    return R"([{"type": "page", "webSocketDebuggerUrl": "ws://127.0.0.1:)" +
           std::to_string(Port()) + R"(/devtools/page/P"}])";
  }

 private:
  asio::io_context context_;
  tcp::acceptor acceptor_;
  std::thread thread_;
};

std::string Read(beast::websocket::stream<tcp::socket>& ws) {
  beast::flat_buffer buffer;
  beast::error_code error;
  ws.read(buffer, error);
  return error ? std::string() : beast::buffers_to_string(buffer.data());
}

void Send(beast::websocket::stream<tcp::socket>& ws, const std::string& text) {
  beast::error_code error;
  ws.write(asio::buffer(text), error);
}

TEST(DevToolsConnection, NoBrowserOnThePortGivesNone) {
  int port = 0;
  {
    StandIn closed;
    port = closed.Port();
  }
  EXPECT_EQ(DevToolsConnection::OpenPage(port, {}, kShort), nullptr);
  EXPECT_EQ(DevToolsConnection::OpenPage(0, {}, kShort), nullptr);
  EXPECT_EQ(DevToolsConnection::OpenPage(70000, {}, kShort), nullptr);
}

TEST(DevToolsConnection, AListenerThatNeverAnswersTimesOut) {
  StandIn silent;  // listens, but nobody accepts or answers
  EXPECT_EQ(DevToolsConnection::OpenPage(silent.Port(), {}, kShort), nullptr);
}

TEST(DevToolsConnection, APageOnAnotherHostIsNotFollowed) {
  StandIn browser;
  browser.Serve(
      R"([{"type": "page", "webSocketDebuggerUrl": "ws://10.1.2.3:9222/devtools/page/P"}])");
  EXPECT_EQ(DevToolsConnection::OpenPage(browser.Port(), {}, kShort), nullptr);
}

TEST(DevToolsConnection, RepliesAreMatchedErrorsGiveNoneAndASilentPageEndsTheConnection) {
  StandIn browser;
  std::string requests[2];
  browser.Serve(browser.PageList(), [&](beast::websocket::stream<tcp::socket>& ws) {
    requests[0] = Read(ws);
    Send(ws, R"({"method": "Runtime.executionContextCreated", "params": {}})");
    Send(ws, R"({"id": 999, "result": {"result": {"type": "string", "value": "stale"}}})");
    Send(ws, R"({"id": 1, "result": {"result": {"type": "string", "value": "complete"}}})");
    requests[1] = Read(ws);
    Send(ws, R"({"id": 2, "error": {"code": -32000, "message": "Cannot find context"}})");
    Read(ws);  // the third request gets no answer at all
    Read(ws);  // until the client gives up and closes
  });
  auto connection = DevToolsConnection::OpenPage(browser.Port(), {}, kShort);
  ASSERT_NE(connection, nullptr);
  EXPECT_EQ(connection->Evaluate("document.readyState"), nlohmann::json("complete"));
  EXPECT_EQ(connection->Evaluate("document.title"), std::nullopt);
  EXPECT_TRUE(connection->Connected());  // an error answer leaves it up
  EXPECT_EQ(connection->Evaluate("1"), std::nullopt);
  EXPECT_FALSE(connection->Connected());
  // After a call that timed out the connection stays failed.
  EXPECT_EQ(connection->Evaluate("2"), std::nullopt);
  connection.reset();
  EXPECT_EQ(nlohmann::json::parse(requests[0])["params"]["expression"], "document.readyState");
  EXPECT_EQ(nlohmann::json::parse(requests[1])["id"], 2);
}

TEST(DevToolsConnection, ABrowserThatClosesMidCallGivesNone) {
  StandIn browser;
  browser.Serve(browser.PageList(), [](beast::websocket::stream<tcp::socket>& ws) {
    Read(ws);
    beast::error_code error;
    ws.next_layer().close(error);
  });
  auto connection = DevToolsConnection::OpenPage(browser.Port(), {}, Timeouts{});
  ASSERT_NE(connection, nullptr);
  EXPECT_EQ(connection->Evaluate("document.readyState"), std::nullopt);
  EXPECT_FALSE(connection->Connected());
}

}  // namespace
}  // namespace kx::devtools
