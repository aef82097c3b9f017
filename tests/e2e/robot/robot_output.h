#pragma once
// The robot's output: UTF-8 bytes on stdout, one record per line, fields
// separated by tabs as "key=value". Texts are escaped so that a record stays
// on one line: backslash, tab, line feed and carriage return become \\, \t,
// \n and \r.
#include <string>
#include <string_view>

#include "sys/win32/windows_api.h"

namespace kx::robot {

// Writes bytes as they are: the console code page must not touch UTF-8.
void WriteOut(std::string_view bytes);
void WriteErr(std::string_view bytes);

std::string Escaped(std::wstring_view text);
std::string HexHandle(HWND h);

class Record {
 public:
  explicit Record(std::string_view kind) : line_(kind) {}
  Record& Field(std::string_view key, std::string_view utf8);
  Record& Text(std::string_view key, std::wstring_view text);
  Record& Number(std::string_view key, long long value);
  Record& Handle(HWND h);  // hwnd=0x... and handle=decimal
  Record& Rect(std::string_view key, const RECT& r);
  void Print() const;

 private:
  std::string line_;
};

}  // namespace kx::robot
