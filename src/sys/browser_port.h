#pragma once
// The automation browser: a Chromium browser (Edge, Chrome) that the program
// starts with a DevTools port on the loopback address, and the tabs it shows
// there. Tabs are named by the ids the browser gives them.
#include <optional>
#include <string>
#include <string_view>

namespace kx {

// What answers on a loopback port.
enum class PortAnswer {
  kNothing,  // no program listens there
  kBrowser,  // a browser's DevTools
  kOther,    // a program that is not a browser
};

// A tab's address and its document's readyState.
struct TabState {
  std::string url;
  std::string readyState;
};

class BrowserPort {
 public:
  virtual ~BrowserPort() = default;
  virtual PortAnswer Probe(int port) = 0;
  // Opens the address as a new tab of the browser on the port; its id, none
  // when no browser took it.
  virtual std::optional<std::string> OpenTab(int port, std::string_view url) = 0;
  // The tab the browser lists first, its most recently active one; none when
  // no browser answers or it shows no page.
  virtual std::optional<std::string> ActiveTab(int port) = 0;
  // None when the tab or its browser has gone.
  virtual std::optional<TabState> ReadTab(int port, std::string_view tab) = 0;
  // Starts the program with the arguments (a command line's text) without
  // waiting for it; false when it could not be started.
  virtual bool Launch(std::string_view program, std::string_view arguments) = 0;
  // The full path the system's App Paths register for a program name such as
  // "msedge.exe"; empty when none is registered.
  virtual std::string InstalledProgram(std::string_view exeName) = 0;
};

}  // namespace kx
