#include "settings/ini_store.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include "text/charset.h"
#include "text/utf.h"

namespace kx {

namespace {

enum class IniEncoding { kUtf16Le, kUtf8Marked, kUtf8, kAnsi };

// The file as lines, with the encoding to write it back in.
struct IniFile {
  IniEncoding encoding = IniEncoding::kUtf16Le;
  std::vector<std::string> lines;
};

constexpr std::string_view kBlanks = " \t";

std::string_view Trim(std::string_view s) {
  const std::size_t first = s.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return s.substr(first, s.find_last_not_of(kBlanks) - first + 1);
}

bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) {
    auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; };
    return lower(x) == lower(y);
  });
}

bool IsValidUtf8(std::string_view text) {
  return SanitizeUtf8(text) == text;
}

IniFile Load(FilePort& files, const std::string& path) {
  IniFile ini;
  const std::optional<Bytes> bytes = files.ReadAll(path);
  if (!bytes) return ini;
  std::string text;
  const std::string_view raw(reinterpret_cast<const char*>(bytes->data()), bytes->size());
  if (raw.starts_with("\xFF\xFE")) {
    text = Utf16ToUtf8(Utf16LeBytesToText(*bytes, 2));
  } else if (raw.starts_with("\xEF\xBB\xBF")) {
    ini.encoding = IniEncoding::kUtf8Marked;
    text = SanitizeUtf8(raw.substr(3));
  } else if (IsValidUtf8(raw)) {
    ini.encoding = IniEncoding::kUtf8;
    text = raw;
  } else {
    ini.encoding = IniEncoding::kAnsi;
    text = DecodeAnsi(*bytes);
  }
  std::size_t start = 0;
  while (start < text.size()) {
    std::size_t end = text.find_first_of("\r\n", start);
    if (end == std::string::npos) end = text.size();
    ini.lines.emplace_back(text, start, end - start);
    start = end;
    if (start < text.size() && text[start] == '\r') ++start;
    if (start < text.size() && text[start] == '\n') ++start;
  }
  return ini;
}

void Save(FilePort& files, const std::string& path, const IniFile& ini) {
  std::string text;
  for (const std::string& line : ini.lines) text += line + "\r\n";
  Bytes bytes;
  switch (ini.encoding) {
    case IniEncoding::kUtf16Le:
      bytes = {0xFF, 0xFE};
      for (const std::uint8_t b : EncodeText(kCharsetUtf16Le, text)) bytes.push_back(b);
      break;
    case IniEncoding::kUtf8Marked:
      bytes = EncodeText(kCharsetUtf8, text);
      break;
    case IniEncoding::kUtf8:
      bytes.assign(text.begin(), text.end());
      break;
    case IniEncoding::kAnsi:
      bytes = EncodeText(kCharsetShiftJis, text);
      break;
  }
  files.WriteAtomic(path, bytes);
}

// The name of a section header line, or nothing when the line is none.
std::optional<std::string_view> SectionName(std::string_view line) {
  const std::string_view trimmed = Trim(line);
  if (!trimmed.starts_with('[')) return std::nullopt;
  const std::size_t close = trimmed.find(']');
  return Trim(trimmed.substr(1, close == std::string_view::npos ? close : close - 1));
}

// The lines [first, end) of the section's body; first is npos when the
// section is missing.
struct Span {
  std::size_t first = std::string::npos;
  std::size_t end = 0;
};

Span FindSection(const IniFile& ini, std::string_view section) {
  Span span;
  for (std::size_t i = 0; i < ini.lines.size(); ++i) {
    const auto name = SectionName(ini.lines[i]);
    if (!name) continue;
    if (span.first != std::string::npos) {
      span.end = i;
      return span;
    }
    if (SameName(*name, section)) span.first = i + 1;
  }
  span.end = ini.lines.size();
  return span;
}

// The index of the key's line inside the span, or npos.
std::size_t FindKey(const IniFile& ini, Span span, std::string_view key) {
  if (span.first == std::string::npos) return std::string::npos;
  for (std::size_t i = span.first; i < span.end; ++i) {
    const std::string_view line = ini.lines[i];
    const std::size_t equals = line.find('=');
    if (equals != std::string_view::npos && SameName(Trim(line.substr(0, equals)), key)) return i;
  }
  return std::string::npos;
}

