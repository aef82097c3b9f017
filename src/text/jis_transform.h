#pragma once
// ISO-2022-JP and EUC-JP hold the same character sets, one with escape
// sequences and 7-bit bytes, the other with 8-bit bytes; converting between
// them is a byte transform, so ISO-2022-JP needs no converter of its own.
#include "sys/file_port.h"

namespace kx {

// Escape sequences select ASCII (ESC ( B, ESC ( J), half-width katakana
// (ESC ( I, or SO/SI), JIS X 0208 (ESC $ @, ESC $ B) or JIS X 0212
// (ESC $ ( D); unknown escapes pass through as bytes.
Bytes Iso2022JpToEucJp(const Bytes& jis);

// Ends every run of non-ASCII characters with ESC ( B, as mail software
// expects; half-width katakana use ESC ( I.
Bytes EucJpToIso2022Jp(const Bytes& euc);

}  // namespace kx
