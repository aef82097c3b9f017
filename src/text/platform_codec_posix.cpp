// glibc's iconv does the table conversions in the Linux build.
#include <iconv.h>

#include <array>
#include <cerrno>

#include "text/platform_codec.h"
#include "text/utf.h"

namespace kx {

namespace {

// The iconv names; CP932 rather than SHIFT_JIS because the Windows program
// converts through code page 932 with its vendor extensions.
const char* IconvName(PlatformCharset charset) {
  switch (charset) {
    case PlatformCharset::kShiftJis:
      return "CP932";
    case PlatformCharset::kEucJp:
      return "EUC-JP";
    case PlatformCharset::kUtf7:
      return "UTF-7";
  }
  return "CP932";
}

class Converter {
 public:
  Converter(const char* to, const char* from) : handle_(iconv_open(to, from)) {}
  ~Converter() {
    if (ok()) iconv_close(handle_);
  }
  Converter(const Converter&) = delete;
  Converter& operator=(const Converter&) = delete;
  bool ok() const { return handle_ != reinterpret_cast<iconv_t>(-1); }

  // Converts all of input; at a sequence that cannot be converted, appends
  // the replacement and goes on after skipping skip(position) bytes.
  template <typename Skip>
  std::string Run(std::string_view input, std::string_view replacement, Skip skip) {
    std::string out;
    out.reserve(input.size() + input.size() / 2);
    std::array<char, 65536> buffer;
    char* in = const_cast<char*>(input.data());
    std::size_t inLeft = input.size();
    while (true) {
      char* outPtr = buffer.data();
      std::size_t outLeft = buffer.size();
      const std::size_t result = inLeft == 0 ? iconv(handle_, nullptr, nullptr, &outPtr, &outLeft)
                                             : iconv(handle_, &in, &inLeft, &outPtr, &outLeft);
      out.append(buffer.data(), static_cast<std::size_t>(outPtr - buffer.data()));
      if (result != static_cast<std::size_t>(-1)) {
        if (inLeft == 0) break;
        continue;
      }
      if (errno == E2BIG) continue;
      // EILSEQ or EINVAL (a truncated sequence at the end): replace and skip.
      iconv(handle_, nullptr, nullptr, nullptr, nullptr);
      out += replacement;
      const std::size_t consumed = std::min(inLeft, skip(std::string_view(in, inLeft)));
      in += consumed;
      inLeft -= consumed;
      if (inLeft == 0) break;
    }
    return out;
  }

 private:
  iconv_t handle_;
};

// The length of the UTF-8 sequence at the start of text, at least 1.
std::size_t Utf8SequenceLength(std::string_view text) {
  const auto b = static_cast<unsigned char>(text.front());
  std::size_t length = 1;
  if ((b & 0xE0) == 0xC0) length = 2;
  if ((b & 0xF0) == 0xE0) length = 3;
  if ((b & 0xF8) == 0xF0) length = 4;
  return std::min(length, text.size());
}

}  // namespace

std::string PlatformDecode(PlatformCharset charset, const Bytes& bytes) {
  Converter converter("UTF-8", IconvName(charset));
  if (!converter.ok()) return {};
  const std::string_view input(reinterpret_cast<const char*>(bytes.data()), bytes.size());
  return converter.Run(input, "\xEF\xBF\xBD", [](std::string_view) { return std::size_t{1}; });
}

Bytes PlatformEncode(PlatformCharset charset, std::string_view utf8) {
  Converter converter(IconvName(charset), "UTF-8");
  if (!converter.ok()) return {};
  const std::string clean = SanitizeUtf8(utf8);
  const std::string out = converter.Run(clean, "?", Utf8SequenceLength);
  return Bytes(out.begin(), out.end());
}

}  // namespace kx
