// Text: character codes, widths, positions, pieces, case, blanks and
// repetitions. Positions and lengths count characters, not bytes.
#include <algorithm>

#include "eval/convert.h"
#include "eval/eval_error.h"
#include "eval/evaluator.h"
#include "eval/functions.h"
#include "eval/number_text.h"
#include "eval/text_codes.h"

namespace kx {
namespace {

std::u32string Chars(const FunctionCall& c, int index) {
  return DecodeUtf8(c.Text(index));
}
Value Text(std::u32string_view chars) {
  return Value::String(EncodeUtf8(chars));
}

// A count or position argument: rounded to 32 bits, negative ones invalid.
size_t Count(const FunctionCall& c, int index) {
  const std::int32_t n = ToLong(c.Arg(index));
  if (n < 0) Fail(EvalErrorCode::kInvalidCall);
  return static_cast<size_t>(n);
}

Value Repeat(size_t count, char32_t ch) {
  const std::string one = EncodeUtf8(std::u32string(1, ch));
  if (count > kMaxTextBytes / one.size()) Fail(EvalErrorCode::kOutOfMemory);
  std::string out;
  out.reserve(count * one.size());
  for (size_t i = 0; i < count; ++i) out += one;
  return Value::String(std::move(out));
}

std::int16_t FirstCharCode(const FunctionCall& c) {
  const std::u32string s = Chars(c, 0);
  if (s.empty()) Fail(EvalErrorCode::kInvalidCall);
  return static_cast<std::int16_t>(AnsiCode(s[0]));
}

Value ChangeCase(const FunctionCall& c, bool toUpper) {
  const char32_t from = toUpper ? 'a' : 'A';
  const char32_t wideFrom = toUpper ? 0xFF41 : 0xFF21;
  std::u32string s = Chars(c, 0);
  for (char32_t& ch : s) {
    if (ch >= from && ch < from + 26) ch = toUpper ? ch - 0x20 : ch + 0x20;
    if (ch >= wideFrom && ch < wideFrom + 26) ch = toUpper ? ch - 0x20 : ch + 0x20;
  }
  return Text(s);
}

}  // namespace

Value FnAsc(const FunctionCall& c) {
  return Value::Integer(FirstCharCode(c));
}

// The code is "converted to a byte": outside 0 to 255 it overflows.
Value FnChr(const FunctionCall& c) {
  const double code = RoundHalfEven(c.Number(0));
  if (code < 0 || code > 255) Fail(EvalErrorCode::kOverflow);
  return Text(std::u32string(1, CharFromAnsi(static_cast<std::uint16_t>(code))));
}

Value FnJis(const FunctionCall& c) {
  return Value::String(RadixText(static_cast<std::uint16_t>(FirstCharCode(c)), 16));
}

Value FnKnj(const FunctionCall& c) {
  const std::int32_t code = ToLong(Value::String("&H" + c.Text(0)));
  if (code < -32768 || code > 65535) Fail(EvalErrorCode::kInvalidCall);
  return Text(std::u32string(1, CharFromAnsi(static_cast<std::uint16_t>(code))));
}

Value FnFullWidth(const FunctionCall& c) {
  return Value::String(ToFullWidth(c.Text(0)));
}
Value FnHalfWidth(const FunctionCall& c) {
  return Value::String(ToHalfWidth(c.Text(0)));
}

Value FnInstr(const FunctionCall& c) {
  size_t start = 1;
  int first = 0;
  if (c.count >= 3) {
    const std::int32_t s = ToLong(c.Arg(0));
    if (s < 1) Fail(EvalErrorCode::kInvalidCall);
    start = static_cast<size_t>(s);
    first = 1;
  }
  const std::u32string text = Chars(c, first);
  const std::u32string sought = Chars(c, first + 1);
  if (text.empty()) return Value::Long(0);
  if (start > text.size()) return Value::Long(0);
  if (sought.empty()) return Value::Long(static_cast<std::int32_t>(start));
  const size_t at = text.find(sought, start - 1);
  return Value::Long(at == std::u32string::npos ? 0 : static_cast<std::int32_t>(at + 1));
}

Value FnLen(const FunctionCall& c) {
  return Value::Long(static_cast<std::int32_t>(Chars(c, 0).size()));
}

Value FnLeft(const FunctionCall& c) {
  const std::u32string s = Chars(c, 0);
  return Text(std::u32string_view(s).substr(0, Count(c, 1)));
}

Value FnRight(const FunctionCall& c) {
  const std::u32string s = Chars(c, 0);
  const size_t n = std::min(Count(c, 1), s.size());
  return Text(std::u32string_view(s).substr(s.size() - n));
}

Value FnMid(const FunctionCall& c) {
  const std::u32string s = Chars(c, 0);
  const size_t start = Count(c, 1);
  if (start == 0) Fail(EvalErrorCode::kInvalidCall);
  const size_t length = c.count >= 3 ? Count(c, 2) : std::u32string::npos;
  if (start > s.size()) return Value::String("");
  return Text(std::u32string_view(s).substr(start - 1, length));
}

// ASCII letters and their full-width forms change case.
Value FnLCase(const FunctionCall& c) {
  return ChangeCase(c, false);
}
Value FnUCase(const FunctionCall& c) {
  return ChangeCase(c, true);
}

Value FnLTrim(const FunctionCall& c) {
  const std::string s = c.Text(0);
  const size_t first = s.find_first_not_of(' ');
  return Value::String(first == std::string::npos ? "" : s.substr(first));
}
Value FnRTrim(const FunctionCall& c) {
  const std::string s = c.Text(0);
  return Value::String(s.substr(0, s.find_last_not_of(' ') + 1));
}
Value FnTrim(const FunctionCall& c) {
  const std::string s = c.Text(0);
  const size_t first = s.find_first_not_of(' ');
  if (first == std::string::npos) return Value::String("");
  return Value::String(s.substr(first, s.find_last_not_of(' ') - first + 1));
}

Value FnSpace(const FunctionCall& c) {
  return Repeat(Count(c, 0), ' ');
}
Value FnTab(const FunctionCall& c) {
  return Repeat(Count(c, 0), '\t');
}

// The character is the first of a text, or a code taken modulo 256.
Value FnString(const FunctionCall& c) {
  const size_t count = Count(c, 0);
  const Value b = c.Arg(1);
  if (b.IsString()) {
    const std::u32string s = DecodeUtf8(b.AsString());
    if (s.empty()) Fail(EvalErrorCode::kInvalidCall);
    return Repeat(count, s[0]);
  }
  const std::int32_t code = ToLong(b);
  if (code < 0) Fail(EvalErrorCode::kInvalidCall);
  return Repeat(count, CharFromAnsi(static_cast<std::uint16_t>(code % 256)));
}

}  // namespace kx
