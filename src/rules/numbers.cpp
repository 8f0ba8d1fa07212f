#include "rules/numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <system_error>

namespace ks {

namespace {

enum class Spacing { SkipBlanks, Exact };

// Walks a text; in the lenient reading it steps over the blanks, tabs and line feeds that may stand anywhere
// in a number.
class Cursor {
public:
    Cursor(std::string_view text, Spacing spacing) : text_(text), spacing_(spacing) { skipBlanks(); }

    bool atEnd() const { return pos_ >= text_.size(); }
    std::size_t position() const { return pos_; }
    char peek() const { return atEnd() ? '\0' : text_[pos_]; }
    char peekUpper() const { return upper(peek()); }
    void next() {
        ++pos_;
        skipBlanks();
    }
    // Takes the next character when it is one of the given upper-case ones, in either case.
    bool take(std::string_view choices) {
        const char c = peekUpper();
        if (c == '\0' || choices.find(c) == std::string_view::npos) return false;
        next();
        return true;
    }

private:
    static char upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }
    void skipBlanks() {
        if (spacing_ == Spacing::Exact) return;
        while (pos_ < text_.size() && (text_[pos_] == ' ' || text_[pos_] == '\t' || text_[pos_] == '\n'))
            ++pos_;
    }

    std::string_view text_;
    Spacing spacing_;
    std::size_t pos_ = 0;
};

bool isDigit(char c) { return c >= '0' && c <= '9'; }

// What the scan found at the start of a text.
struct Scan {
    enum class Kind { None, Decimal, Literal } kind = Kind::None;
    double value = 0;       // the magnitude, without sign
    bool negative = false;  // a decimal number's sign
    bool tooLarge = false;  // a decimal number beyond a double
    std::uint64_t bits = 0; // a literal's value while it fits in 32 bits
    bool wide = false;      // a literal of more than 32 bits
    std::size_t end = 0;    // where the number ends in the text
};

// &H or &O, behind the ampersand: digits of base 16 or 8, no sign, no point.
void scanLiteral(Cursor& cursor, int base, Scan& scan) {
    std::size_t digits = 0;
    for (;; ++digits) {
        const char c = cursor.peekUpper();
        int digit = -1;
        if (isDigit(c))
            digit = c - '0';
        else if (base == 16 && c >= 'A' && c <= 'F')
            digit = c - 'A' + 10;
        if (digit < 0 || digit >= base) break;
        scan.value = scan.value * base + digit;
        if (!scan.wide) {
            scan.bits = scan.bits * static_cast<unsigned>(base) + static_cast<unsigned>(digit);
            scan.wide = scan.bits > 0xFFFFFFFFu;
        }
        cursor.next();
    }
    if (digits > 0) scan.kind = Scan::Kind::Literal;
}

// Digits as they stand, appended to the number's text; gives how many there were.
std::size_t readDigits(Cursor& cursor, std::string& out) {
    std::size_t count = 0;
    for (; isDigit(cursor.peek()); ++count) {
        out += cursor.peek();
        cursor.next();
    }
    return count;
}

void scanDecimal(Cursor& cursor, Scan& scan) {
    std::string number; // the mantissa without blanks and sign, in the form std::from_chars reads
    if (cursor.peek() == '-' || cursor.peek() == '+') {
        scan.negative = cursor.peek() == '-';
        cursor.next();
    }
    std::size_t digits = readDigits(cursor, number);
    if (cursor.peek() == '.') {
        cursor.next();
        number += '.';
        digits += readDigits(cursor, number);
    }
    if (digits == 0) return;
    scan.kind = Scan::Kind::Decimal;
    scan.end = cursor.position();

    // The exponent counts only when it has digits: "1E" and "1E+" end before the E.
    long long exponent = 0;
    if (cursor.take("ED")) {
        bool negativeExponent = false;
        if (cursor.peek() == '-' || cursor.peek() == '+') {
            negativeExponent = cursor.peek() == '-';
            cursor.next();
        }
        std::string exponentDigits;
        if (readDigits(cursor, exponentDigits) > 0) {
            for (const char d : exponentDigits)
                exponent = std::min(exponent * 10 + (d - '0'), 1'000'000'000LL);
            if (negativeExponent) exponent = -exponent;
            scan.end = cursor.position();
        }
    }

    const std::string spelled = number + 'e' + std::to_string(exponent);
    const auto [end, error] = std::from_chars(spelled.data(), spelled.data() + spelled.size(), scan.value);
    (void)end;
    if (error == std::errc::result_out_of_range) {
        // Too large or too small for a double: the decimal position of the first significant digit tells which.
        const std::size_t firstSignificant = number.find_first_of("123456789");
        const std::size_t point = std::min(number.find('.'), number.size());
        const long long position = firstSignificant < point ? static_cast<long long>(point - firstSignificant)
                                                            : -static_cast<long long>(firstSignificant - point - 1);
        scan.tooLarge = position + exponent > 0;
        scan.value = scan.tooLarge ? std::numeric_limits<double>::infinity() : 0.0;
    } else if (error != std::errc()) {
        scan.value = 0;
    }
}

Scan scanNumber(std::string_view text, Spacing spacing) {
    Cursor cursor(text, spacing);
    Scan scan;
    if (cursor.peek() == '&') {
        cursor.next();
        if (cursor.take("H"))
            scanLiteral(cursor, 16, scan);
        else if (cursor.take("O"))
            scanLiteral(cursor, 8, scan);
        scan.end = cursor.position();
        return scan;
    }
    scanDecimal(cursor, scan);
    return scan;
}

} // namespace

double fieldValue(std::string_view text) {
    const Scan scan = scanNumber(text, Spacing::SkipBlanks);
    if (scan.kind == Scan::Kind::None || scan.value == 0) return 0;
    if (scan.kind == Scan::Kind::Literal) return scan.value;
    return scan.negative ? -scan.value : scan.value;
}

std::optional<double> wholeNumber(std::string_view word) {
    const Scan scan = scanNumber(word, Spacing::Exact);
    if (scan.kind == Scan::Kind::None || scan.end != word.size()) return std::nullopt;
    if (scan.kind == Scan::Kind::Literal) {
        if (scan.wide) return std::nullopt;
        if (scan.bits <= 0xFFFFu) return static_cast<double>(static_cast<std::int16_t>(scan.bits));
        return static_cast<double>(static_cast<std::int32_t>(scan.bits));
    }
    if (scan.tooLarge) return std::nullopt;
    return scan.negative ? -scan.value : scan.value;
}

std::string plainDecimal(double value) {
    if (value == 0) return "0"; // minus zero included
    if (std::isnan(value)) return "nan";
    // Room for the longest plain form of a double: 309 integer digits, or a point and 1074 fraction digits.
    char buffer[1100];
    const auto [end, error] = std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    if (error != std::errc()) return "nan";
    return std::string(buffer, end);
}

bool isPlainNumber(std::string_view text) {
    const std::size_t point = text.find('.');
    if (point != std::string_view::npos && text.find('.', point + 1) != std::string_view::npos) return false;
    return std::any_of(text.begin(), text.end(), isDigit) &&
           std::all_of(text.begin(), text.end(), [](char c) { return isDigit(c) || c == '.'; });
}

} // namespace ks
