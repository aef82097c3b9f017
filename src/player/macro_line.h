#pragma once
// One line of a macro: its normal forms and which line form it is.
#include <optional>
#include <string>
#include <string_view>

#include "eval/variable_table.h"
#include "sys/file_port.h"

namespace kx {

// The raw line: every leading tab removed, then leading blanks. A tab after a
// blank stays, and the line is then not recognised as a command.
std::string_view RawLine(std::string_view line);

// Replaces every variable's name by its value, variables taken in the order
// of their first assignment ("#a" before "#ab" turns "#ab" into a's value
// followed by "b").
std::string SubstituteVariables(std::string_view raw, const VariableTable& variables);

// The key: trimmed of blanks and lower-cased. Command words match on it.
std::string KeyOf(std::string_view substituted);

// "#name = expression": the key begins with "#" and the raw line holds "=".
bool IsAssignment(std::string_view raw);

// A wait line: a number of at least two characters ("05", "-50", "1e3").
bool IsWaitKey(std::string_view key);

// Block constructs are recognised before anything else, even in a switch
// region that is being skipped.
enum class BlockForm { kNone, kSwitch, kSwitchValue, kEndSwitch, kCase, kDefault };
BlockForm ClassifyBlock(std::string_view key);

// A block construct and its value: for "<switch v>" and "<case v>" the
// trimmed line from the word's end without its last character (the ">"),
// trimmed again; nothing when the line is too short to drop that character.
struct ClassifiedBlock {
  BlockForm form = BlockForm::kNone;
  std::optional<std::string> argument;
};
ClassifiedBlock ClassifyBlockLine(std::string_view substituted, std::string_view key);
std::string_view BlockFormName(BlockForm form);

// The command forms, in the order they are tried.
enum class LineForm {
  kWindow,
  kLock,
  kMacroFile,
  kWait,
  kFile,
  kHttp,
  kMove,
  kBeep,
  kRand,
  kGetClip,
  kGetLoop,
  kPartialLoop,
  kPause,
  kComment,
  kCopy,
  kPaste,
  kPasteKeep,
  kPasteRestore,
  kPower,
  kDelete,
  kPage,
  kWaitPixel,
  kWaitImage,
  kKeys,
  kKey,
  kGoto,
  kDebug,
  kMsgBox,
  kRegistry,
  kCapsLock,
  kNumLock,
  kPointer,
  kMouseButton,
  kWheel,
  kBrowser,
  kKeyLine,
};

// A command line's form and its argument, cut as the form takes it: from the
// key (lower-cased) or from the substituted line (case as written), after the
// command word, trimmed as the form wants. Forms without an argument get "";
// forms that look at the whole key (key lines, waits, files, power words)
// get the key.
struct ClassifiedLine {
  LineForm form = LineForm::kKeyLine;
  std::string argument;
};

// The first form whose test the key passes; kKeyLine when none does.
ClassifiedLine ClassifyLine(std::string_view substituted, std::string_view key, FilePort& files);
LineForm Classify(std::string_view key, FilePort& files);
// The form's name as "kx explain" prints it.
std::string_view LineFormName(LineForm form);

}  // namespace kx
