// The automation browser's DevTools side against stand-in HTTP servers on
// the loopback address: what answers on a port, and how a tab is opened.
#include "page/devtools/devtools_browser.h"

#include <gtest/gtest.h>

#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core.hpp>
#include <boost/beast/http.hpp>
#include <optional>
#include <string>
#include <thread>

namespace kx::devtools {
namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = beast::http;
using tcp = asio::ip::tcp;
using std::chrono::milliseconds;

constexpr Timeouts kShort{milliseconds(300), milliseconds(300)};

// Answers one HTTP request with the status and body, or with nothing at all
// when the status is none, and keeps the request line it read.
class HttpStandIn {
 public:
  HttpStandIn(std::optional<unsigned> status, std::string body)
      : acceptor_(context_, {asio::ip::address_v4::loopback(), 0}) {
    thread_ = std::thread([this, status, body = std::move(body)] {
      beast::error_code error;
      tcp::socket socket(context_);
      acceptor_.accept(socket, error);
      if (error) return;
      beast::flat_buffer buffer;
      http::request<http::string_body> request;
      http::read(socket, buffer, request, error);
      requestLine_ = std::string(request.method_string()) + " " + std::string(request.target());
      if (!status) {
        // Holds the connection without a word until the client gives up.
        socket.read_some(asio::buffer(buffer.prepare(1)), error);
        return;
      }
      http::response<http::string_body> response(static_cast<http::status>(*status), 11);
      response.body() = body;
      response.prepare_payload();
      http::write(socket, response, error);
    });
  }
  ~HttpStandIn() {
    if (thread_.joinable()) thread_.join();
  }
  int Port() const { return acceptor_.local_endpoint().port(); }
  // Read after the exchange: the thread has ended once the client got its
  // answer or gave up.
  std::string RequestLine() {
    if (thread_.joinable()) thread_.join();
    return requestLine_;
  }

 private:
  asio::io_context context_;
  tcp::acceptor acceptor_;
  std::thread thread_;
  std::string requestLine_;
};

// A class the tests can build: starting browsers is the system's part.
class Browser final : public DevToolsBrowser {
 public:
  Browser() : DevToolsBrowser(kShort) {}
  bool Launch(std::string_view, std::string_view) override { return false; }
  std::string InstalledProgram(std::string_view) override { return {}; }
};

struct ProbeCase {
  const char* what;
  std::optional<unsigned> status;
  std::string body;
  PortAnswer answer;
};

TEST(DevToolsBrowser, ProbeTellsABrowserFromAnyOtherProgram) {
  const ProbeCase cases[] = {
      {"a browser", 200, R"({"Browser": "Chrome/156.0", "Protocol-Version": "1.3"})",
       PortAnswer::kBrowser},
      {"a web server", 404, "<html>Not Found</html>", PortAnswer::kOther},
      {"JSON of something else", 200, R"({"version": "1.0"})", PortAnswer::kOther},
      {"a program that says nothing", std::nullopt, "", PortAnswer::kOther},
  };
  for (const ProbeCase& c : cases) {
    HttpStandIn server(c.status, c.body);
    Browser browser;
    EXPECT_EQ(browser.Probe(server.Port()), c.answer) << c.what;
    EXPECT_EQ(server.RequestLine(), "GET /json/version") << c.what;
  }
  int closed = 0;
  {
    HttpStandIn gone(200, "");
    closed = gone.Port();
    Browser().Probe(closed);  // lets the stand-in's thread end
  }
  EXPECT_EQ(Browser().Probe(closed), PortAnswer::kNothing);
  EXPECT_EQ(Browser().Probe(0), PortAnswer::kNothing);
}

TEST(DevToolsBrowser, OpenTabPutsTheWholeAddressPercentEncodedAndReadsTheNewId) {
  HttpStandIn server(200, R"({"id": "T1", "type": "page", "url": "file:///x"})");
  const auto tab = Browser().OpenTab(server.Port(), "file:///C:/my pages/日本.html?a=1&b=2#top");
  EXPECT_EQ(tab, "T1");
  EXPECT_EQ(server.RequestLine(),
            "PUT /json/new?file%3A%2F%2F%2FC%3A%2Fmy%20pages%2F%E6%97%A5%E6%9C%AC.html%3Fa%3D1%26b%"
            "3D2%23top");

  // A browser that refuses the request, or answers with no page, opened none.
  HttpStandIn refusing(405, "Using unsafe HTTP verb GET to invoke /json/new.");
  EXPECT_EQ(Browser().OpenTab(refusing.Port(), "about:blank"), std::nullopt);
  HttpStandIn odd(200, R"({"id": "W", "type": "worker"})");
  EXPECT_EQ(Browser().OpenTab(odd.Port(), "about:blank"), std::nullopt);
}

TEST(DevToolsBrowser, ActiveTabIsTheFirstPageTheBrowserLists) {
  HttpStandIn server(200, R"([{"id": "U", "type": "browser_ui"}, {"id": "B", "type": "page"},
                               {"id": "A", "type": "page"}])");
  EXPECT_EQ(Browser().ActiveTab(server.Port()), "B");
  EXPECT_EQ(server.RequestLine(), "GET /json/list");
}

}  // namespace
}  // namespace kx::devtools
