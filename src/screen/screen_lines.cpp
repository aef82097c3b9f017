#include "screen/screen_lines.h"

#include <algorithm>
#include <cstdio>
#include <vector>

#include "screen/image_match.h"
#include "util/basic_text.h"

namespace kx {

namespace {

constexpr std::size_t kColourDigits = 6;
constexpr std::size_t kImageNumbers = 6;  // variation, timeout and the rectangle
constexpr std::size_t kRectFields = 4;

std::string Quoted(std::string_view text) {
  return "\"" + std::string(text) + "\"";
}

// A number field: none when it is empty (the default applies), an error when
// it is not a number.
struct Field {
  bool given = false;
  double value = 0;
  bool bad = false;
};

Field NumberField(std::string_view text) {
  const std::string_view t = basic::Trim(text);
  if (t.empty()) return {};
  const auto n = basic::ToDouble(t);
  if (!n) return {false, 0, true};
  return {true, *n, false};
}

int Variation(double value) {
  return static_cast<int>(std::clamp(value, 0.0, static_cast<double>(kMaxVariation)));
}

double Timeout(double value) {
  return std::max(0.0, value);
}

}  // namespace

std::optional<Pixel> ParseColour(std::string_view text) {
  std::string_view t = basic::Trim(text);
  if (t.starts_with('#')) t.remove_prefix(1);
  if (t.size() != kColourDigits) return std::nullopt;
  Pixel colour = 0;
  for (const char c : t) {
    int digit = 0;
    if (c >= '0' && c <= '9') {
      digit = c - '0';
    } else if (c >= 'a' && c <= 'f') {
      digit = c - 'a' + 10;
    } else if (c >= 'A' && c <= 'F') {
      digit = c - 'A' + 10;
    } else {
      return std::nullopt;
    }
    colour = (colour << 4) | static_cast<Pixel>(digit);
  }
  return colour | kAlphaMask;
}

std::string ColourText(Pixel colour) {
  char text[kColourDigits + 1];
  std::snprintf(text, sizeof text, "%06X", static_cast<unsigned>(colour & kColourMask));
  return text;
}

ParsedScreenLine<WaitPixelArgs> ParseWaitPixel(std::string_view argument) {
  const std::vector<std::string> fields = basic::Split(argument, ",");
  if (fields.size() < 3 || fields.size() > 5)
    return {std::nullopt, "waitpixel: x,y,色[,許容差[,タイムアウト]] の形で書いて下さい"};
  WaitPixelArgs out;
  const Field x = NumberField(fields[0]);
  const Field y = NumberField(fields[1]);
  if (!x.given || !y.given)
    return {std::nullopt, "waitpixel: 座標 " + Quoted(basic::Trim(fields[0])) + "," +
                              Quoted(basic::Trim(fields[1])) + " は数値ではありません"};
  const auto px = basic::ToLong(x.value);
  const auto py = basic::ToLong(y.value);
  if (!px || !py) return {std::nullopt, "waitpixel: 座標が大きすぎます"};
  out.at = {*px, *py};
  const auto colour = ParseColour(fields[2]);
  if (!colour)
    return {std::nullopt, "waitpixel: 色 " + Quoted(basic::Trim(fields[2])) +
                              " はRRGGBBの16進数ではありません (例 FF0000)"};
  out.colour = *colour;
  if (fields.size() > 3) {
    const Field v = NumberField(fields[3]);
    if (v.bad)
      return {std::nullopt, "waitpixel: 許容差 " + Quoted(basic::Trim(fields[3])) +
                                " は0から255の数値ではありません"};
    if (v.given) out.variation = Variation(v.value);
  }
  if (fields.size() > 4) {
    const Field t = NumberField(fields[4]);
    if (t.bad)
      return {std::nullopt, "waitpixel: タイムアウト " + Quoted(basic::Trim(fields[4])) +
                                " はミリ秒の数値ではありません"};
    if (t.given) out.timeoutMs = Timeout(t.value);
  }
  return {out, ""};
}

ParsedScreenLine<WaitImageArgs> ParseWaitImage(std::string_view argument) {
  std::vector<std::string> fields = basic::Split(argument, ",");
  // A file name may hold commas: the numbers are the fields after the last
  // field that is not a number (at most six of them).
  std::size_t firstNumber = fields.size();
  while (firstNumber > 1 && fields.size() - (firstNumber - 1) <= kImageNumbers) {
    const std::string_view f = basic::Trim(fields[firstNumber - 1]);
    if (!f.empty() && !basic::IsNumeric(f)) break;
    --firstNumber;
  }
  WaitImageArgs out;
  for (std::size_t i = 0; i < firstNumber; ++i) out.file += (i ? "," : "") + fields[i];
  out.file = std::string(basic::Trim(out.file));
  if (out.file.empty())
    return {std::nullopt,
            "waitimage: 画像ファイル[,許容差[,タイムアウト[,左,上,右,下]]] の形で書いて下さい"};
  const std::vector<std::string> numbers(fields.begin() + static_cast<std::ptrdiff_t>(firstNumber),
                                         fields.end());
  if (!numbers.empty()) {
    if (const Field v = NumberField(numbers[0]); v.given) out.variation = Variation(v.value);
  }
  if (numbers.size() > 1) {
    if (const Field t = NumberField(numbers[1]); t.given) out.timeoutMs = Timeout(t.value);
  }
  if (numbers.size() > 2) {
    if (numbers.size() != 2 + kRectFields)
      return {std::nullopt, "waitimage: 検索範囲は 左,上,右,下 の4つの数値で書いて下さい"};
    int edges[kRectFields] = {};
    for (std::size_t i = 0; i < kRectFields; ++i) {
      const Field f = NumberField(numbers[2 + i]);
      const auto n = f.given ? basic::ToLong(f.value) : std::nullopt;
      if (!n) return {std::nullopt, "waitimage: 検索範囲は 左,上,右,下 の4つの数値で書いて下さい"};
      edges[i] = *n;
    }
    if (edges[2] <= edges[0] || edges[3] <= edges[1])
      return {std::nullopt, "waitimage: 検索範囲の右と下は左と上より大きくして下さい"};
    out.area = Rect{edges[0], edges[1], edges[2], edges[3]};
  }
  return {out, ""};
}

}  // namespace kx
