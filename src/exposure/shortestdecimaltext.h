#pragma once

#include <QString>

namespace kestrum {

/// The shortest decimal text that reads back as exactly the same 64-bit float.
///
/// Whole numbers keep a fractional part ("2.0", "11.0"); magnitudes below 1e-4 or
/// from 1e16 switch to exponent form with at least two exponent digits ("1e-05",
/// "1e+16"). Minus is the ASCII hyphen-minus. Not-a-number prints "nan", infinities
/// "inf" and "-inf". This is the one number format of logged texts, debug
/// descriptions, the stored preferences and the command-line JSON.
QString shortestDecimalText(double value);

} // namespace kestrum
