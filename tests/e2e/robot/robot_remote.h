#pragma once
// Common controls whose messages carry pointers (tree views, list views,
// status bar parts, tooltips) are read with a buffer placed in the target
// process: the robot writes the request structure there, sends the message
// with the remote address and reads the answer back. The structures are
// those of a 64-bit process, so the target must be 64-bit too.
#include <optional>
#include <string>
#include <vector>

#include "common_controls.h"
#include "sys/win32/unique_handle.h"

namespace kx::robot {

// Memory in another process, freed when this goes.
class RemoteBuffer {
 public:
  RemoteBuffer(HWND owner, size_t size);
  ~RemoteBuffer();
  RemoteBuffer(const RemoteBuffer&) = delete;
  RemoteBuffer& operator=(const RemoteBuffer&) = delete;

  explicit operator bool() const { return address_ != nullptr; }
  // The address in the target's space, offset bytes in.
  LPARAM At(size_t offset = 0) const {
    return reinterpret_cast<LPARAM>(static_cast<char*>(address_) + offset);
  }
  bool Write(const void* data, size_t size, size_t offset = 0) const;
  bool Read(void* data, size_t size, size_t offset = 0) const;
  // A NUL-ended UTF-16 string at an address in the target, at most max chars.
  std::wstring ReadString(LPARAM address, size_t max) const;

 private:
  win32::unique_handle<HANDLE, win32::KernelHandleDeleter> process_;
  void* address_ = nullptr;
};

struct TreeItem {
  HTREEITEM item;
  int depth;
  std::wstring text;
  std::wstring path;  // texts from the root down, joined by '/'
  bool selected;
  bool expanded;
  bool hasChildren;
};

// Every item in a tree view, depth first as shown (collapsed items' children
// included when the control already holds them).
std::optional<std::vector<TreeItem>> ReadTree(HWND tree);
// Selects the item at a '/'-separated path of texts, expanding the items on
// the way so that controls filling their branches on demand do so.
bool SelectTreePath(HWND tree, const std::wstring& path);

struct ListRow {
  int index;
  bool selected;
  bool focused;
  std::vector<std::wstring> cells;  // one per column, at least one
};
std::vector<std::wstring> ReadListColumns(HWND list);
std::optional<std::vector<ListRow>> ReadListRows(HWND list);
bool SelectListRow(HWND list, int index);

// The text of each part of a status bar.
std::optional<std::vector<std::wstring>> ReadStatusParts(HWND bar);

// The captions of a tab control's tabs.
std::optional<std::vector<std::wstring>> ReadTabs(HWND tabs);

struct Tip {
  HWND tooltip;
  HWND tool;
  UINT_PTR id;
  std::wstring text;  // "(callback)" when the owner supplies it on demand
};
std::vector<Tip> ReadTooltips(HWND top);

}  // namespace kx::robot
