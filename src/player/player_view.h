#pragma once
// What the player needs from the main window: the editor's text, the
// loop-count box, the running-line highlight and the controls it locks.
#include <string>

#include "sys/geometry.h"

namespace kx {

class PlayerView {
 public:
  virtual ~PlayerView() = default;
  // The editor's whole text, lines separated by CR LF.
  virtual std::string Text() = 0;
  // The number in the loop-count box.
  virtual int LoopCount() = 0;
  // Disables (true) or re-enables the command buttons and the macro tree,
  // locks the loop-count box and switches the window and tray icons.
  virtual void SetPlaying(bool playing) = 0;
  virtual void HighlightLine(int index) = 0;
  virtual void ClearHighlight() = 0;
  // Selects line `index` (from its first character to the next line's).
  virtual void SelectLine(int index) = 0;
  // A new variable was appended to the table.
  virtual void VariablesChanged() = 0;
  // The caption when no play runs: the application title, " - " and the file.
  virtual std::string IdleCaption() = 0;
  virtual WindowHandle MainWindow() = 0;

  // Observation points for tracing and diagnostics; nothing by default.
  virtual void OnAssigned(const std::string& /*name*/, const std::string& /*value*/) {}
  // A run-time failure ended a pass at line `line` (counted from 1).
  virtual void OnLineFailed(int /*line*/) {}
  // Called before each line runs, with its index.
  virtual void OnLine(int /*index*/) {}
  // The system took fewer input events than line `line` (from 1) sent; told
  // once per play.
  virtual void OnInputBlocked(int /*line*/) {}
};

}  // namespace kx
