#pragma once
// A simulated system, a variable table and an evaluator for each test.
#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "eval/evaluator.h"
#include "sim/sim_system.h"

namespace kx::testing {

// One expression and what it should give: the value's type name and the
// text an assignment line stores.
struct Case {
  std::string_view expression;
  std::string_view type;
  std::string_view text;
};

inline std::ostream& operator<<(std::ostream& os, const Case& c) {
  return os << c.expression;
}

class EvalFixture : public ::testing::Test {
 protected:
  Value Eval(std::string_view text) { return evaluator.Eval(text); }
  std::string Stored(std::string_view text) {
    const Value v = evaluator.Eval(text);
    return AssignmentText(evaluator, v);
  }
  std::string TypeOf(std::string_view text) { return std::string(TypeName(Eval(text).Type())); }
  bool Failed() const { return sim.LastStatus() == kEvalErrorMessage; }

  // Checks the type and stored text of every case.
  void ExpectAll(std::initializer_list<Case> cases) {
    for (const Case& c : cases) {
      const Value v = evaluator.Eval(c.expression);
      EXPECT_EQ(TypeName(v.Type()), c.type) << c.expression;
      EXPECT_EQ(AssignmentText(evaluator, v), c.text) << c.expression;
    }
  }

  sim::SimSystem sim;
  VariableTable variables;
  System system = sim.Ports();
  EvalEnv env{variables, system};
  Evaluator evaluator{env};
};

}  // namespace kx::testing
