#pragma once
// The fold: operands evaluated into slots, operators applied in the order of
// one reordering pass, used slots marked by a Boolean false.
#include <cstdint>
#include <span>
#include <vector>

#include "eval/scanner.h"
#include "eval/value.h"

namespace kx {

class Evaluator;

// The bounds of the fold's arrays: slots and the order list, indices 0 to 100.
inline constexpr int kMaxSlotIndex = 100;

// The operator positions in folding order: one pass that swaps an operator
// with its left neighbour when its class binds tighter. Not a full sort:
// "+ * ^" folds as "* ^ +".
std::vector<int> FoldOrder(std::span<const std::int32_t> ops);

// Folds a scan with at least one operator. Throws EvalError.
Value Fold(Evaluator& evaluator, const ScanResult& scan);

}  // namespace kx
