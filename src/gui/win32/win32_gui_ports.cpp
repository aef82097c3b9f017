#include "gui/win32/win32_gui_ports.h"

#include "sys/win32/wide.h"

namespace kx::win32 {

namespace {
constexpr wchar_t kInstanceMutex[] = L"Kestrelix.MainInstance";
}

bool Win32Hotkeys::Register(int id, int modifiers, int key) {
  return ::RegisterHotKey(window_, id, static_cast<UINT>(modifiers), static_cast<UINT>(key)) != 0;
}

void Win32Hotkeys::Unregister(int id) {
  ::UnregisterHotKey(window_, id);
}

bool Win32Instance::OtherInstanceRunning() {
  mutex_.reset(::CreateMutexW(nullptr, FALSE, kInstanceMutex));
  return ::GetLastError() == ERROR_ALREADY_EXISTS;
}

void Win32Instance::RaiseOtherInstance() {
  // This window's own caption is "$" by now; any other window of the class
  // is the first instance's, whatever file its caption names.
  HWND other = nullptr;
  for (HWND w = ::FindWindowExW(nullptr, nullptr, kMainWindowClass, nullptr); w;
       w = ::FindWindowExW(nullptr, w, kMainWindowClass, nullptr)) {
    if (w != window_) {
      other = w;
      break;
    }
  }
  if (!other) return;
  if (!::IsWindowVisible(other) || ::IsIconic(other)) ::ShowWindow(other, SW_SHOWNORMAL);
  ::SetForegroundWindow(other);
}

std::vector<FolderEntry> Win32Folders::List(std::string_view folder) {
  std::vector<FolderEntry> entries;
  WIN32_FIND_DATAW data{};
  unique_find find(::FindFirstFileW((Widen(folder) + L"\\*").c_str(), &data));
  if (!find) return entries;
  do {
    const std::wstring name = data.cFileName;
    if (name == L"." || name == L"..") continue;
    if (data.dwFileAttributes & FILE_ATTRIBUTE_HIDDEN) continue;
    entries.push_back({Narrow(name), (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
  } while (::FindNextFileW(find.get(), &data));
  return entries;
}

bool Win32Folders::DeleteFile(std::string_view path) {
  return ::DeleteFileW(Widen(path).c_str()) != 0;
}

bool Win32Folders::IsFolder(std::string_view path) {
  const DWORD attributes = ::GetFileAttributesW(Widen(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

}  // namespace kx::win32
