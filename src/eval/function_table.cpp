// The dispatch tables of the function library. The order is the behaviour:
// the first equal name wins.
#include <algorithm>
#include <array>

#include "eval/functions.h"

namespace kx {
namespace {

constexpr std::array kFunctions = std::to_array<FunctionEntry>({
    {"ABS", FnAbs},
    {"AKCNV$", FnFullWidth},
    {"ASC", FnAsc},
    {"ATAN", FnAtan},
    {"ATAND", FnAtanD},
    {"ASIN", FnAsin},
    {"ASIND", FnAsinD},
    {"ASC", FnAcsc},  // the arc-cosecant; shadowed by the character code above
    {"ASCD", FnAcscD},
    {"ACOS", FnAcos},
    {"ACOSD", FnAcosD},
    {"ACT", FnAct},
    {"ACTD", FnActD},
    {"CDBL", FnCDbl},
    {"CEIL", FnCeil},
    {"CHR$", FnChr},
    {"CINT", FnCInt},
    {"CLNG", FnCLng},
    {"COT", FnCot},
    {"COTD", FnCotD},
    {"COS", FnCos},
    {"COSD", FnCosD},
    {"CSC", FnCsc},
    {"CSCD", FnCscD},
    {"CSNG", FnCSng},
    {"CTN", FnCtn},
    {"CTND", FnCtnD},
    {"DEGREES", FnDegrees},
    {"ENVIRON$", FnEnviron},
    {"EOF", FnFileState},
    {"EXP", FnExp},
    {"EVAL", FnEval},
    {"FIX", FnFix},
    {"FP", FnFp},
    {"HEX$", FnHex},
    {"HOUR", FnHour},
    {"HSIN", FnHSin},
    {"HCOS", FnHCos},
    {"HTAN", FnHTan},
    {"HSEC", FnHSec},
    {"HCSE", FnHCsc},
    {"HCTN", FnHCtn},
    {"HASN", FnHAsin},
    {"HACS", FnHAcos},
    {"HATN", FnHAtan},
    {"HASC", FnHAsec},
    {"HACSE", FnHAcsc},
    {"HATN", FnHAtanOther},  // shadowed by the first HATN
    {"IIF", FnIif},
    {"INPUT$", FnInput},
    {"INSTR", FnInstr},
    {"INT", FnInt},
    {"INP", FnInp},
    {"IP", FnIp},
    {"JIS$", FnJis},
    {"KACNV$", FnHalfWidth},
    {"KINSTR", FnInstr},
    {"KLEN", FnLen},
    {"KMID$", FnMid},
    {"KNJ$", FnKnj},
    {"LCASE$", FnLCase},
    {"LEFT$", FnLeft},
    {"LEN", FnLen},
    {"LOC", FnFileState},
    {"LOF", FnFileState},
    {"LOG", FnLog},
    {"LOGn", FnLogN},
    {"LTRIM$", FnLTrim},
    {"MAX", FnMax},
    {"MID$", FnMid},
    {"MIN", FnMin},
    {"MINUTE", FnMinute},
    {"OCT$", FnOct},
    {"POS", FnPos},
    {"RADIANS", FnRadians},
    {"RIGHT$", FnRight},
    {"RND", FnRnd},
    {"ROUND", FnRound},
    {"RTRIM$", FnRTrim},
    {"REMINDER", FnReminder},
    {"SEC", FnSec},
    {"SECD", FnSecD},
    {"SGN", FnSgn},
    {"SIN", FnSin},
    {"SIND", FnSinD},
    {"SPACE$", FnSpace},
    {"SPC", FnSpace},
    {"SQR", FnSqr},
    {"STR$", FnStr},
    {"SSTR$", FnSStr},
    {"STRING$", FnString},
    {"TAB", FnTab},
    {"TAN", FnTan},
    {"TAND", FnTanD},
    {"TRIM", FnTrim},
    {"TRUNCATE", FnTruncate},
    {"UCASE", FnUCase},
    {"VAL", FnVal},
});
static_assert(kFunctions.size() == 98);
static_assert(kFunctions[2].name == "ASC" && kFunctions[7].name == "ASC",
              "the character code must shadow the arc-cosecant");

constexpr std::array kWords = std::to_array<FunctionEntry>({
    {"CSRLIN", WordEmpty},
    {"ERR", WordErr},
    {"COMMAND$", WordCommand},
    {"DATE", WordDate},
    {"INKEY$", WordEmptyText},
    {"NOW", WordNow},
    {"TIME", WordTime},
    {"RND", WordRnd},
    {"GETCLIP", WordGetClip},
    {"INPUTBOX", WordInputBox},
    {"FOUNDX", WordFoundX},
    {"FOUNDY", WordFoundY},
});
// Ffc looks for a word only in texts that begin with a letter.
static_assert(std::all_of(kWords.begin(), kWords.end(), [](const FunctionEntry& e) {
  return !e.name.empty() && e.name[0] >= 'A' && e.name[0] <= 'Z';
}));

}  // namespace

std::span<const FunctionEntry> FunctionTable() {
  return kFunctions;
}
std::span<const FunctionEntry> WordTable() {
  return kWords;
}

}  // namespace kx
