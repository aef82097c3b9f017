#include "sys/win32/win32_clipboard.h"

#include <cstring>
#include <string>

#include "sys/win32/unique_handle.h"
#include "sys/win32/wide.h"
#include "sys/win32/windows_api.h"

namespace kx::win32 {

namespace {

// Another program may hold the clipboard open for a moment; try a few times
// before giving up.
bool OpenWithRetries() {
  for (int attempt = 0; attempt < 20; ++attempt) {
    if (::OpenClipboard(nullptr)) return true;
    ::Sleep(5);
  }
  return false;
}

}  // namespace

std::optional<std::string> Win32Clipboard::GetText() {
  if (!OpenWithRetries()) return std::nullopt;
  scope_exit close([] { ::CloseClipboard(); });
  HANDLE data = ::GetClipboardData(CF_UNICODETEXT);
  if (!data) return std::nullopt;
  const auto* p = static_cast<const wchar_t*>(::GlobalLock(data));
  if (!p) return std::nullopt;
  const size_t maxUnits = ::GlobalSize(data) / sizeof(wchar_t);
  const std::wstring text(p, ::wcsnlen(p, maxUnits));
  ::GlobalUnlock(data);
  return Narrow(text);
}

bool Win32Clipboard::SetText(std::string_view text) {
  const std::wstring wide = Widen(text);
  const size_t bytes = (wide.size() + 1) * sizeof(wchar_t);
  unique_hglobal memory(::GlobalAlloc(GMEM_MOVEABLE, bytes));
  if (!memory) return false;
  void* p = ::GlobalLock(memory.get());
  if (!p) return false;
  std::memcpy(p, wide.c_str(), bytes);
  ::GlobalUnlock(memory.get());
  if (!OpenWithRetries()) return false;
  scope_exit close([] { ::CloseClipboard(); });
  ::EmptyClipboard();
  if (!::SetClipboardData(CF_UNICODETEXT, memory.get())) return false;
  memory.release();  // the clipboard owns it now
  return true;
}

}  // namespace kx::win32
