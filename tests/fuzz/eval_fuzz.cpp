// Feeds arbitrary bytes to the evaluator as an expression: it must end in a
// value or the status-bar message, never crash, hang or recurse without end.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "eval/evaluator.h"
#include "sim/sim_system.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kx::sim::SimSystem sim;
  sim.SetClipboard("3.5");
  sim.QueueInputBoxAnswer("42");
  kx::VariableTable variables;
  variables.Set("#a", "12");
  variables.Set("#s", "text");
  kx::System system = sim.Ports();
  const kx::EvalEnv env{variables, system};
  kx::Evaluator evaluator(env);
  const kx::Value value =
      evaluator.Eval(std::string_view(reinterpret_cast<const char*>(data), size));
  (void)kx::AssignmentText(evaluator, value);
  return 0;
}
