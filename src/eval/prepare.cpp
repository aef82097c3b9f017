#include "eval/prepare.h"

#include "eval/eval_error.h"
#include "eval/evaluator.h"
#include "eval/like.h"
#include "eval/number_text.h"

namespace kx {
namespace {

std::string HexValueText(std::string_view digits) {
  const ParsedNumber p = ParseRadix(digits, 16);
  if (p.status == ParseStatus::kOverflow) Fail(EvalErrorCode::kOverflow);
  if (p.status != ParseStatus::kOk) Fail(EvalErrorCode::kTypeMismatch);
  return FormatDouble(p.value);
}

char Lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
}

std::string NumberLiteral(std::string text) {
  if (text.size() >= 2 && Lower(text[0]) == '&' && Lower(text[1]) == 'h' &&
      !Like(std::string_view(text).substr(2), "*[!0-9A-Fa-f]*"))
    return HexValueText(std::string_view(text).substr(2));
  if (text.empty()) return text;
  const std::string_view body = std::string_view(text).substr(0, text.size() - 1);
  if (Lower(text.back()) == 'h' && !Like(body, "*[!0-9A-Fa-f]*")) return HexValueText(body);
  if (Lower(text.back()) == 'b' && !Like(body, "*[!01]*")) return std::to_string(BinVal(body));
  return text;
}

}  // namespace

std::string Prepare(std::string_view text) {
  // The loop works on a window [lo, hi) of the text so that thousands of
  // parentheses cost one pass: the first ")" only moves forward as the
  // window shrinks, and the last "(" of the text never leaves it.
  size_t lo = 0;
  size_t hi = text.size();
  size_t firstClose = 0;
  const size_t lastOpen = text.rfind('(');
  for (;;) {
    if (lo < hi && text[lo] == '-')
      return NumberLiteral("0" + std::string(text.substr(lo, hi - lo)));
    if (hi - lo < 2 || text[lo] != '(' || text[hi - 1] != ')') break;
    firstClose = std::max(firstClose, lo);
    while (text[firstClose] != ')') ++firstClose;
    // "(1)+(2)": a group follows the first one, so these are not outer parentheses.
    if (lastOpen != std::string_view::npos && lastOpen > firstClose) break;
    ++lo;
    --hi;
  }
  return NumberLiteral(std::string(text.substr(lo, hi - lo)));
}

}  // namespace kx
