#pragma once
// The loopback socket steps the DevTools client shares: every asynchronous
// operation runs for a bounded time on the caller's thread.
#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/error.hpp>
#include <chrono>
#include <optional>
#include <string>

namespace kx::devtools {

// Only ever the loopback address: the DevTools port lets whoever reaches it
// drive the browser, so nothing here names another host.
inline boost::asio::ip::tcp::endpoint Loopback(int port) {
  return {boost::asio::ip::address_v4::loopback(), static_cast<unsigned short>(port)};
}

inline std::string HostHeader(int port) {
  return "127.0.0.1:" + std::to_string(port);
}

// Runs one asynchronous operation on the context until it completes or the
// time is up. On time-out the socket is closed, which ends the operation
// with an error, and the caller sees that error.
template <typename Start>
boost::beast::error_code RunFor(boost::asio::io_context& context,
                                boost::asio::ip::tcp::socket& socket,
                                std::chrono::milliseconds limit, Start start) {
  std::optional<boost::beast::error_code> outcome;
  start([&outcome](boost::beast::error_code error, auto&&...) { outcome = error; });
  context.restart();
  context.run_for(limit);
  if (outcome) return *outcome;
  boost::beast::error_code ignored;
  socket.close(ignored);
  context.restart();
  context.run();
  return boost::asio::error::timed_out;
}

}  // namespace kx::devtools
