#include "rules/field_value.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

using namespace ks;

namespace {

struct Reading {
    const char* text;
    double value;
};

const Reading kReadings[] = {
    {"", 0},
    {"abc", 0},
    {"-", 0},
    {"+", 0},
    {".", 0},
    {"0", 0},
    {"1", 1},
    {"-1", -1},
    {"+7", 7},
    {"0.5", 0.5},
    {".5", 0.5},
    {"5.", 5},
    {"-0.5", -0.5},
    {"1x", 1},
    {"2x", 2},
    {"12abc", 12},
    {"1.2.3", 1.2},
    {"--1", 0},
    {"+-1", 0},
    {"1-2", 1},
    // Blanks, tabs and line feeds are skipped inside the number too; a carriage return ends it.
    {"  42", 42},
    {"1 0", 10},
    {"\t1\n2 3", 123},
    {"- 5", -5},
    {"1\r2", 1},
    {"1 . 5", 1.5},
    // Exponents with E or D, in either case; an exponent without digits is left out.
    {"1e3", 1000},
    {"1E+3", 1000},
    {"25e-1", 2.5},
    {"1d2", 100},
    {"1D-2", 0.01},
    {"1e", 1},
    {"1e+", 1},
    {"1ex", 1},
    {"1 e 2", 100},
    {"e5", 0},
    // Hexadecimal and octal.
    {"&HFF", 255},
    {"&hff", 255},
    {"&H1F", 31},
    {"&HFG", 15},
    {"&H", 0},
    {"&O17", 15},
    {"&o8", 0},
    {"& H 10", 16},
    {"&X1", 0},
    {"-&H1", 0},
    {"&", 0},
    {"&HFFFFFFFF", 4294967295.0},
    // 32-bit flag totals read back exactly.
    {"983039", 983039},
    {"00080", 80},
};

} // namespace

TEST(FieldValue, ReadsTheLeadingNumberAndIgnoresTheRest) {
    for (const Reading& row : kReadings)
        EXPECT_DOUBLE_EQ(FieldValue(row.text), row.value) << '"' << row.text << '"';
}

TEST(FieldValue, NumbersBeyondADoubleReadAsInfinityOrZeroWithoutFailing) {
    const double inf = std::numeric_limits<double>::infinity();
    EXPECT_EQ(FieldValue("1e400"), inf);
    EXPECT_EQ(FieldValue("-1e400"), -inf);
    EXPECT_EQ(FieldValue("0.000123e310"), 1.23e306);
    EXPECT_EQ(FieldValue("12345e-400"), 0);
    EXPECT_EQ(FieldValue("0.0000001e-320"), 0);
    EXPECT_EQ(FieldValue("1e99999999999999999999999"), inf);
    EXPECT_EQ(FieldValue(std::string(400, '9')), inf);
    EXPECT_EQ(FieldValue("&H" + std::string(300, 'F')), inf);
    EXPECT_EQ(FieldValue("0e99999"), 0);
    EXPECT_FALSE(std::signbit(FieldValue("-0")));
}

TEST(PlainDecimal, WritesWholeNumbersAndFractionsWithoutExponentOrTrailingZero) {
    EXPECT_EQ(PlainDecimal(0), "0");
    EXPECT_EQ(PlainDecimal(-0.0), "0");
    EXPECT_EQ(PlainDecimal(80), "80");
    EXPECT_EQ(PlainDecimal(983039), "983039");
    EXPECT_EQ(PlainDecimal(32768), "32768");
    EXPECT_EQ(PlainDecimal(-3), "-3");
    EXPECT_EQ(PlainDecimal(8.5), "8.5");
    EXPECT_EQ(PlainDecimal(0.1), "0.1");
    EXPECT_EQ(PlainDecimal(1e20), "100000000000000000000");
    EXPECT_EQ(PlainDecimal(1.5e-7), "0.00000015");
    EXPECT_EQ(PlainDecimal(std::numeric_limits<double>::infinity()), "inf");
    EXPECT_EQ(PlainDecimal(-std::numeric_limits<double>::infinity()), "-inf");
    EXPECT_EQ(PlainDecimal(std::nan("")), "nan");
}

TEST(PlainDecimal, ReadsBackAsTheSameNumberEvenAtTheExtremes) {
    for (const double value : {0.1 + 0.2, 1.0 / 3, std::numeric_limits<double>::max(),
                               std::numeric_limits<double>::denorm_min(), -123456.789}) {
        const std::string text = PlainDecimal(value);
        EXPECT_EQ(text.find_first_of("eE"), std::string::npos) << text;
        EXPECT_EQ(FieldValue(text), value) << text;
    }
}
