#include "frame/colour.h"
#include "rules/text_rules.h"
#include "support/launcher_test.h"

#include <set>
#include <tuple>

using namespace ks;
using RulesTest = test::LauncherTest;

namespace {

// The text, after quoteValue, after quoteInline.
// clang-format off
const std::tuple<std::string, std::string, std::string> kQuotings[] = {
    {"", R"("")", R"(")"},          {"   ", R"("")", R"("   ")"},        {"host", R"("host")", R"("host")"},
    {R"("a")", R"("a")", R"("a")"}, {R"("a"  )", R"("a")", R"("a"  ")"}, {R"("a)", R"("a")", R"("a")"},
    {R"(a")", R"("a")", R"("a")"},  {R"(")", R"(")", R"(")"},             {" a b ", R"(" a b")", R"(" a b ")"},
    {R"(a"b)", R"("a"b")", R"("a"b")"}, {"a\t", "\"a\t\"", "\"a\t\""},
};
// clang-format on

// The text, whether it is valid, whether a message says it is not.
// clang-format off
const std::tuple<std::string, bool, bool> kAddresses[] = {
    {"192.168.0.1", true, false}, {"  10.0.0.12  ", true, false}, {"1.2.3.45", true, false},
    {"255.255.255.255", true, false}, {"001.002.003.0255", true, false}, {"0000000000.1.2.3", true, false},
    {"1..22.33", true, false}, {".11.2.33", true, false}, {"...00123", true, false}, // empty octets
    {"1.2.3.4", false, true}, {"", false, true}, {"       ", false, true}, {"1.2.3.4.", false, true},
    {"1.2.3.45.", false, true}, {"255.255.255.256", false, false}, {"1.2.3.x4", false, false},
    {"1.2.3.-4", false, false}, {"1.2. 3.4", false, false}, {"1.2.3.4.5", false, false},
    {"1.2.34567", false, false}, {"12345678", false, false}, {"....1234", false, false}, {"x.2.3.4.", false, false},
};
// clang-format on

} // namespace

TEST(Quoting, ValueTrimsBlanksAndQuotesWhileInlineOnlyQuotes) {
    for (const auto& [before, quoted, inlinedQuoted] : kQuotings) {
        EXPECT_EQ(quoteValue(before) + "|" + quoteInline(before), quoted + "|" + inlinedQuoted) << '[' << before << ']';
        EXPECT_EQ(quoteValue(quoteValue(before)), quoted) << "twice: [" << before << ']';
    }
}

TEST_F(RulesTest, LeavingAQuotedTextFieldQuotesItButTextSetByCodeStays) {
    // The team models get only their quotes; the other nine lose their trailing blanks too.
    const std::set<std::string> quoted = {"FHOSTN", "FLOGN", "FPIS", "FRCON2", "FTL", "FTN1", "FTN2", "FTS1", "FTS2"};
    const std::set<std::string> models = {"FTM1", "FTM2"};
    for (const auto& field : program.form(FormId::Main).fields()) {
        const std::string& name = field->name();
        field->setText(" x ");
        EXPECT_EQ(field->text(), " x ") << name;
        field->validate();
        const char* expected = quoted.count(name) ? R"(" x")" : models.count(name) ? R"(" x ")" : " x ";
        EXPECT_EQ(field->text(), expected) << name;
    }
}

TEST_F(RulesTest, UseDefaultGreysAndEmptiesTheAddressAndGivesItBackAndLeavingTheFieldChangesNothing) {
    Field& IP = main("IP");
    CheckBox& ipCheck = check("ipCheck");
    auto look = [&] { return std::tuple{IP.text(), IP.enabled(), IP.backColour(), program.savedAddress()}; };
    EXPECT_EQ(look(), std::tuple("", false, kDisabledGrey, "")) << "at the start";
    ipCheck.setState(0);
    EXPECT_EQ(look(), std::tuple("", true, kWhite, ""));
    IP.setText("10.0.0.5");
    ipCheck.setState(1);
    EXPECT_EQ(look(), std::tuple("", false, kDisabledGrey, "10.0.0.5"));
    ipCheck.setState(0);
    EXPECT_EQ(look(), std::tuple("10.0.0.5", true, kWhite, "10.0.0.5"));
    // Leaving the field tests a copy of its text.
    for (const char* text : {" 1.2.3.4 ", "1.2.3.x4"}) {
        IP.setText(text);
        IP.validate();
        EXPECT_EQ(IP.text(), text);
    }
    EXPECT_EQ(shown(), std::vector<std::string>{"IP Validator|1.2.3.4 is Invalid"});
}

TEST_F(RulesTest, AddressTestTrimsTheCallersTextAndSpeaksOnlyOnItsTwoMessagePaths) {
    for (const auto& [text, valid, message] : kAddresses) {
        platform.messages.clear();
        std::string IP = text;
        EXPECT_EQ(isValidAddress(program, IP), valid) << '[' << text << ']';
        EXPECT_EQ(shown(), message ? std::vector{"IP Validator|" + IP + " is Invalid"} : std::vector<std::string>{})
            << '[' << text << ']';
    }
    std::string padded = "  1.2.3.4  ";
    isValidAddress(program, padded);
    EXPECT_EQ(padded, "1.2.3.4");
}
