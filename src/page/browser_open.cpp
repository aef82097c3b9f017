#include "page/browser_open.h"

#include <array>
#include <cstdint>

#include "player/wait.h"
#include "util/basic_text.h"

namespace kx {

namespace {

// How often the port and the page are looked at while waiting.
constexpr double kPollMs = 100;
// The browsers looked for when the setting Browser is empty, in this order.
constexpr std::string_view kInstalledBrowsers[] = {"msedge.exe", "chrome.exe"};
constexpr std::string_view kBlankPage = "about:blank";
constexpr std::string_view kErrorPagePrefix = "chrome-error:";
constexpr std::string_view kComplete = "complete";

struct ResultText {
  BrowserResult result;
  std::string_view text;  // {url}, {program}, {port} and {ms} are filled in
};

// Status-bar texts, each naming what happened and what to do about it.
constexpr std::array kResultTexts = {
    ResultText{BrowserResult::kLoaded, "ページを読み込みました: {url}"},
    ResultText{BrowserResult::kNotAnAddress,
               "browser: アドレスではありません: {url} (http://、https://、file:/// "
               "などで始めてください)"},
    ResultText{BrowserResult::kNoBrowser,
               "browser: ブラウザが見つかりません: {program} "
               "(オプション画面の「その他」でブラウザを指定してください)"},
    ResultText{BrowserResult::kPortTaken,
               "browser: ポート{port}はブラウザ以外のプログラムが使っています "
               "(オプション画面の「その他」でDevToolsPortを変えてください)"},
    ResultText{BrowserResult::kNotStarted, "browser: ブラウザを起動できませんでした: {program}"},
    ResultText{BrowserResult::kNoAnswer,
               "browser: ブラウザがポート{port}で{ms}ミリ秒以内に応答しませんでした "
               "(同じプロファイルのブラウザがポートなしで動いていれば閉じてください)"},
    ResultText{BrowserResult::kTimedOut,
               "browser: ページが{ms}ミリ秒以内に読み込まれませんでした: {url}"},
    ResultText{BrowserResult::kClosed, "browser: ブラウザが閉じられました: {url}"},
    ResultText{BrowserResult::kLoadFailed, "browser: ページを開けませんでした: {url}"},
    ResultText{BrowserResult::kStopped, "browser: 再生が止められたので待つのをやめました: {url}"},
};
static_assert([] {
  for (std::size_t i = 0; i < kResultTexts.size(); ++i)
    if (static_cast<std::size_t>(kResultTexts[i].result) != i) return false;
  return true;
}());

constexpr std::string_view kNoInstalledBrowser = "Microsoft Edge / Google Chrome";

bool IsSchemeChar(char c, bool first) {
  const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
  if (first) return letter;
  return letter || (c >= '0' && c <= '9') || c == '+' || c == '.' || c == '-';
}

// A scheme of two or more characters: one letter is a drive.
bool HasScheme(std::string_view text) {
  const auto colon = text.find(':');
  if (colon == std::string_view::npos || colon < 2 || colon + 1 >= text.size()) return false;
  for (std::size_t i = 0; i < colon; ++i)
    if (!IsSchemeChar(text[i], i == 0)) return false;
  return true;
}

bool IsDrivePath(std::string_view text) {
  return text.size() >= 3 && IsSchemeChar(text[0], true) && text[1] == ':' &&
         (text[2] == '\\' || text[2] == '/');
}

bool IsSharePath(std::string_view text) {
  return text.size() > 2 && text.starts_with("\\\\");
}

bool HasControlCharacter(std::string_view text) {
  for (const char c : text)
    if (static_cast<unsigned char>(c) < 0x20 || c == 0x7F) return true;
  return false;
}

// Blanks and quotes would split the address or end it early on a command
// line; percent-encoded, the browser reads the same address.
std::string CommandLineAddress(std::string_view address) {
  return basic::ReplaceAll(basic::ReplaceAll(address, "\"", "%22"), " ", "%20");
}

std::string Message(BrowserResult result, const BrowserRequest& request, std::string_view program) {
  std::string text(kResultTexts[static_cast<std::size_t>(result)].text);
  text = basic::ReplaceAll(text, "{url}", basic::Trim(request.address));
  text = basic::ReplaceAll(text, "{program}", program.empty() ? kNoInstalledBrowser : program);
  text = basic::ReplaceAll(text, "{port}", std::to_string(request.port));
  return basic::ReplaceAll(text, "{ms}", std::to_string(request.waitMs));
}

// One request's run: the clock it is bounded by and the play it belongs to.
class Opening {
 public:
  Opening(const BrowserRequest& request, BrowserPort& browser, FilePort& files, ClockPort& clock,
          const bool& playing)
      : request_(request),
        browser_(browser),
        files_(files),
        clock_(clock),
        playing_(playing),
        start_(clock.TickCount()) {}

