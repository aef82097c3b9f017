#include "gui/macro_tree.h"

#include <algorithm>

#include "sys/folder_port.h"
#include "util/basic_text.h"

namespace kx::gui {

namespace {

std::vector<TreeNode> ReadLevel(FolderPort& folders, const std::string& folder, char separator,
                                const std::string& prefix, int depth) {
  std::vector<TreeNode> nodes;
  for (const FolderEntry& entry : folders.List(folder)) {
    TreeNode node{entry.name,
                  prefix.empty() ? entry.name : prefix + separator + entry.name,
                  entry.folder,
                  {}};
    if (entry.folder && depth + 1 < kMaxTreeDepth)
      node.children =
          ReadLevel(folders, folder + separator + entry.name, separator, node.path, depth + 1);
    nodes.push_back(std::move(node));
  }
  std::stable_sort(nodes.begin(), nodes.end(), [](const TreeNode& a, const TreeNode& b) {
    if (a.folder != b.folder) return a.folder;
    return basic::LCase(a.name) < basic::LCase(b.name);
  });
  return nodes;
}

}  // namespace

std::vector<TreeNode> ReadMacroTree(FolderPort& folders, const std::string& root, char separator) {
  return ReadLevel(folders, root, separator, "", 0);
}

}  // namespace kx::gui
