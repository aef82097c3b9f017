#include <algorithm>

#include "eval/convert.h"
#include "eval/eval_error.h"
#include "eval/evaluator.h"
#include "eval/functions.h"
#include "util/basic_text.h"

namespace kx {
namespace {

// LOG2, LOG10 ...: names that sort between "LOG" and "LOG99" in byte order.
bool IsLogWithBase(std::string_view name) {
  return name > std::string_view("LOG") && name <= std::string_view("LOG99");
}

bool Matches(const FunctionEntry& entry, std::string_view name) {
  if (entry.name == "LOGn") return IsLogWithBase(name);
  return entry.name == name;
}

bool IsAsciiLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

Value Variable(const Evaluator& evaluator, std::string_view name) {
  const std::string* value = evaluator.Env().variables.Find(name);
  if (value == nullptr) return Value::String("");
  return FromStoredText(*value);
}

}  // namespace

Value FunctionCall::Arg(int index) const {
  return evaluator.Eval(args[static_cast<size_t>(index)]);
}
double FunctionCall::Number(int index) const {
  return ToDouble(Arg(index));
}
std::string FunctionCall::Text(int index) const {
  return evaluator.SStr(Arg(index));
}

std::array<std::string, kMaxArguments> SplitArguments(std::string_view text, int& count) {
  std::array<std::string, kMaxArguments> args;
  count = 0;
  int depth = 0;
  size_t start = 0;
  for (size_t i = 0; i <= text.size(); ++i) {
    const char c = i < text.size() ? text[i] : ',';
    if (c == '(') ++depth;
    if (c == ')') --depth;
    if (c != ',' || (depth != 0 && i < text.size())) continue;
    if (count == kMaxArguments) Fail(EvalErrorCode::kSubscriptOutOfRange);
    args[static_cast<size_t>(count++)] = std::string(basic::Trim(text.substr(start, i - start)));
    start = i + 1;
  }
  return args;
}

Value Ffc(Evaluator& evaluator, std::string_view text) {
  // A call: an opening bracket somewhere before the closing one that ends
  // the text (the pattern "*(*)").
  const size_t open = text.find('(');
  if (text.size() >= 2 && text.back() == ')' && open <= text.size() - 2) {
    const std::string name = basic::UCase(text.substr(0, open));
    FunctionCall call{evaluator, name, {}, 0};
    for (const FunctionEntry& entry : FunctionTable()) {
      if (!Matches(entry, name)) continue;
      call.args = SplitArguments(text.substr(open + 1, text.size() - open - 2), call.count);
      return entry.handler(call);
    }
    // An element of an array nobody declared: arrays are never filled, so
    // it holds the default of its type; the subscripts are not evaluated.
    if (!name.empty() && name.back() == '$') return Value::String("");
    return Value::Integer(0);
  }
  // Every word begins with a letter: variables ("#name") need no look.
  if (!text.empty() && IsAsciiLetter(text.front())) {
    const std::string word = basic::UCase(text);
    const FunctionCall call{evaluator, word, {}, 0};
    for (const FunctionEntry& entry : WordTable())
      if (entry.name == word) return entry.handler(call);
  }
  return Variable(evaluator, text);
}

}  // namespace kx