std::string ValueOf(std::string_view line) {
  std::string_view value = Trim(line.substr(line.find('=') + 1));
  if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
    value = value.substr(1, value.size() - 2);
  value = value.substr(0, value.find('\0'));
  // The caller's buffer holds kSettingsStringBuffer - 1 characters.
  if (value.size() >= kSettingsStringBuffer) {
    std::u16string wide = Utf8ToUtf16(value);
    if (wide.size() >= kSettingsStringBuffer) wide.resize(kSettingsStringBuffer - 1);
    return Utf16ToUtf8(wide);
  }
  return std::string(value);
}

}  // namespace

int ParseProfileInt(std::string_view text) {
  std::size_t i = 0;
  while (i < text.size() && static_cast<unsigned char>(text[i]) <= ' ') ++i;
  bool negative = false;
  while (i < text.size() && (text[i] == '+' || text[i] == '-')) negative ^= text[i++] == '-';
  unsigned base = 10;
  if (i + 1 < text.size() && text[i] == '0') {
    const char prefix = text[i + 1];
    if (prefix == 'x' || prefix == 'X') base = 16;
    if (prefix == 'o' || prefix == 'O') base = 8;
    if (prefix == 'b' || prefix == 'B') base = 2;
    if (base != 10) i += 2;
  }
  std::uint32_t value = 0;
  for (; i < text.size(); ++i) {
    const char c = text[i];
    unsigned digit = 99;
    if (c >= '0' && c <= '9') digit = static_cast<unsigned>(c - '0');
    if (c >= 'a' && c <= 'f') digit = static_cast<unsigned>(c - 'a' + 10);
    if (c >= 'A' && c <= 'F') digit = static_cast<unsigned>(c - 'A' + 10);
    if (digit >= base) break;
    value = value * base + digit;  // wraps like the 32-bit original
  }
  if (negative) value = 0u - value;
  return static_cast<int>(value);
}

int IniStore::ReadInt(std::string_view section, std::string_view key, int defaultValue) {
  const std::string value = ReadString(section, key);
  return value.empty() ? defaultValue : ParseProfileInt(value);
}

std::string IniStore::ReadString(std::string_view section, std::string_view key) {
  const IniFile ini = Load(files_, path_);
  const std::size_t line = FindKey(ini, FindSection(ini, section), key);
  return line == std::string::npos ? std::string() : ValueOf(ini.lines[line]);
}

void IniStore::Write(std::string_view section, std::string_view key, std::string_view value) {
  IniFile ini = Load(files_, path_);
  const Span span = FindSection(ini, section);
  const std::string line = std::string(key) + "=" + std::string(value);
  if (span.first == std::string::npos) {
    if (!ini.lines.empty() && !Trim(ini.lines.back()).empty()) ini.lines.emplace_back();
    ini.lines.push_back("[" + std::string(section) + "]");
    ini.lines.push_back(line);
  } else if (const std::size_t at = FindKey(ini, span, key); at != std::string::npos) {
    ini.lines[at] = line;
  } else {
    // After the last line of the section that is not blank.
    std::size_t insertAt = span.end;
    while (insertAt > span.first && Trim(ini.lines[insertAt - 1]).empty()) --insertAt;
    ini.lines.insert(ini.lines.begin() + static_cast<std::ptrdiff_t>(insertAt), line);
  }
  Save(files_, path_, ini);
}

void IniStore::Delete(std::string_view section, std::string_view key) {
  IniFile ini = Load(files_, path_);
  const std::size_t at = FindKey(ini, FindSection(ini, section), key);
  if (at == std::string::npos) return;
  ini.lines.erase(ini.lines.begin() + static_cast<std::ptrdiff_t>(at));
  Save(files_, path_, ini);
}

std::string SettingsPath(FilePort& files) {
  return JoinPath(files, files.AppFolder(), kSettingsFileName);
}

}  // namespace kx
