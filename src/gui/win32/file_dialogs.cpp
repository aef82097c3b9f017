#include "gui/win32/file_dialogs.h"

#include <commdlg.h>
#include <shlobj.h>

#include "sys/win32/wide.h"

namespace kx::win32 {

namespace {

// Longest path the dialogs return.
constexpr DWORD kPathBuffer = 32768;

// Descriptions and patterns joined by NUL characters, ending in two.
std::wstring FilterText(const gui::FileDialogRequest& request) {
  std::wstring filter;
  for (const gui::FileFilter& f : request.filters) {
    filter += Widen(f.description);
    filter += L'\0';
    filter += Widen(f.pattern);
    filter += L'\0';
  }
  filter += L'\0';
  return filter;
}

std::optional<std::string> Ask(HWND owner, const gui::FileDialogRequest& request, bool save) {
  const std::wstring filter = FilterText(request);
  const std::wstring title = Widen(request.title);
  const std::wstring folder = Widen(request.folder);
  const std::wstring extension = Widen(request.defaultExtension);
  std::wstring path(kPathBuffer, L'\0');
  OPENFILENAMEW ofn{};
  ofn.lStructSize = sizeof ofn;
  ofn.hwndOwner = owner;
  ofn.lpstrFilter = filter.c_str();
  ofn.nFilterIndex = 1;
  ofn.lpstrFile = path.data();
  ofn.nMaxFile = kPathBuffer;
  ofn.lpstrInitialDir = folder.empty() ? nullptr : folder.c_str();
  ofn.lpstrTitle = title.c_str();
  ofn.lpstrDefExt = extension.empty() ? nullptr : extension.c_str();
  ofn.Flags = OFN_EXPLORER | OFN_HIDEREADONLY | OFN_NOCHANGEDIR |
              (save ? OFN_OVERWRITEPROMPT | OFN_PATHMUSTEXIST : OFN_FILEMUSTEXIST);
  const BOOL ok = save ? ::GetSaveFileNameW(&ofn) : ::GetOpenFileNameW(&ofn);
  if (!ok) return std::nullopt;
  path.resize(wcslen(path.c_str()));
  return Narrow(path);
}

}  // namespace

std::optional<std::string> AskOpenFile(HWND owner, const gui::FileDialogRequest& request) {
  return Ask(owner, request, false);
}

std::optional<std::string> AskSaveFile(HWND owner, const gui::FileDialogRequest& request) {
  return Ask(owner, request, true);
}

std::optional<std::string> AskFolderPath(HWND owner, std::string_view title) {
  // The folder browser needs COM; it is started here, when first needed,
  // rather than at start-up for everyone.
  static const bool com = SUCCEEDED(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
  (void)com;
  const std::wstring text = Widen(title);
  BROWSEINFOW info{};
  info.hwndOwner = owner;
  info.lpszTitle = text.c_str();
  info.ulFlags = BIF_RETURNONLYFSDIRS | BIF_NEWDIALOGSTYLE;
  PIDLIST_ABSOLUTE list = ::SHBrowseForFolderW(&info);
  if (!list) return std::nullopt;
  std::wstring path(MAX_PATH, L'\0');
  const BOOL ok = ::SHGetPathFromIDListW(list, path.data());
  ::CoTaskMemFree(list);
  if (!ok) return std::nullopt;
  path.resize(wcslen(path.c_str()));
  return Narrow(path);
}

}  // namespace kx::win32
