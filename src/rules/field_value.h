#pragma once

#include <string>
#include <string_view>

namespace ks {

// The number that a text begins with, as a double; 0 when the text does not begin with one.
//
// Blanks, tabs and line feeds are skipped wherever they stand, before the number and inside it. The number
// is an optional sign, digits, an optional point (always a point, whatever the locale) with further digits,
// and an optional exponent: E or D, an optional sign and digits. &H and &O begin a hexadecimal or an octal
// number. The reading stops at the first character that does not fit and ignores the rest.
//
// A number too large for a double reads as infinity with its sign, so every range test finds it out of
// range; a number too small reads as 0.
double FieldValue(std::string_view text);

// A number as field text in plain decimal form: no exponent, no group separator, no trailing ".0", and the
// fewest digits that read back as the same double ("983039", "1.5", "0.1"). Minus zero is "0". Infinity
// and a value that is no number show as "inf", "-inf" and "nan".
std::string PlainDecimal(double value);

} // namespace ks
