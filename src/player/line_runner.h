#pragma once
// Runs one line of a pass: classification, block constructs, and every
// command form. Its methods are spread over files by family of commands.
#include <functional>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "input/input_lines.h"
#include "player/macro_line.h"
#include "player/player.h"
#include "player/wait.h"
#include "screen/screen_search.h"

namespace kx {

// A run-time failure inside a line: ends the pass silently.
struct ScriptFailure {};

class LineRunner {
 public:
  LineRunner(Player& player, const std::vector<std::string>& lines)
      : p_(player),
        sys_(player.sys_),
        lines_(lines),
        input_(player.sys_, player.input_, player.options_.unicodeKeys) {}

  // Runs the line at the player's current index. Returns the key it ran
  // with, for the line-pause rule.
  std::string Run(std::string_view raw);
  // Whether the line would do something if it ran now: not blank, and not
  // inside a switch region that is being skipped (block constructs always
  // count). Nothing is run or changed.
  bool Runs(std::string_view line) const;

 private:
  void Assign(std::string_view raw);
  void RunBlock(const ClassifiedBlock& block);
  void RunForm(const ClassifiedLine& command, std::string_view key);

  // Control flow.
  // Arguments are as the classifier cut them (see ClassifiedLine).
  void PartialLoop(std::string_view key, std::string_view argument);
  void Goto(std::string_view argument);
  void Pause();
  void Rand(std::string_view argument);
  // Windows, files and the shell.
  void ActivateWindow(std::string_view argument);
  void MoveWindow(std::string_view argument);
  void RunMacroFile(std::string_view argument);
  bool OpenWithShell(std::string_view target);
  void KeyLine(std::string_view key);
  // The clipboard.
  void Paste(std::string_view text, int attempts, int sleepMs);
  void PasteKeep(std::string_view text);
  void PasteRestore(std::string_view text);
  // System commands.
  void Power(std::string_view key);
  void Delete(std::string_view word);
  void MessageBox(std::string_view text);
  void RegistryJump(std::string_view key);
  void Comment(std::string_view text);
  void Pointer(std::string_view key, std::string_view where);
  // Window-text and page commands.
  void PageCommand(std::string_view key, std::string_view argument);
  void WriteWindowText(const std::vector<std::string>& fields, bool append);
  void ReadWindowText(std::string_view argument);
  void SetTextByHandle(std::string_view argument);
  void ClickButton(std::string_view argument);
  void SendClick(const std::vector<std::string>& fields);
  void PostKey(const std::vector<std::string>& fields);
  void WaitWeb();
  void OpenBrowser(std::string_view address);
  std::unique_ptr<PageDocument> PageDocumentOf(std::span<const std::string> path);
  // Screen waits.
  void WaitPixel(std::string_view argument);
  void WaitImage(std::string_view argument);
  SearchResult WaitOnScreen(double timeoutMs, const std::function<SearchResult()>& check);
  void EndScreenWait(const SearchResult& result, std::string_view outsideMessage);

  // A wait that pumps messages and ends at once when the play is stopped.
  void PumpingWait(double milliseconds) { kx::PumpingWait(sys_.clock, milliseconds, p_.playing_); }
  bool SkippingSwitchRegion() const { return p_.switchDepth_ >= 1 && p_.switchState_ != 1; }

  Player& p_;
  System& sys_;
  const std::vector<std::string>& lines_;
  InputLines input_;
};

}  // namespace kx
