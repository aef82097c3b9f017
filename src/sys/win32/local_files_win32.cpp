// The file port on Windows: wide-character paths, and MoveFileExW with
// MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH to replace the target in
// one step once the temporary file is on the disk.
#include <windows.h>

#include <new>

#include "sys/local_files.h"
#include "text/utf.h"

namespace kx {

namespace {

std::wstring Wide(std::string_view utf8) {
  const std::u16string text = Utf8ToUtf16(utf8);
  return std::wstring(text.begin(), text.end());
}

class FileHandle {
 public:
  explicit FileHandle(HANDLE handle) : handle_(handle) {}
  ~FileHandle() {
    if (valid()) CloseHandle(handle_);
  }
  FileHandle(const FileHandle&) = delete;
  FileHandle& operator=(const FileHandle&) = delete;
  bool valid() const { return handle_ != INVALID_HANDLE_VALUE; }
  HANDLE get() const { return handle_; }
  // Closes now and reports whether the close succeeded.
  bool Close() {
    const HANDLE handle = handle_;
    handle_ = INVALID_HANDLE_VALUE;
    return CloseHandle(handle) != 0;
  }

 private:
  HANDLE handle_;
};

// Reads and writes go in pieces because the calls take 32-bit lengths.
constexpr DWORD kPieceBytes = 1u << 24;

}  // namespace

bool LocalFiles::IsFile(std::string_view path) {
  const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

std::optional<Bytes> LocalFiles::ReadAll(std::string_view path) {
  FileHandle file(CreateFileW(Wide(path).c_str(), GENERIC_READ,
                              FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                              OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.valid()) return std::nullopt;
  LARGE_INTEGER size{};
  if (!GetFileSizeEx(file.get(), &size) || size.QuadPart < 0 ||
      static_cast<std::uint64_t>(size.QuadPart) > kMaxReadBytes)
    return std::nullopt;
  try {
    Bytes bytes(static_cast<std::size_t>(size.QuadPart));
    std::size_t done = 0;
    while (done < bytes.size()) {
      const DWORD want =
          static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, kPieceBytes));
      DWORD got = 0;
      if (!ReadFile(file.get(), bytes.data() + done, want, &got, nullptr)) return std::nullopt;
      if (got == 0) break;  // the file shrank while it was read
      done += got;
    }
    bytes.resize(done);
    return bytes;
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

bool LocalFiles::WriteTemporary(const std::string& temporary, const Bytes& bytes) {
  FileHandle file(CreateFileW(Wide(temporary).c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.valid()) return false;
  std::size_t done = 0;
  while (done < bytes.size()) {
    const DWORD want = static_cast<DWORD>(std::min<std::size_t>(bytes.size() - done, kPieceBytes));
    DWORD put = 0;
    if (!WriteFile(file.get(), bytes.data() + done, want, &put, nullptr) || put == 0) return false;
    done += put;
  }
  return FlushFileBuffers(file.get()) != 0 && file.Close();
}

bool LocalFiles::ReplaceTarget(const std::string& temporary, const std::string& target) {
  return MoveFileExW(Wide(temporary).c_str(), Wide(target).c_str(),
                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

void LocalFiles::RemoveTemporary(const std::string& temporary) {
  DeleteFileW(Wide(temporary).c_str());
}

std::string LocalFiles::AppFolder() {
  std::wstring buffer(MAX_PATH, L'\0');
  while (true) {
    const DWORD length =
        GetModuleFileNameW(nullptr, buffer.data(), static_cast<DWORD>(buffer.size()));
    if (length == 0) return ".";
    if (length < buffer.size()) {
      buffer.resize(length);
      break;
    }
    if (buffer.size() >= 32768) return ".";
    buffer.resize(buffer.size() * 2);
  }
  const std::size_t slash = buffer.find_last_of(L"\\/");
  if (slash == std::wstring::npos) return ".";
  const std::wstring folder = buffer.substr(0, slash);
  return Utf16ToUtf8(std::u16string(folder.begin(), folder.end()));
}

char LocalFiles::Separator() {
  return '\\';
}

}  // namespace kx
