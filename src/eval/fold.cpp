#include "eval/fold.h"

#include <algorithm>
#include <vector>

#include "eval/convert.h"
#include "eval/eval_error.h"
#include "eval/evaluator.h"
#include "eval/like.h"
#include "eval/operators.h"

namespace kx {
namespace {

// The fixed array of operand values, made as long as a fold uses it: one slot
// for each operand and each side of an operator.
class Slots {
 public:
  explicit Slots(size_t used) {
    values_.resize(std::min(used, static_cast<size_t>(kMaxSlotIndex) + 1));
  }
  Value& At(int index) {
    if (index < 0 || index > kMaxSlotIndex) Fail(EvalErrorCode::kSubscriptOutOfRange);
    const auto i = static_cast<size_t>(index);
    if (i >= values_.size()) values_.resize(i + 1);
    return values_[i];
  }
  // A Boolean looks like a used slot, whatever produced it.
  bool Unused(int index) { return !At(index).Is(ValueType::kBoolean); }

 private:
  std::vector<Value> values_;
};

Value Concatenate(Evaluator& evaluator, const Value& a, const Value& b) {
  std::string text = evaluator.SStr(a);
  std::string right = evaluator.SStr(b);
  if (text.size() + right.size() > kMaxTextBytes) Fail(EvalErrorCode::kOutOfMemory);
  return Value::String(text + right);
}

}  // namespace

std::vector<int> FoldOrder(std::span<const std::int32_t> ops) {
  if (ops.size() > static_cast<size_t>(kMaxSlotIndex) + 1)
    Fail(EvalErrorCode::kSubscriptOutOfRange);
  std::vector<int> order(ops.size());
  for (size_t i = 0; i < order.size(); ++i) order[i] = static_cast<int>(i);
  for (size_t i = 1; i < order.size(); ++i) {
    const auto here = OperatorClass(ops[static_cast<size_t>(order[i])]);
    const auto before = OperatorClass(ops[static_cast<size_t>(order[i - 1])]);
    if (here < before) std::swap(order[i], order[i - 1]);
  }
  return order;
}

Value Fold(Evaluator& evaluator, const ScanResult& scan) {
  const std::vector<int> order = FoldOrder(scan.ops);
  const int opCount = static_cast<int>(scan.ops.size());

  Slots slots(std::max(scan.operands.size(), scan.ops.size() + 1));
  for (size_t i = 0; i < scan.operands.size(); ++i) {
    const std::string& operand = scan.operands[i];
    Value& slot = slots.At(static_cast<int>(i));
    // Plain digits (and the empty operand) convert directly; "" fails there.
    if (!Like(operand, "*[!0-9]*"))
      slot = Value::Double(TextToDouble(operand));
    else
      slot = evaluator.Eval(operand);
  }

  int left = 0;
  int right = 0;
  for (int k : order) {
    // A side with no unused slot keeps the slot of the previous operator.
    for (int j = k; j >= 0; --j)
      if (slots.Unused(j)) {
        left = j;
        break;
      }
    for (int j = k + 1; j <= opCount; ++j)
      if (slots.Unused(j)) {
        right = j;
        break;
      }
    const std::int32_t code = scan.ops[static_cast<size_t>(k)];
    const Value& a = slots.At(left);
    const Value& b = slots.At(right);
    Value result;
    if (code == kOpAdd && (a.IsString() || b.IsString()))
      result = Concatenate(evaluator, a, b);
    else
      result = FindOperator(code)->apply(a, b);
    slots.At(left) = std::move(result);
    slots.At(right) = Value::Boolean(false);
  }
  return slots.At(left);
}

}  // namespace kx
