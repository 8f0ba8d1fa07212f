#pragma once

#include "rules/layer.h"

#include <optional>
#include <string>
#include <string_view>

namespace ks {

// The launcher reads numbers in two ways, both with the one scanner behind them. A number is an optional
// sign, digits with an optional point (always a point, whatever the locale) and further digits, and an
// optional exponent: E or D in either case, an optional sign and digits. &H and &O begin a hexadecimal or an
// octal literal.

// The number that a field's text begins with, as a double; 0 when the text does not begin with one.
//
// Blanks, tabs and line feeds are skipped wherever they stand, before the number and inside it. The reading
// stops at the first character that does not fit and ignores the rest, so an exponent without digits is left
// out. A literal has no sign and any number of digits. A number too large for a double reads as infinity with
// its sign, so every range test finds it out of range; a number too small reads as 0.
double fieldValue(std::string_view text);

// The whole word as one number, or nothing: no blank may stand in it and nothing behind it. A literal of up
// to 16 bits reads as a signed 16-bit value, one of up to 32 bits as a signed 32-bit value; a longer one and
// a number too large for a double are no number. A number too small reads as 0.
std::optional<double> wholeNumber(std::string_view word);

// Whether a setting's text is a number as the server reads one: digits, with at most one point among or behind
// them ("16", "0.5", ".5"), and nothing else: no sign, blank, exponent or literal.
bool isPlainNumber(std::string_view text);

// A number as field text in plain decimal form: no exponent, no group separator, no trailing ".0", and the
// fewest digits that read back as the same double ("983039", "1.5", "0.1"). Minus zero is "0". Infinity
// and a value that is no number show as "inf", "-inf" and "nan".
std::string plainDecimal(double value);

} // namespace ks
