#pragma once
// The tree of the Macro folder: its folders and files, folders first, each
// level sorted by name without regard to case.
#include <string>
#include <vector>

namespace kx {
class FolderPort;
}

namespace kx::gui {

struct TreeNode {
  std::string name;
  std::string path;  // relative to the Macro folder
  bool folder = false;
  std::vector<TreeNode> children;
  friend bool operator==(const TreeNode&, const TreeNode&) = default;
};

// Deeper folders than this are not shown (a link loop cannot hang the tree).
inline constexpr int kMaxTreeDepth = 16;

// Folders are read, and node paths joined, with the system's separator.
std::vector<TreeNode> ReadMacroTree(FolderPort& folders, const std::string& root, char separator);

}  // namespace kx::gui