  BrowserOutcome Run() {
    const auto address = BrowserAddress(request_.address);
    if (!address) return End(BrowserResult::kNotAnAddress);
    address_ = *address;
    switch (browser_.Probe(request_.port)) {
      case PortAnswer::kOther:
        return End(BrowserResult::kPortTaken);
      case PortAnswer::kBrowser:
        if (const auto tab = browser_.OpenTab(request_.port, address_)) return AwaitPage(*tab);
        return End(BrowserResult::kClosed);
      case PortAnswer::kNothing:
        break;
    }
    return StartBrowser();
  }

 private:
  BrowserOutcome StartBrowser() {
    program_ = std::string(basic::Trim(request_.program));
    if (program_.empty()) {
      for (std::string_view exe : kInstalledBrowsers) {
        const std::string path = browser_.InstalledProgram(exe);
        if (!path.empty() && files_.IsFile(path)) {
          program_ = path;
          break;
        }
      }
      if (program_.empty()) return End(BrowserResult::kNoBrowser);
    } else if (!files_.IsFile(program_)) {
      return End(BrowserResult::kNoBrowser);
    }
    const std::string profile =
        files_.AppFolder() + files_.Separator() + std::string(kBrowserProfileFolder);
    if (!browser_.Launch(program_, BrowserArguments(request_.port, profile, address_)))
      return End(BrowserResult::kNotStarted);
    // The started browser shows the address in its first tab, which is the
    // one it lists first once it answers.
    for (;;) {
      if (const auto tab = browser_.ActiveTab(request_.port)) return AwaitPage(*tab);
      if (browser_.Probe(request_.port) == PortAnswer::kOther)
        return End(BrowserResult::kPortTaken);
      if (const auto end = Turn())
        return End(*end == BrowserResult::kTimedOut ? BrowserResult::kNoAnswer : *end);
    }
  }

  BrowserOutcome AwaitPage(const std::string& tab) {
    tab_ = tab;
    // A new tab shows a blank document, already complete, until the
    // address's own document arrives.
    const bool blankWanted = address_.starts_with(kBlankPage);
    for (;;) {
      const auto state = browser_.ReadTab(request_.port, tab_);
      if (!state) return End(BrowserResult::kClosed);
      if (state->readyState == kComplete && (blankWanted || state->url != kBlankPage)) {
        if (state->url.starts_with(kErrorPagePrefix)) return End(BrowserResult::kLoadFailed);
        return End(BrowserResult::kLoaded);
      }
      if (const auto end = Turn()) return End(*end);
    }
  }

  // One turn of a wait: the result that ends it, or none to look again.
  std::optional<BrowserResult> Turn() {
    if (!playing_) return BrowserResult::kStopped;
    if (Elapsed() >= request_.waitMs) return BrowserResult::kTimedOut;
    PumpingWait(clock_, kPollMs, playing_);
    if (!playing_) return BrowserResult::kStopped;
    return std::nullopt;
  }

  std::int64_t Elapsed() const { return static_cast<std::uint32_t>(clock_.TickCount() - start_); }

  BrowserOutcome End(BrowserResult result) const {
    return {result, tab_, Message(result, request_, program_)};
  }

  const BrowserRequest& request_;
  BrowserPort& browser_;
  FilePort& files_;
  ClockPort& clock_;
  const bool& playing_;
  const std::uint32_t start_;
  std::string address_;
  std::string program_;
  std::string tab_;
};

}  // namespace

std::optional<std::string> BrowserAddress(std::string_view text) {
  const std::string_view t = basic::Trim(text);
  if (t.empty() || HasControlCharacter(t)) return std::nullopt;
  if (IsDrivePath(t)) return "file:///" + basic::ReplaceAll(t, "\\", "/");
  if (IsSharePath(t)) return "file:" + basic::ReplaceAll(t, "\\", "/");
  if (HasScheme(t)) return std::string(t);
  return std::nullopt;
}

std::string BrowserArguments(int port, std::string_view profileFolder, std::string_view address) {
  return "--remote-debugging-port=" + std::to_string(port) + " --user-data-dir=\"" +
         std::string(profileFolder) + "\" --no-first-run --no-default-browser-check " +
         CommandLineAddress(address);
}

BrowserOutcome OpenInBrowser(const BrowserRequest& request, BrowserPort& browser, FilePort& files,
                             ClockPort& clock, const bool& playing) {
  return Opening(request, browser, files, clock, playing).Run();
}

}  // namespace kx
