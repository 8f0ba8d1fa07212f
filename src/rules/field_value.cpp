#include "rules/field_value.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <limits>
#include <system_error>

namespace ks {

namespace {

// Walks a text and steps over the blanks, tabs and line feeds that may stand anywhere in a number.
class Cursor {
public:
    explicit Cursor(std::string_view text) : text_(text) { skipBlanks(); }

    bool atEnd() const { return pos_ >= text_.size(); }
    char peek() const { return atEnd() ? '\0' : text_[pos_]; }
    void next() {
        ++pos_;
        skipBlanks();
    }
    // Takes the next character when it is one of the given ones, in either case.
    bool take(std::string_view choices) {
        const char c = upper(peek());
        if (c == '\0' || choices.find(c) == std::string_view::npos) return false;
        next();
        return true;
    }

    static char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

private:
    void skipBlanks() {
        while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\t' || text_[pos_] == '\n'))
            ++pos_;
    }

    std::string_view text_;
    std::size_t pos_ = 0;
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// &H or &O: whole digits of base 16 or 8, no sign, no point.
double readRadix(Cursor& cursor, int base) {
    double value = 0;
    for (;;) {
        const char c = Cursor::upper(cursor.peek());
        int digit = -1;
        if (isDigit(c))
            digit = c - '0';
        else if (base == 16 && c >= 'A' && c <= 'F')
            digit = c - 'A' + 10;
        if (digit < 0 || digit >= base) break;
        value = value * base + digit;
        cursor.next();
    }
    return value;
}

// Digits as they stand, appended to the number's text; gives how many there were.
std::size_t readDigits(Cursor& cursor, std::string& out) {
    std::size_t count = 0;
    while (isDigit(cursor.peek())) {
        out += cursor.peek();
        cursor.next();
        ++count;
    }
    return count;
}

double readDecimal(Cursor& cursor) {
    std::string number; // the number without blanks, in the form std::from_chars reads
    bool negative = false;
    if (cursor.peek() == '-' || cursor.peek() == '+') {
        negative = cursor.peek() == '-';
        cursor.next();
    }
    const std::size_t integerDigits = readDigits(cursor, number);
    std::size_t fractionDigits = 0;
    if (cursor.peek() == '.') {
        cursor.next();
        number += '.';
        fractionDigits = readDigits(cursor, number);
    }
    if (integerDigits + fractionDigits == 0) return 0;

    // The exponent counts only when it has digits: "1E" and "1E+" read as 1.
    long long exponent = 0;
    if (cursor.take("ED")) {
        bool negativeExponent = false;
        if (cursor.peek() == '-' || cursor.peek() == '+') {
            negativeExponent = cursor.peek() == '-';
            cursor.next();
        }
        std::string digits;
        if (readDigits(cursor, digits) > 0) {
            for (const char d : digits)
                exponent = std::min(exponent * 10 + (d - '0'), 1'000'000'000LL);
            if (negativeExponent) exponent = -exponent;
            number += 'e';
            number += std::to_string(exponent);
        }
    }

    double magnitude = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), magnitude);
    (void)end;
    if (error == std::errc::result_out_of_range) {
        // Too large or too small for a double. The decimal position of the first significant digit tells which.
        const std::size_t firstSignificant = number.find_first_of("123456789");
        const std::size_t point = std::min(number.find('.'), number.find('e'));
        const long long position = point == std::string::npos || firstSignificant < point
                                       ? static_cast<long long>(std::min(point, number.size()) - firstSignificant)
                                       : -static_cast<long long>(firstSignificant - point - 1);
        magnitude = position + exponent > 0 ? std::numeric_limits<double>::infinity() : 0.0;
    } else if (error != std::errc()) {
        magnitude = 0;
    }
    if (magnitude == 0) return 0;
    return negative ? -magnitude : magnitude;
}

} // namespace

double FieldValue(std::string_view text) {
    Cursor cursor(text);
    if (cursor.peek() == '&') {
        cursor.next();
        if (cursor.take("H")) return readRadix(cursor, 16);
        if (cursor.take("O")) return readRadix(cursor, 8);
        return 0;
    }
    return readDecimal(cursor);
}

std::string PlainDecimal(double value) {
    if (value == 0) return "0"; // minus zero included
    if (std::isnan(value)) return "nan";
    // Room for the longest plain form of a double: 309 integer digits, or a point and 1074 fraction digits.
    char buffer[1100];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    if (error != std::errc()) return "nan";
    return std::string(buffer, end);
}

} // namespace ks
