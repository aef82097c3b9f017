#pragma once
// The "browser URL" line: opens an address in the automation browser (a
// Chromium browser with its own profile and a DevTools port on the loopback
// address) and waits until the page has loaded. The browser already on the
// port gets a new tab; with none there, the program starts one.
#include <optional>
#include <string>
#include <string_view>

#include "sys/browser_port.h"
#include "sys/clock_port.h"
#include "sys/file_port.h"

namespace kx {

// The folder beside the program where the automation browser keeps its
// profile: cookies of the sites logged into stay there between runs.
inline constexpr std::string_view kBrowserProfileFolder = "BrowserProfile";

struct BrowserRequest {
  std::string_view address;  // as the line gives it
  std::string_view program;  // the setting Browser; empty: Edge, else Chrome
  int port = 9222;
  int waitMs = 30000;
};

enum class BrowserResult {
  kLoaded,
  kNotAnAddress,
  kNoBrowser,   // no browser installed, or Browser names no file
  kPortTaken,   // a program that is not a browser answers on the port
  kNotStarted,  // the system refused to start the browser
  kNoAnswer,    // the started browser never answered on the port
  kTimedOut,    // the page did not finish loading in time
  kClosed,      // the browser or the tab closed while waiting
  kLoadFailed,  // the browser shows its error page instead
  kStopped,     // the play was stopped or paused
};

struct BrowserOutcome {
  BrowserResult result = BrowserResult::kStopped;
  // The tab that shows the address, also when it did not finish loading;
  // empty when no tab was opened.
  std::string tab;
  std::string message;  // for the status bar
};

// The address a line names: an address with a scheme as written, or a full
// Windows path made a "file:" address. None for anything else.
std::optional<std::string> BrowserAddress(std::string_view text);

// The arguments the automation browser is started with.
std::string BrowserArguments(int port, std::string_view profileFolder, std::string_view address);

// Opens the address and waits for the page, pumping messages between looks
// and ending at once when `playing` is cleared. Every step is bounded by the
// request's wait.
BrowserOutcome OpenInBrowser(const BrowserRequest& request, BrowserPort& browser, FilePort& files,
                             ClockPort& clock, const bool& playing);

}  // namespace kx
