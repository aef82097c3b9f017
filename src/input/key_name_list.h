#pragma once
// The key-name list shipped beside the program (操作記録名一覧.txt): every
// key name the recorder writes, every word the player reads and every mouse
// line form, taken from the vocabulary tables themselves.
#include <string>
#include <string_view>

namespace kx {

// The list as text with CR LF line ends. Entries are the lines indented by two
// blanks; headings and notes are not indented.
std::string KeyNameListText(std::string_view version);

}  // namespace kx
