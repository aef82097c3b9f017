// The file port on POSIX systems: rename() replaces the target atomically.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <new>

#include "sys/local_files.h"

namespace kx {

namespace {

class FileDescriptor {
 public:
  explicit FileDescriptor(int fd) : fd_(fd) {}
  ~FileDescriptor() {
    if (fd_ >= 0) ::close(fd_);
  }
  FileDescriptor(const FileDescriptor&) = delete;
  FileDescriptor& operator=(const FileDescriptor&) = delete;
  int get() const { return fd_; }
  // Closes now and reports whether the close succeeded.
  bool Close() {
    const int fd = fd_;
    fd_ = -1;
    return ::close(fd) == 0;
  }

 private:
  int fd_;
};

}  // namespace

bool LocalFiles::IsFile(std::string_view path) {
  struct stat info {};
  return ::stat(std::string(path).c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

std::optional<Bytes> LocalFiles::ReadAll(std::string_view path) {
  FileDescriptor file(::open(std::string(path).c_str(), O_RDONLY | O_CLOEXEC));
  if (file.get() < 0) return std::nullopt;
  struct stat info {};
  if (::fstat(file.get(), &info) != 0 || !S_ISREG(info.st_mode)) return std::nullopt;
  if (static_cast<std::uint64_t>(info.st_size) > kMaxReadBytes) return std::nullopt;
  try {
    Bytes bytes(static_cast<std::size_t>(info.st_size));
    std::size_t done = 0;
    while (done < bytes.size()) {
      const ssize_t got = ::read(file.get(), bytes.data() + done, bytes.size() - done);
      if (got < 0 && errno == EINTR) continue;
      if (got < 0) return std::nullopt;
      if (got == 0) break;  // the file shrank while it was read
      done += static_cast<std::size_t>(got);
    }
    bytes.resize(done);
    return bytes;
  } catch (const std::bad_alloc&) {
    return std::nullopt;
  }
}

bool LocalFiles::WriteTemporary(const std::string& temporary, const Bytes& bytes) {
  FileDescriptor file(::open(temporary.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644));
  if (file.get() < 0) return false;
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t put = ::write(file.get(), bytes.data() + done, bytes.size() - done);
    if (put < 0 && errno == EINTR) continue;
    if (put <= 0) return false;
    done += static_cast<std::size_t>(put);
  }
  return ::fsync(file.get()) == 0 && file.Close();
}

bool LocalFiles::ReplaceTarget(const std::string& temporary, const std::string& target) {
  return ::rename(temporary.c_str(), target.c_str()) == 0;
}

void LocalFiles::RemoveTemporary(const std::string& temporary) {
  ::unlink(temporary.c_str());
}

std::string LocalFiles::AppFolder() {
  std::string buffer(4096, '\0');
  const ssize_t length = ::readlink("/proc/self/exe", buffer.data(), buffer.size());
  if (length <= 0) return ".";
  buffer.resize(static_cast<std::size_t>(length));
  const std::size_t slash = buffer.rfind('/');
  if (slash == std::string::npos) return ".";
  return slash == 0 ? std::string("/") : buffer.substr(0, slash);
}

char LocalFiles::Separator() {
  return '/';
}

}  // namespace kx
