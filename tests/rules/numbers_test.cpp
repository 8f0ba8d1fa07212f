#include "rules/numbers.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <set>
#include <string>

using namespace ks;

namespace {
constexpr double kInf = std::numeric_limits<double>::infinity();

struct Reading {
    std::string text;
    double value;
};

// clang-format off
const Reading kReadings[] = {
    {"", 0}, {"abc", 0}, {"-", 0}, {".", 0}, {"+7", 7}, {"-0.5", -0.5}, {".5", 0.5}, {"5.", 5}, {"1x", 1},
    {"12abc", 12}, {"1.2.3", 1.2}, {"--1", 0}, {"1-2", 1}, {"00080", 80}, {"983039", 983039},
    // Blanks, tabs and line feeds are skipped inside the number too; a carriage return ends it.
    {"  42", 42}, {"\t1\n2 3", 123}, {"- 5", -5}, {"1 . 5", 1.5}, {"1\r2", 1},
    // Exponents with E or D in either case; one without digits is left out.
    {"1E+3", 1000}, {"25e-1", 2.5}, {"1d2", 100}, {"1 e 2", 100}, {"1e", 1}, {"1e+x", 1}, {"e5", 0},
    {"&hff", 255}, {"&HFG", 15}, {"&H", 0}, {"&O17", 15}, {"&o8", 0}, {"& H 10", 16}, {"&X1", 0}, {"-&H1", 0},
    {"&HFFFFFFFF", 4294967295.0},
    // Beyond a double: infinity with its sign, or 0.
    {"1e400", kInf}, {"-1e400", -kInf}, {"0.000123e310", 1.23e306}, {"12345e-400", 0}, {"0e99999", 0},
    {"1e99999999999999999999999", kInf}, {std::string(400, '9'), kInf}, {"&H" + std::string(300, 'F'), kInf},
};
// clang-format on
} // namespace

TEST(FieldValue, ReadsTheLeadingNumberAndNeverFailsAndFewTextsAreNumbersAsTheServerReadsThem) {
    // Digits with at most one point, and nothing else.
    const std::set<std::string> plain = {".5", "5.", "00080", "983039", std::string(400, '9')};
    for (const Reading& row : kReadings) {
        EXPECT_EQ(fieldValue(row.text), row.value) << '"' << row.text << '"';
        EXPECT_EQ(isPlainNumber(row.text), plain.contains(row.text)) << '"' << row.text << '"';
    }
    EXPECT_FALSE(std::signbit(fieldValue("-0")));
}

TEST(PlainDecimal, HasNoExponentNoTrailingZeroAndReadsBackExactly) {
    const std::pair<double, const char*> rows[] = {
        {-0.0, "0"},     {8.5, "8.5"},         {1e20, "100000000000000000000"}, {1.5e-7, "0.00000015"},
        {-kInf, "-inf"}, {std::nan(""), "nan"}};
    for (const auto& [value, text] : rows)
        EXPECT_EQ(plainDecimal(value), text);
    for (const double value :
         {0.1 + 0.2, -1.0 / 3, std::numeric_limits<double>::max(), std::numeric_limits<double>::denorm_min()}) {
        const std::string text = plainDecimal(value);
        EXPECT_EQ(text.find_first_of("eE"), std::string::npos) << text;
        EXPECT_EQ(fieldValue(text), value) << text;
    }
}
