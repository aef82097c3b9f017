// kx eval: one expression through the evaluator on the simulated system,
// printed as the value's type and the text an assignment line would store.
#include <cstdio>
#include <optional>
#include <string>

#include "eval/evaluator.h"
#include "eval/variable_table.h"
#include "kx/commands.h"
#include "sim/sim_system.h"

namespace kx::cli {
namespace {

int Usage(const char* why) {
  std::fprintf(stderr, "kx eval: %s\n", why);
  std::fputs(
      "usage: kx eval [--var NAME=VALUE]... [--now \"YYYY/MM/DD HH:MM:SS\"] [--clipboard TEXT] "
      "EXPR\n",
      stderr);
  return 2;
}

std::optional<LocalTime> ParseNow(const std::string& text) {
  LocalTime t;
  char tail = 0;
  const int n = std::sscanf(text.c_str(), "%d/%d/%d %d:%d:%d%c", &t.year, &t.month, &t.day, &t.hour,
                            &t.minute, &t.second, &tail);
  if (n != 6) return std::nullopt;
  return t;
}

}  // namespace

int Eval(const std::vector<std::string>& args) {
  sim::SimSystem sim;
  VariableTable variables;
  std::optional<std::string> expression;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    const bool hasValue = i + 1 < args.size();
    if (a == "--var" && hasValue) {
      const std::string& pair = args[++i];
      const size_t eq = pair.find('=');
      if (eq == std::string::npos) return Usage("--var needs NAME=VALUE");
      variables.Set(pair.substr(0, eq), pair.substr(eq + 1));
    } else if (a == "--now" && hasValue) {
      const auto now = ParseNow(args[++i]);
      if (!now) return Usage("--now needs \"YYYY/MM/DD HH:MM:SS\"");
      sim.SetStartTime(*now);
    } else if (a == "--clipboard" && hasValue) {
      sim.SetClipboard(args[++i]);
    } else if (!expression) {
      expression = a;
    } else {
      return Usage("one expression only");
    }
  }
  if (!expression) return Usage("no expression");

  System system = sim.Ports();
  const EvalEnv env{variables, system};
  Evaluator evaluator(env);
  const Value value = evaluator.Eval(*expression);
  const std::string text = AssignmentText(evaluator, value);
  std::printf("%s\t%s\n", std::string(TypeName(value.Type())).c_str(), text.c_str());
  if (!sim.LastStatus().empty()) std::printf("status\t%s\n", sim.LastStatus().c_str());
  if (evaluator.LastErrorCode() != LastError::kNone)
    std::printf("lasterror\t%d\n", static_cast<int>(evaluator.LastErrorCode()));
  return 0;
}

}  // namespace kx::cli
