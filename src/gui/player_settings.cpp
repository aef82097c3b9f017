#include "gui/player_settings.h"

#include <algorithm>

#include "player/play_speed.h"
#include "util/basic_text.h"

namespace kx {

namespace {
constexpr int kLowestPort = 1;
constexpr int kHighestPort = 65535;
constexpr int kMaxLoopCount = 9999;
}  // namespace

PlayerOptions PlayerOptionsFromSettings(const Settings& settings) {
  PlayerOptions options;
  options.endNotifier = settings.endNotifer;
  options.releaseModifiers = settings.up;
  options.releaseHeld = settings.releaseHeld;
  options.speedFactor = SpeedFactorFromRate(settings.rate);
  options.trace = settings.trace;
  options.balloon = settings.balloon;
  options.unicodeKeys = settings.unicodeKeys != 0;
  // A port outside the range TCP allows keeps the browsers' usual one.
  options.devToolsPort =
      settings.devToolsPort >= kLowestPort && settings.devToolsPort <= kHighestPort
          ? settings.devToolsPort
          : PlayerOptions{}.devToolsPort;
  options.browser = settings.browser;
  // A wait of nothing or less would fail every browser line.
  options.browserWaitMs =
      settings.browserWaitMs > 0 ? settings.browserWaitMs : PlayerOptions{}.browserWaitMs;
  return options;
}

int LoopCountFromSettings(const Settings& settings) {
  // The box accepts 0 to 9999.
  return settings.loop ? std::clamp(settings.loopCnt, 0, kMaxLoopCount) : 1;
}

int LoopCountFromText(std::string_view text) {
  if (!basic::IsNumeric(text)) return 1;
  return static_cast<int>(std::clamp(basic::Val(text), 0.0, double{kMaxLoopCount}));
}

HotkeyChord PlayHotkeyFromSettings(const Settings& settings) {
  return {settings.hotkeyPlayMod, settings.hotkeyPlay};
}

}  // namespace kx
