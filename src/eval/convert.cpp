#include "eval/convert.h"

#include <cmath>
#include <limits>

#include "eval/date_text.h"
#include "eval/eval_error.h"
#include "eval/number_text.h"

namespace kx {

double RoundHalfEven(double x) {
  const double f = std::floor(x);
  const double diff = x - f;
  if (diff > 0.5) return f + 1;
  if (diff < 0.5) return f;
  return std::fmod(f, 2.0) == 0 ? f : f + 1;
}

double CheckFinite(double x) {
  if (!std::isfinite(x)) Fail(EvalErrorCode::kOverflow);
  return x;
}

double ToDouble(const Value& v) {
  switch (v.Type()) {
    case ValueType::kEmpty:
      return 0;
    case ValueType::kBoolean:
      return v.AsBoolean() ? -1 : 0;
    case ValueType::kInteger:
      return v.AsInteger();
    case ValueType::kLong:
      return v.AsLong();
    case ValueType::kSingle:
      return static_cast<double>(v.AsSingle());
    case ValueType::kDouble:
      return v.AsDouble();
    case ValueType::kDate:
      return v.AsDate();
    case ValueType::kString:
      return TextToDouble(v.AsString());
  }
  Fail(EvalErrorCode::kTypeMismatch);
}

double TextToDouble(std::string_view text) {
  const ParsedNumber p = ParseNumber(text);
  if (p.status == ParseStatus::kOverflow) Fail(EvalErrorCode::kOverflow);
  if (p.status != ParseStatus::kOk) Fail(EvalErrorCode::kTypeMismatch);
  return p.value;
}

float ToSingle(const Value& v) {
  const double d = ToDouble(v);
  if (std::fabs(d) > static_cast<double>(std::numeric_limits<float>::max()))
    Fail(EvalErrorCode::kOverflow);
  return static_cast<float>(d);
}

std::int16_t ToInteger(const Value& v) {
  const double r = RoundHalfEven(ToDouble(v));
  if (!(r >= -32768.0 && r <= 32767.0)) Fail(EvalErrorCode::kOverflow);
  return static_cast<std::int16_t>(r);
}

std::int32_t ToLong(const Value& v) {
  const double r = RoundHalfEven(ToDouble(v));
  if (!(r >= -2147483648.0 && r <= 2147483647.0)) Fail(EvalErrorCode::kOverflow);
  return static_cast<std::int32_t>(r);
}

bool ToBoolean(const Value& v) {
  if (v.Is(ValueType::kBoolean)) return v.AsBoolean();
  if (v.IsString()) {
    std::string lower;
    for (char c : v.AsString())
      if (c != ' ') lower.push_back(static_cast<char>(c >= 'A' && c <= 'Z' ? c + 32 : c));
    if (lower == "true") return true;
    if (lower == "false") return false;
  }
  return ToDouble(v) != 0;
}

Value MakeDate(double serial) {
  if (!(serial >= kMinDateSerial && serial <= kMaxDateSerial)) Fail(EvalErrorCode::kOverflow);
  return Value::Date(serial);
}

double ToDateSerial(const Value& v) {
  if (v.Is(ValueType::kDate)) return v.AsDate();
  if (v.IsString()) {
    // The short form first; a text that is no date may still be a serial.
    if (auto serial = ParseDate(v.AsString())) return *serial;
    if (ParseNumber(v.AsString()).status != ParseStatus::kOk) Fail(EvalErrorCode::kTypeMismatch);
  }
  return MakeDate(ToDouble(v)).AsDate();
}

std::string ToText(const Value& v) {
  switch (v.Type()) {
    case ValueType::kEmpty:
      return "";
    case ValueType::kBoolean:
      return v.AsBoolean() ? "True" : "False";
    case ValueType::kInteger:
      return std::to_string(v.AsInteger());
    case ValueType::kLong:
      return std::to_string(v.AsLong());
    case ValueType::kSingle:
      return FormatSingle(v.AsSingle());
    case ValueType::kDouble:
      return FormatDouble(v.AsDouble());
    case ValueType::kDate:
      return FormatDate(v.AsDate());
    case ValueType::kString:
      return v.AsString();
  }
  return "";
}

std::string ToSignedText(const Value& v) {
  switch (v.Type()) {
    case ValueType::kBoolean:
    case ValueType::kDate:
      return ToText(v);
    case ValueType::kSingle:
      return FormatWithSignPosition(static_cast<double>(v.AsSingle()), 7);
    default:
      return FormatWithSignPosition(ToDouble(v), 15);
  }
}

Value FromStoredText(const std::string& text) {
  const ParsedNumber p = ParseNumber(text);
  if (p.status == ParseStatus::kOk) return Value::Double(p.value);
  return Value::String(text);
}

bool IsSixteenBit(const Value& v) {
  return v.IsEmpty() || v.Is(ValueType::kBoolean) || v.Is(ValueType::kInteger);
}

}  // namespace kx
