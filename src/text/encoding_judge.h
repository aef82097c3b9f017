#pragma once
// Guessing the character encoding of a macro file from its first 1000 bytes.
#include <cstdint>
#include <string_view>

#include "sys/file_port.h"

namespace kx {

// The encoding names the detector answers with.
inline constexpr std::string_view kEncodingSjis = "SJIS";
inline constexpr std::string_view kEncodingEuc = "EUC";
inline constexpr std::string_view kEncodingJis = "JIS";
inline constexpr std::string_view kEncodingUtf8 = "UTF8";
inline constexpr std::string_view kEncodingUtf7 = "UTF7";
inline constexpr std::string_view kEncodingUnicode = "UNICODE";

// A score meaning that the scorer found a mark only its encoding has.
inline constexpr std::int16_t kCertainScore = 9999;

// Returns one of the six encoding names; "SJIS" when nothing is better.
std::string_view JudgeCode(const Bytes& bytes);

// Each scorer examines bytes 0 to last (the last index, at most 999; below 0
// for an empty buffer) and answers points x 100 / (2 x last + 2), rounded to
// even, or kCertainScore at the first mark when earlyAnswer is set.
std::int16_t ScoreJis(const Bytes& bytes, int last, bool earlyAnswer);
std::int16_t ScoreUnicode(const Bytes& bytes, int last, bool earlyAnswer);
std::int16_t ScoreUtf8(const Bytes& bytes, int last, bool earlyAnswer);
std::int16_t ScoreUtf7(const Bytes& bytes, int last, bool earlyAnswer);
std::int16_t ScoreSjis(const Bytes& bytes, int last, bool earlyAnswer);
std::int16_t ScoreEuc(const Bytes& bytes, int last, bool earlyAnswer);

}  // namespace kx
