#pragma once
// Small wrappers of the common controls the main window uses: each is
// created from an argument struct and reports through callbacks. They are
// children of the main window and go with it.
#include "sys/win32/windows_api.h"
// The common controls' header needs the Windows headers before it.
#include <commctrl.h>

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "gui/macro_tree.h"

namespace kx::win32 {

struct ControlArgs {
  HWND parent = nullptr;
  int id = 0;
  std::wstring text;
};

class PushButton {
 public:
  bool Create(const ControlArgs& args);
  HWND hwnd() const { return hwnd_; }
  void SetText(const std::wstring& text) { ::SetWindowTextW(hwnd_, text.c_str()); }
  void Enable(bool on) { ::EnableWindow(hwnd_, on ? TRUE : FALSE); }
  // Right clicks are not a button's own; the window hears them through this.
  std::function<void()> onRightClick;

 private:
  static LRESULT CALLBACK Subclass(HWND, UINT, WPARAM, LPARAM, UINT_PTR, DWORD_PTR) noexcept;
  HWND hwnd_ = nullptr;
};

// Tool tips for any number of controls of one window.
class Tooltips {
 public:
  bool Create(HWND parent);
  void Add(HWND tool, const std::wstring& text);

 private:
  HWND parent_ = nullptr;
  HWND hwnd_ = nullptr;
};

class StatusBar {
 public:
  bool Create(const ControlArgs& args);
  HWND hwnd() const { return hwnd_; }
  void SetText(const std::wstring& text);
  int Height() const;
  // Moves itself to the bottom of the parent.
  void Layout() { ::SendMessageW(hwnd_, WM_SIZE, 0, 0); }

 private:
  HWND hwnd_ = nullptr;
};

// The loop-count box: digits only, with an up-down control of 1 to 9999.
class LoopCountBox {
 public:
  static constexpr int kMin = 1;
  static constexpr int kMax = 9999;
  bool Create(const ControlArgs& args, int spinId);
  HWND edit() const { return edit_; }
  HWND spin() const { return spin_; }
  int Value() const;
  void SetValue(int value);
  void Lock(bool locked);

 private:
  HWND edit_ = nullptr;
  HWND spin_ = nullptr;
};

// One line of text: a label, or a box the user can select and copy from but
// not change.
class TextLine {
 public:
  enum class Kind { kLabel, kReadOnlyBox };
  bool Create(const ControlArgs& args, Kind kind);
  HWND hwnd() const { return hwnd_; }
  void SetText(const std::wstring& text) { ::SetWindowTextW(hwnd_, text.c_str()); }

 private:
  HWND hwnd_ = nullptr;
};

// A report list view of names and values. Rows are given whole; only the
// cells whose text changed are set again, so refreshing an unchanged list
// draws nothing.
class NameValueList {
 public:
  bool Create(const ControlArgs& args, const std::wstring& nameHeader,
              const std::wstring& valueHeader);
  HWND hwnd() const { return hwnd_; }
  void SetRows(const std::vector<std::pair<std::wstring, std::wstring>>& rows);
  void SetColumnWidths(int name, int value);

 private:
  void SetCell(int row, int column, const std::wstring& text);
  HWND hwnd_ = nullptr;
  std::vector<std::pair<std::wstring, std::wstring>> shown_;
};

class MacroTreeView {
 public:
  bool Create(const ControlArgs& args);
  HWND hwnd() const { return hwnd_; }
  void Set(const std::vector<gui::TreeNode>& nodes, bool icons);
  std::optional<std::string> SelectedPath() const;
  bool SelectedIsFolder() const;
  // Selects the node under a screen point; false when there is none.
  bool SelectAt(POINT screen);
  ~MacroTreeView();

 private:
  void Add(HTREEITEM parent, const gui::TreeNode& node, bool icons);
  HWND hwnd_ = nullptr;
  HIMAGELIST images_ = nullptr;
  std::vector<std::pair<std::string, bool>> items_;  // path and folder, by lParam
};

}  // namespace kx::win32
