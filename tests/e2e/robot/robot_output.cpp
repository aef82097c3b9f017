#include "robot_output.h"

#include <algorithm>
#include <cstdio>
#include <iterator>

#include "sys/win32/wide.h"

namespace kx::robot {

namespace {

struct Escape {
  wchar_t raw;
  const wchar_t* escaped;
};
constexpr Escape kEscapes[] = {{L'\\', L"\\\\"}, {L'\t', L"\\t"}, {L'\n', L"\\n"}, {L'\r', L"\\r"}};

void WriteTo(DWORD which, std::string_view bytes) {
  HANDLE out = ::GetStdHandle(which);
  size_t done = 0;
  while (done < bytes.size()) {
    DWORD written = 0;
    const auto chunk = static_cast<DWORD>(bytes.size() - done);
    if (!::WriteFile(out, bytes.data() + done, chunk, &written, nullptr) || written == 0) return;
    done += written;
  }
}

}  // namespace

void WriteOut(std::string_view bytes) {
  WriteTo(STD_OUTPUT_HANDLE, bytes);
}
void WriteErr(std::string_view bytes) {
  WriteTo(STD_ERROR_HANDLE, bytes);
}

std::string Escaped(std::wstring_view text) {
  std::wstring out;
  out.reserve(text.size());
  for (wchar_t c : text) {
    const Escape* e = std::find_if(std::begin(kEscapes), std::end(kEscapes),
                                   [c](const Escape& x) { return x.raw == c; });
    if (e == std::end(kEscapes))
      out += c;
    else
      out += e->escaped;
  }
  return win32::Narrow(out);
}

std::string HexHandle(HWND h) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "0x%08llX",
                static_cast<unsigned long long>(reinterpret_cast<UINT_PTR>(h)));
  return buf;
}

Record& Record::Field(std::string_view key, std::string_view utf8) {
  line_ += '\t';
  line_ += key;
  line_ += '=';
  line_ += utf8;
  return *this;
}

Record& Record::Text(std::string_view key, std::wstring_view text) {
  return Field(key, Escaped(text));
}

Record& Record::Number(std::string_view key, long long value) {
  return Field(key, std::to_string(value));
}

Record& Record::Handle(HWND h) {
  Field("hwnd", HexHandle(h));
  return Number("handle", static_cast<long long>(reinterpret_cast<UINT_PTR>(h)));
}

Record& Record::Rect(std::string_view key, const RECT& r) {
  return Field(key, std::to_string(r.left) + "," + std::to_string(r.top) + "," +
                        std::to_string(r.right) + "," + std::to_string(r.bottom));
}

void Record::Print() const {
  WriteOut(line_ + "\n");
}

}  // namespace kx::robot
