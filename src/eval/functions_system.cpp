// What reaches the system: the environment, files, input, random numbers,
// the clock, the clipboard and the input box; the words among them too.
#include "eval/convert.h"
#include "eval/date_text.h"
#include "eval/eval_error.h"
#include "eval/evaluator.h"
#include "eval/functions.h"

namespace kx {
namespace {

System& Sys(const FunctionCall& c) {
  return c.evaluator.Env().system;
}

double NowSerial(const FunctionCall& c) {
  const LocalTime t = Sys(c).clock.Now();
  return SerialFromParts({t.year, t.month, t.day, t.hour, t.minute, t.second}).value_or(0);
}

// Both the word and the function reseed from the clock before each draw.
Value Draw(const FunctionCall& c) {
  Sys(c).random.Randomize();
  return Value::Single(static_cast<float>(Sys(c).random.Next()));
}

}  // namespace

// A number names the variable by its position, a text by its name.
Value FnEnviron(const FunctionCall& c) {
  const Value a = c.Arg(0);
  if (a.IsNumeric()) {
    const std::int32_t index = ToLong(a);
    if (index <= 0) Fail(EvalErrorCode::kInvalidCall);
    return Value::String(Sys(c).environment.VariableAt(index));
  }
  const std::string name = c.evaluator.SStr(a);
  if (name.empty()) Fail(EvalErrorCode::kInvalidCall);
  return Value::String(Sys(c).environment.Variable(name));
}

// EOF, LOC and LOF: the macro language opens no files, so no number is open.
Value FnFileState(const FunctionCall& c) {
  ToInteger(c.Arg(0));
  Fail(EvalErrorCode::kBadFileNumber);
}

// There is no input source; reading from a file number is not supported.
Value FnInput(const FunctionCall& c) {
  if (c.count >= 2) c.evaluator.SetLastError(LastError::kInputForm);
  return Value::String("");
}

// No port input: the port number must still be a 16-bit integer.
Value FnInp(const FunctionCall& c) {
  ToInteger(c.Arg(0));
  return Value::Integer(0);
}

Value FnPos(const FunctionCall&) {
  return Value();
}

// The argument is checked as a single; reseeding before every draw leaves
// the runtime's special meanings of zero and negative arguments no effect.
Value FnRnd(const FunctionCall& c) {
  ToSingle(c.Arg(0));
  return Draw(c);
}

Value FnHour(const FunctionCall& c) {
  return Value::Integer(static_cast<std::int16_t>(PartsFromSerial(ToDateSerial(c.Arg(0))).hour));
}
Value FnMinute(const FunctionCall& c) {
  return Value::Integer(static_cast<std::int16_t>(PartsFromSerial(ToDateSerial(c.Arg(0))).minute));
}

Value WordEmpty(const FunctionCall&) {
  return Value();
}
// Every caught error is cleared when the evaluation that caught it returns,
// so no error is current while a word is evaluated.
Value WordErr(const FunctionCall&) {
  return Value::Long(0);
}
Value WordCommand(const FunctionCall& c) {
  return Value::String(Sys(c).environment.CommandLine());
}
Value WordDate(const FunctionCall& c) {
  const LocalTime t = Sys(c).clock.Now();
  return Value::String(FormatDate(SerialFromParts({t.year, t.month, t.day, 0, 0, 0}).value_or(0)));
}
Value WordEmptyText(const FunctionCall&) {
  return Value::String("");
}
Value WordNow(const FunctionCall& c) {
  return Value::Date(NowSerial(c));
}
Value WordTime(const FunctionCall& c) {
  const LocalTime t = Sys(c).clock.Now();
  return Value::Date(SerialFromParts({1899, 12, 30, t.hour, t.minute, t.second}).value_or(0));
}
Value WordRnd(const FunctionCall& c) {
  return Draw(c);
}
Value WordGetClip(const FunctionCall& c) {
  return Value::String(Sys(c).clipboard.GetText().value_or(""));
}
// The input box's default title is the program's name.
Value WordInputBox(const FunctionCall& c) {
  return Value::String(
      Sys(c).dialogs.InputBox("値を入力して下さい。", "Kestrelix", "").value_or(""));
}
// Empty until a screen wait of this play has found something.
Value WordFoundX(const FunctionCall& c) {
  const auto* found = c.evaluator.Env().found;
  return found && *found ? Value::Long((*found)->x) : Value();
}
Value WordFoundY(const FunctionCall& c) {
  const auto* found = c.evaluator.Env().found;
  return found && *found ? Value::Long((*found)->y) : Value();
}

}  // namespace kx
