#pragma once
// One line of a macro: its normal forms and which line form it is.
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
  kKeyLine,
};

// The first form whose test the key passes; kKeyLine when none does.
LineForm Classify(std::string_view key, FilePort& files);

}  // namespace kx
