#pragma once
// The main window's side of the debugger: the 再生 menu's debugger items,
// the gutter's breakpoints, the pause shown in the status bar and the editor,
// and the variable watch. The decisions are the Debugger's; this class
// carries them to the window. The main controller only forwards to it.
//
// While a macro plays: breakpoints may be set and removed (they count from
// the next line), F10 pauses the play before its next line, F5 and Ctrl+F10
// change where it pauses next, and the watch is refreshed four times a
// second. A play paused by the debugger keeps the editor read-only, so that
// CurrentLine still names the line shown.
#include <set>
#include <string>

#include "gui/main_view.h"
#include "player/debugger.h"
#include "player/player.h"

namespace kx::gui {

class DebugController {
 public:
  DebugController(Player& player, MainView& view, WindowPort& windows);
  DebugController(const DebugController&) = delete;
  DebugController& operator=(const DebugController&) = delete;

  void ToggleBreakpoint() { ToggleBreakpointAt(view_.CaretLine()); }
  // A click in the gutter.
  void ToggleBreakpointAt(int index);
  void ClearBreakpoints();

  // What the main window must do with the player after F10, F5 or Ctrl+F10:
  // nothing (a running play takes the new way at its next line), resume the
  // paused play, or start a play of the editor's text.
  enum class Go { kNothing, kResume, kStart };
  Go Step();
  Go Continue();
  Go RunToCursor();

  // The play button or hotkey while the debugger holds a play paused: the
  // play ends as a stop ends it. False when nothing was paused.
  bool StopIfPaused();
  bool Paused() const { return debugger_.PausedAt().has_value(); }
  // The status bar's text while paused; empty otherwise.
  std::string StatusText() const;

  // The user edited the text: breakpoints follow their lines.
  void TextEdited();
  // Another file was loaded or the editor cleared: the breakpoints go, and
  // a paused play is given up.
  void TextReplaced();

  // The player's SetPlaying: a resumed play brings back the window that was
  // in front; a play that paused shows where.
  void PlayingChanged(bool playing);

  // The watch window: opened at its stored placement, refreshed at every
  // pause and step and by the window timer while playing.
  void OpenWatch(const PlacementTwips& placement);
  void RefreshWatch();

  // Plays that are not the editor's own (per-macro hotkeys, the schedule)
  // run without the debugger; the editor's text they swap is not followed.
  class Detached {
   public:
    explicit Detached(DebugController& owner);
    ~Detached();
    Detached(const Detached&) = delete;
    Detached& operator=(const Detached&) = delete;

   private:
    DebugController& owner_;
  };

 private:
  Go Next() const;
  void ShowBreakpoints() { view_.ShowBreakpoints(debugger_.breakpoints().Lines()); }

  Player& player_;
  MainView& view_;
  Debugger debugger_;
  int detached_ = 0;
};

}  // namespace kx::gui
