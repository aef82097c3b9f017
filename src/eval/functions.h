#pragma once
// The function library: built-in functions, zero-argument words and
// variable references, reached through Ffc for every operand that is not a
// number, a quoted string, a group, a negation or a NOT.
#include <array>
#include <span>
#include <string>
#include <string_view>

#include "eval/value.h"

namespace kx {

class Evaluator;

inline constexpr int kMaxArguments = 8;

// One call of a built-in function: its upper-cased name and its argument
// texts, each evaluated only when the function asks for it. Arguments not
// written are empty texts, which fail to evaluate like any empty expression.
struct FunctionCall {
  Evaluator& evaluator;
  std::string_view name;
  std::array<std::string, kMaxArguments> args;
  int count = 0;  // how many were written (at least 1)

  Value Arg(int index) const;
  double Number(int index) const;
  std::string Text(int index) const;
};

using FunctionHandler = Value (*)(const FunctionCall& call);

struct FunctionEntry {
  std::string_view name;
  FunctionHandler handler;
};

// The functions in their dispatch order: the first entry whose name equals
// the upper-cased name wins, so the second ASC and HATN are never reached.
// The entry named "LOGn" stands for LOG2, LOG10 and the like.
std::span<const FunctionEntry> FunctionTable();
// The zero-argument words, in the order they are compared.
std::span<const FunctionEntry> WordTable();

// The library's entry: a function call "NAME(args)", a word, or a variable.
Value Ffc(Evaluator& evaluator, std::string_view text);

// Splits an argument text at the commas outside parentheses (quotes do not
// protect a comma) and trims each argument. Throws past 8 arguments.
std::array<std::string, kMaxArguments> SplitArguments(std::string_view text, int& count);

// --- handlers, by family ---

// Numbers: arithmetic and rounding.
Value FnAbs(const FunctionCall&);
Value FnCeil(const FunctionCall&);
Value FnFix(const FunctionCall&);
Value FnInt(const FunctionCall&);
Value FnFp(const FunctionCall&);
Value FnIp(const FunctionCall&);
Value FnSgn(const FunctionCall&);
Value FnSqr(const FunctionCall&);
Value FnExp(const FunctionCall&);
Value FnLog(const FunctionCall&);
Value FnLogN(const FunctionCall&);
Value FnMax(const FunctionCall&);
Value FnMin(const FunctionCall&);
Value FnRound(const FunctionCall&);
Value FnReminder(const FunctionCall&);
Value FnTruncate(const FunctionCall&);
Value FnDegrees(const FunctionCall&);
Value FnRadians(const FunctionCall&);

// Trigonometry in radians and degrees, and the hyperbolic functions.
Value FnSin(const FunctionCall&);
Value FnSinD(const FunctionCall&);
Value FnCos(const FunctionCall&);
Value FnCosD(const FunctionCall&);
Value FnTan(const FunctionCall&);
Value FnTanD(const FunctionCall&);
Value FnCot(const FunctionCall&);
Value FnCotD(const FunctionCall&);
Value FnCtn(const FunctionCall&);
Value FnCtnD(const FunctionCall&);
Value FnSec(const FunctionCall&);
Value FnSecD(const FunctionCall&);
Value FnCsc(const FunctionCall&);
Value FnCscD(const FunctionCall&);
Value FnAtan(const FunctionCall&);
Value FnAtanD(const FunctionCall&);
Value FnAsin(const FunctionCall&);
Value FnAsinD(const FunctionCall&);
Value FnAcos(const FunctionCall&);
Value FnAcosD(const FunctionCall&);
Value FnAcsc(const FunctionCall&);
Value FnAcscD(const FunctionCall&);
Value FnAct(const FunctionCall&);
Value FnActD(const FunctionCall&);
Value FnHSin(const FunctionCall&);
Value FnHCos(const FunctionCall&);
Value FnHTan(const FunctionCall&);
Value FnHSec(const FunctionCall&);
Value FnHCsc(const FunctionCall&);
Value FnHCtn(const FunctionCall&);
Value FnHAsin(const FunctionCall&);
Value FnHAcos(const FunctionCall&);
Value FnHAtan(const FunctionCall&);
Value FnHAsec(const FunctionCall&);
Value FnHAcsc(const FunctionCall&);
Value FnHAtanOther(const FunctionCall&);

// Conversions between types and number texts.
Value FnCDbl(const FunctionCall&);
Value FnCInt(const FunctionCall&);
Value FnCLng(const FunctionCall&);
Value FnCSng(const FunctionCall&);
Value FnHex(const FunctionCall&);
Value FnOct(const FunctionCall&);
Value FnVal(const FunctionCall&);
Value FnStr(const FunctionCall&);
Value FnSStr(const FunctionCall&);
Value FnEval(const FunctionCall&);
Value FnIif(const FunctionCall&);

// Text.
Value FnAsc(const FunctionCall&);
Value FnChr(const FunctionCall&);
Value FnJis(const FunctionCall&);
Value FnKnj(const FunctionCall&);
Value FnFullWidth(const FunctionCall&);
Value FnHalfWidth(const FunctionCall&);
Value FnInstr(const FunctionCall&);
Value FnLen(const FunctionCall&);
Value FnLeft(const FunctionCall&);
Value FnRight(const FunctionCall&);
Value FnMid(const FunctionCall&);
Value FnLCase(const FunctionCall&);
Value FnUCase(const FunctionCall&);
Value FnLTrim(const FunctionCall&);
Value FnRTrim(const FunctionCall&);
Value FnTrim(const FunctionCall&);
Value FnSpace(const FunctionCall&);
Value FnString(const FunctionCall&);
Value FnTab(const FunctionCall&);

// The system: environment, files, input, random numbers, the clock.
Value FnEnviron(const FunctionCall&);
Value FnFileState(const FunctionCall&);
Value FnInput(const FunctionCall&);
Value FnInp(const FunctionCall&);
Value FnPos(const FunctionCall&);
Value FnRnd(const FunctionCall&);
Value FnHour(const FunctionCall&);
Value FnMinute(const FunctionCall&);

// Words.
Value WordEmpty(const FunctionCall&);
Value WordErr(const FunctionCall&);
Value WordCommand(const FunctionCall&);
Value WordDate(const FunctionCall&);
Value WordEmptyText(const FunctionCall&);
Value WordNow(const FunctionCall&);
Value WordTime(const FunctionCall&);
Value WordRnd(const FunctionCall&);
Value WordGetClip(const FunctionCall&);
Value WordInputBox(const FunctionCall&);
Value WordFoundX(const FunctionCall&);
Value WordFoundY(const FunctionCall&);

}  // namespace kx
