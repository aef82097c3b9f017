// Evaluations per second for a few typical assignment expressions.
#include <benchmark/benchmark.h>

#include "eval/evaluator.h"
#include "sim/sim_system.h"

namespace {

void EvaluateAssignments(benchmark::State& state, const char* expression) {
  kx::sim::SimSystem sim;
  kx::VariableTable variables;
  variables.Set("#count", "41");
  variables.Set("#name", "report");
  kx::System system = sim.Ports();
  const kx::EvalEnv env{variables, system};
  for (auto _ : state) benchmark::DoNotOptimize(kx::EvaluateAssignment(expression, env));
  state.counters["evals/s"] =
      benchmark::Counter(static_cast<double>(state.iterations()), benchmark::Counter::kIsRate);
}

BENCHMARK_CAPTURE(EvaluateAssignments, plain_number, "1000");
BENCHMARK_CAPTURE(EvaluateAssignments, counter, "#count+1");
BENCHMARK_CAPTURE(EvaluateAssignments, arithmetic, "(#count*3+4)/2-1");
BENCHMARK_CAPTURE(EvaluateAssignments, text, "#name+\"_\"+MID$(\"2024/03/05\",6,2)+\".txt\"");
BENCHMARK_CAPTURE(EvaluateAssignments, functions, "ROUND(SIND(30)*100,2)+LOG10(1000)");
BENCHMARK_CAPTURE(EvaluateAssignments, condition, "IIF(#count>40,\"big\",\"small\")");

}  // namespace
