#include "sys/win32/win32_power.h"

#include <powrprof.h>
#include <shellapi.h>
#include <shlobj.h>
#include <wininet.h>

#include <string_view>

#include "sys/win32/unique_handle.h"

namespace kx::win32 {

namespace {

// Logging off and switching the power off need the shutdown privilege enabled
// in the process token first.
void EnableShutdownPrivilege() {
  HANDLE raw = nullptr;
  if (!::OpenProcessToken(::GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &raw))
    return;
  unique_kernel_handle token(raw);
  TOKEN_PRIVILEGES privileges{};
  privileges.PrivilegeCount = 1;
  privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
  if (!::LookupPrivilegeValueW(nullptr, SE_SHUTDOWN_NAME, &privileges.Privileges[0].Luid)) return;
  ::AdjustTokenPrivileges(token.get(), FALSE, &privileges, 0, nullptr, nullptr);
}

void ExitWindowsWith(UINT flags) {
  EnableShutdownPrivilege();
  ::ExitWindowsEx(flags, 0);
}

enum class CacheKind { kCookies, kHistory, kFiles };

CacheKind KindOf(std::string_view sourceUrl) {
  if (sourceUrl.starts_with("Cookie:")) return CacheKind::kCookies;
  if (sourceUrl.starts_with("Visited:")) return CacheKind::kHistory;
  return CacheKind::kFiles;
}

// Walks the URL cache and deletes the entries of one kind.
void CleanUrlCache(CacheKind kind) {
  DWORD size = 0;
  HANDLE find = ::FindFirstUrlCacheEntryA(nullptr, nullptr, &size);
  if (!find && ::GetLastError() != ERROR_INSUFFICIENT_BUFFER) return;
  std::string buffer(std::max<DWORD>(size, sizeof(INTERNET_CACHE_ENTRY_INFOA)) + 1, '\0');
  auto* entry = reinterpret_cast<INTERNET_CACHE_ENTRY_INFOA*>(buffer.data());
  if (!find) {
    size = static_cast<DWORD>(buffer.size());
    find = ::FindFirstUrlCacheEntryA(nullptr, entry, &size);
    if (!find) return;
  }
  for (;;) {
    if (entry->lpszSourceUrlName && KindOf(entry->lpszSourceUrlName) == kind)
      ::DeleteUrlCacheEntryA(entry->lpszSourceUrlName);
    size = static_cast<DWORD>(buffer.size());
    if (::FindNextUrlCacheEntryA(find, entry, &size)) continue;
    if (::GetLastError() != ERROR_INSUFFICIENT_BUFFER) break;
    buffer.assign(size + 1, '\0');
    entry = reinterpret_cast<INTERNET_CACHE_ENTRY_INFOA*>(buffer.data());
    size = static_cast<DWORD>(buffer.size());
    if (!::FindNextUrlCacheEntryA(find, entry, &size)) break;
    if (entry->lpszSourceUrlName && KindOf(entry->lpszSourceUrlName) == kind)
      ::DeleteUrlCacheEntryA(entry->lpszSourceUrlName);
  }
  ::FindCloseUrlCache(find);
}

void CleanTemp() {
  wchar_t path[MAX_PATH + 1];
  const DWORD n = ::GetTempPathW(MAX_PATH + 1, path);
  if (n == 0 || n > MAX_PATH) return;
  DeleteFilesIn(path);
}

}  // namespace

int DeleteFilesIn(const std::wstring& folder) {
  std::wstring base = folder;
  if (!base.empty() && base.back() != L'\\') base += L'\\';
  WIN32_FIND_DATAW data;
  unique_find find(::FindFirstFileW((base + L"*.*").c_str(), &data));
  if (!find) return 0;
  int deleted = 0;
  do {
    // Folders, links and junctions are never entered or removed: only plain
    // files of this folder go. A file in use fails to delete and is skipped.
    if (data.dwFileAttributes & (FILE_ATTRIBUTE_DIRECTORY | FILE_ATTRIBUTE_REPARSE_POINT)) continue;
    if (::DeleteFileW((base + data.cFileName).c_str())) ++deleted;
  } while (::FindNextFileW(find.get(), &data));
  return deleted;
}

void Win32Power::Power(PowerAction action) {
  switch (action) {
    case PowerAction::kLogoff:
      ExitWindowsWith(EWX_LOGOFF);
      break;
    case PowerAction::kShutdown:
      ExitWindowsWith(EWX_POWEROFF);
      break;
    case PowerAction::kReboot:
      ExitWindowsWith(EWX_REBOOT);
      break;
    case PowerAction::kStandby:
      ::SetSuspendState(FALSE, FALSE, FALSE);
      break;
    case PowerAction::kHibernate:
      ::SetSuspendState(TRUE, FALSE, FALSE);
      break;
    case PowerAction::kMonitorOn:
      ::PostMessageW(HWND_BROADCAST, WM_SYSCOMMAND, SC_MONITORPOWER, static_cast<LPARAM>(-1));
      break;
    case PowerAction::kMonitorOff:
      ::PostMessageW(HWND_BROADCAST, WM_SYSCOMMAND, SC_MONITORPOWER, 2);
      break;
  }
}

void Win32Power::Clean(Cleanup what) {
  switch (what) {
    case Cleanup::kCookie:
      CleanUrlCache(CacheKind::kCookies);
      break;
    case Cleanup::kCache:
      CleanUrlCache(CacheKind::kFiles);
      break;
    case Cleanup::kHistory:
      CleanUrlCache(CacheKind::kHistory);
      break;
    case Cleanup::kRecent:
      ::SHAddToRecentDocs(SHARD_PIDL, nullptr);
      break;
    case Cleanup::kRecycle:
      ::SHEmptyRecycleBinA(nullptr, nullptr, 0);
      break;
    case Cleanup::kTemp:
      CleanTemp();
      break;
  }
}

RecycleBinContents Win32Power::QueryRecycleBin() {
  SHQUERYRBINFO info{};
  info.cbSize = sizeof info;
  if (FAILED(::SHQueryRecycleBinW(nullptr, &info))) return {};
  return {info.i64NumItems, info.i64Size};
}

void Win32Power::EmptyRecycleBinUnasked() {
  ::SHEmptyRecycleBinW(nullptr, nullptr, SHERB_NOCONFIRMATION);
}

}  // namespace kx::win32
