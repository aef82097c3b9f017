#include "eval/scanner.h"

#include <algorithm>
#include <array>
#include <bitset>

#include "eval/eval_error.h"
#include "eval/like.h"
#include "eval/operators.h"

namespace kx {
namespace {

struct SymbolOperator {
  std::string_view text;
  std::int32_t code;
};

// Two-character forms come before their one-character prefixes.
constexpr std::array<SymbolOperator, 16> kSymbolOperators = {{
    {"<>", kOpNotEqual},
    {"<=", kOpLessOrEqual},
    {"<", kOpLess},
    {"><", kOpNotEqual},
    {">=", kOpGreaterOrEqual},
    {">", kOpGreater},
    {"=<", kOpLessOrEqual},
    {"=>", kOpGreaterOrEqual},
    {"=", kOpEqual},
    {"+", kOpAdd},
    {";", kOpAdd},
    {"-", kOpSubtract},
    {"*", kOpMultiply},
    {"/", kOpDivide},
    {"\\", kOpIntegerDivide},
    {"^", kOpPower},
}};

constexpr size_t kUsualOperands = 4;

class Scanner {
 public:
  explicit Scanner(std::string_view text) : text_(text) {
    // Most expressions have a few operands: one allocation for them.
    result_.operands.reserve(kUsualOperands);
    result_.operands.emplace_back();
  }

  ScanResult Run() {
    for (size_t i = 0; i < text_.size(); ++i) {
      const char c = text_[i];
      if (c == '"') {
        if (!Quote(i)) break;
      } else if (c == '(') {
        Open();
      } else if (c == ')') {
        Close();
      } else if (InsideGroup()) {
        Current().push_back(c);
      } else {
        AtDepthZero(i);
      }
    }
    return std::move(result_);
  }

 private:
  std::string& Current() { return result_.operands.back(); }
  void SetLookback(char c) { lookback_ = {c, ' ', ' ', ' '}; }
  void ResetLookback() { lookback_ = {'$', '$', '$', '$'}; }

  void NewOperand() {
    if (static_cast<int>(result_.operands.size()) > kMaxOperandIndex)
      Fail(EvalErrorCode::kSubscriptOutOfRange);
    result_.operands.emplace_back();
  }
  void Record(std::int32_t code) {
    if (static_cast<int>(result_.ops.size()) > kMaxOperatorIndex)
      Fail(EvalErrorCode::kSubscriptOutOfRange);
    if (result_.ops.empty()) result_.ops.reserve(kUsualOperands - 1);
    result_.ops.push_back(code);
  }

  // False when the quote is never closed: the rest of the text was taken.
  bool Quote(size_t& i) {
    ResetLookback();
    expectOperand_ = false;
    const size_t close = text_.find('"', i + 1);
    if (close == std::string_view::npos) {
      Current() += text_.substr(i);
      return false;
    }
    Current() += text_.substr(i, close - i + 1);
    i = close;
    return true;
  }

  void Open() {
    ++depth_;
    if (depth_ > kMaxDepthIndex) Fail(EvalErrorCode::kSubscriptOutOfRange);
    marks_[static_cast<size_t>(depth_)] = true;
    ResetLookback();
    expectOperand_ = false;
    Current().push_back('(');
  }

  void Close() {
    const bool marked = Mark(depth_);
    --depth_;
    if (marked) {
      Current().push_back(')');
      SetLookback(')');
      expectOperand_ = false;
    }
  }

  // A ")" too many leaves the depth below zero, and the next character then
  // asks for the mark of a depth the array does not have.
  bool Mark(int depth) const {
    if (depth < 0) Fail(EvalErrorCode::kSubscriptOutOfRange);
    return marks_[static_cast<size_t>(depth)];
  }
  bool InsideGroup() const { return Mark(depth_) && depth_ > 0; }

  void AtDepthZero(size_t& i) {
    const char c = text_[i];
    if ((c >= '0' && c <= '9') || c == '.') {
      Current().push_back(c);
      SetLookback('0');
      expectOperand_ = false;
    } else if ((c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z')) {
      Letter(c);
    } else if (c == '#' || c == '$' || c == '%' || c == '&' || c == '!' || c == '@') {
      Current().push_back(c);
      SetLookback('0');
      expectOperand_ = false;
    } else if (c == ' ') {
      SetLookback(' ');
    } else {
      Symbol(i);
    }
  }

  void Letter(char c) {
    Current().push_back(c);
    lookback_ = {static_cast<char>(c >= 'a' ? c - 32 : c), lookback_[0], lookback_[1],
                 lookback_[2]};
    expectOperand_ = false;
    const std::string_view recent(lookback_.data(), lookback_.size());
    for (const auto& word : kWordOperators) {
      // Each pattern starts with the last letter of its word: most letters
      // end no word, and need no match.
      if (recent[0] != word.lookbackPattern[0] || !Like(recent, word.lookbackPattern)) continue;
      std::string& operand = Current();
      operand.resize(operand.size() - std::min(operand.size(), static_cast<size_t>(word.letters)));
      NewOperand();
      Record(word.code);
      expectOperand_ = true;
      return;
    }
  }

  void Symbol(size_t& i) {
    const std::string_view rest = text_.substr(i);
    for (const auto& op : kSymbolOperators) {
      if (rest[0] != op.text[0] || rest.substr(0, op.text.size()) != op.text) continue;
      i += op.text.size() - 1;
      Record(op.code);
      if (op.code == kOpSubtract && expectOperand_) {
        // A sign: it joins the operand still to come.
        Current().insert(Current().begin(), '-');
      } else if (!expectOperand_) {
        NewOperand();
      }
      expectOperand_ = true;
      return;
    }
    // Anything else (",", brackets, text outside quotes) is dropped.
  }

  std::string_view text_;
  ScanResult result_;
  int depth_ = 0;
  std::bitset<kMaxDepthIndex + 1> marks_;
  std::array<char, 4> lookback_{'$', '$', '$', '$'};
  bool expectOperand_ = true;
};

}  // namespace

ScanResult Scan(std::string_view text) {
  return Scanner(text).Run();
}

}  // namespace kx
