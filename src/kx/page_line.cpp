#include "kx/page_line.h"

#include <chrono>
#include <cstdio>
#include <string_view>
#include <thread>
#include <vector>

#include "page/page_fields.h"
#include "util/basic_text.h"

namespace kx::cli {
namespace {

constexpr int kDone = 0;
constexpr int kFailed = 1;
constexpr int kBadUsage = 2;

// waitweb's look at the page comes after this wait, as in a play at speed 1.
constexpr auto kWaitWebDelay = std::chrono::milliseconds(1500);
constexpr auto kReadyPoll = std::chrono::milliseconds(10);
// A play waits for a loading page without end; a command-line run must end.
constexpr auto kReadyLimit = std::chrono::seconds(30);

bool WaitComplete(PageDocument& document) {
  const auto end = std::chrono::steady_clock::now() + kReadyLimit;
  for (;;) {
    const std::string state = document.ReadyState();
    if (state == "complete") return true;
    if (state.empty() || std::chrono::steady_clock::now() >= end) return false;
    std::this_thread::sleep_for(kReadyPoll);
  }
}

std::string FieldAt(const std::vector<std::string>& fields, std::size_t i) {
  return i < fields.size() ? fields[i] : std::string();
}

}  // namespace

// The line is read as the player reads a page command: a two-letter word and
// the fields after it; the path fields name no window here, the page is the
// browser's on the given port.
int RunPageLine(const std::string& line, DocumentPort& documents, int port) {
  const std::string_view text = basic::Trim(line);
  const std::string lower = basic::LCase(text);
  const bool waitWeb = lower == "waitweb";
  const std::string word = lower.substr(0, 2);
  if (!waitWeb && word != "pw" && word != "ip") {
    std::fprintf(stderr, "kx page: not a page command (pw, ip, waitweb): %s\n", line.c_str());
    return kBadUsage;
  }
  if (waitWeb) std::this_thread::sleep_for(kWaitWebDelay);
  const auto document = documents.FromDevTools(port, {});
  if (!document) return kFailed;
  if (waitWeb) return WaitComplete(*document) ? kDone : kFailed;
  const std::vector<std::string> fields = basic::Split(basic::Trim(text.substr(2)), ",");
  if (word == "pw") {
    AutoLogin(*document, FieldAt(fields, 0), FieldAt(fields, 1));
  } else {
    if (!WaitComplete(*document)) return kFailed;
    FillPageFields(*document, FieldAt(fields, 0), FieldAt(fields, 1));
  }
  return document->ReadyState().empty() ? kFailed : kDone;
}

}  // namespace kx::cli
