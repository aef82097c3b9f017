// The screen waits: waitpixel and waitimage look at the screen until what
// they wait for is there or their time is up, pumping messages in between.
#include <algorithm>

#include "player/line_runner.h"
#include "screen/image_file.h"
#include "screen/screen_lines.h"

namespace kx {

namespace {

// Between two looks at the screen the wait sleeps nineteen times as long as
// the look took, so that it uses at most a twentieth of a core, but within
// bounds: what appears is seen within a tenth of a second even where the
// screen is slow to read (or the look was slowed by a busy machine).
constexpr double kMinLookIntervalMs = 40;
constexpr double kMaxLookIntervalMs = 100;
constexpr double kIdleTimesLook = 19;

constexpr std::string_view kImageUnreadable = "waitimage: 画像ファイルを読み込めません: ";
constexpr std::string_view kImageTooLarge = "waitimage: 画像が検索範囲より大きいため見つかりません";
constexpr std::string_view kPixelOutside = "waitpixel: 座標はどのモニタの上にもありません";
constexpr std::string_view kAreaOutside = "waitimage: 検索範囲はどのモニタの上にもありません";

}  // namespace

SearchResult LineRunner::WaitOnScreen(double timeoutMs,
                                      const std::function<SearchResult()>& check) {
  const double limitMs = BoundedWaitMs(timeoutMs * p_.options_.speedFactor);
  const std::uint32_t start = sys_.clock.TickCount();
  for (;;) {
    const std::int64_t before = sys_.clock.PerformanceCounter();
    const SearchResult result = check();
    if (result.outcome != SearchOutcome::kNotFound) return result;
    const double looked = CounterMilliseconds(sys_.clock, sys_.clock.PerformanceCounter() - before);
    const double elapsed = static_cast<double>(sys_.clock.TickCount() - start);
    if (elapsed >= limitMs) return result;
    // The last look falls on the time-out itself.
    const double pause =
        std::clamp(looked * kIdleTimesLook, kMinLookIntervalMs, kMaxLookIntervalMs);
    PumpingWait(std::min(pause, limitMs - elapsed));
    if (!p_.playing_) return result;
  }
}

void LineRunner::EndScreenWait(const SearchResult& result, std::string_view outsideMessage) {
  switch (result.outcome) {
    case SearchOutcome::kFound:
      p_.found_ = result.centre;
      break;
    case SearchOutcome::kOutside:
      sys_.notify.SetStatusText(outsideMessage);
      break;
    case SearchOutcome::kTooLarge:
      sys_.notify.SetStatusText(kImageTooLarge);
      break;
    case SearchOutcome::kNotFound:
      break;
  }
  p_.currentValue_ = CurrentValue::Boolean(result.outcome == SearchOutcome::kFound);
}

void LineRunner::WaitPixel(std::string_view argument) {
  const auto parsed = ParseWaitPixel(argument);
  if (!parsed.args) {
    sys_.notify.SetStatusText(parsed.error);
    p_.currentValue_ = CurrentValue::Boolean(false);
    return;
  }
  const WaitPixelArgs& a = *parsed.args;
  const SearchResult result = WaitOnScreen(
      a.timeoutMs, [&] { return FindPixel(sys_.screen, a.at, a.colour, a.variation); });
  EndScreenWait(result, kPixelOutside);
}

void LineRunner::WaitImage(std::string_view argument) {
  const auto parsed = ParseWaitImage(argument);
  auto fail = [&](std::string_view message) {
    sys_.notify.SetStatusText(message);
    p_.currentValue_ = CurrentValue::Boolean(false);
  };
  if (!parsed.args) return fail(parsed.error);
  const WaitImageArgs& a = *parsed.args;
  // Found the way "mf" finds its file: as given, else in the Macro folder.
  std::string name = a.file;
  if (!sys_.files.IsFile(name))
    name = JoinPath(sys_.files, JoinPath(sys_.files, sys_.files.AppFolder(), "Macro"), name);
  const auto bytes = sys_.files.IsFile(name) ? sys_.files.ReadAll(name) : std::nullopt;
  auto image = bytes ? DecodeImage(*bytes) : std::nullopt;
  if (!image) return fail(std::string(kImageUnreadable) + a.file);
  ScreenImageSearch search(std::move(image->image), image->dpi, a.variation);
  const SearchResult result =
      WaitOnScreen(a.timeoutMs, [&] { return search.Find(sys_.screen, a.area); });
  EndScreenWait(result, kAreaOutside);
}

}  // namespace kx
