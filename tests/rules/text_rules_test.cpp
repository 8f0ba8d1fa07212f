#include "frame/catalogue.h"
#include "frame/colour.h"
#include "frame/program.h"
#include "frame/startup.h"
#include "rules/text_rules.h"
#include "support/fake_platform.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

using namespace ks;

namespace {

struct TextRuleTest : ::testing::Test {
    test::FakePlatform platform;
    Program program{platform, PathStyle::Linux};
    TextRuleTest() {
        ConnectHandlers(program);
        LoadMainForm(program);
    }
    Field& main(const char* name) { return program.frmMain.field(name); }
    CheckBox& ipCheck() { return program.frmMain.check("ipCheck"); }
};

struct Quoting {
    const char* before;
    const char* value;   // after QuoteValue
    const char* inline_; // after QuoteInline
};

const Quoting kQuotings[] = {
    {"", "\"\"", "\""},
    {"   ", "\"\"", "\"   \""},
    {"host", "\"host\"", "\"host\""},
    {"\"host\"", "\"host\"", "\"host\""},
    {"\"host\"   ", "\"host\"", "\"host\"   \""},
    {"\"host", "\"host\"", "\"host\""},
    {"host\"", "\"host\"", "\"host\""},
    {"\"", "\"", "\""},
    {"  my host  ", "\"  my host\"", "\"  my host  \""},
    {"a\"b", "\"a\"b\"", "\"a\"b\""},
    {"tab\t", "\"tab\t\"", "\"tab\t\""},
    {"female/", "\"female/\"", "\"female/\""},
};

struct Address {
    const char* text;
    bool valid;
    bool message;
};

const Address kAddresses[] = {
    {"192.168.0.1", true, false},
    {"  10.0.0.12  ", true, false}, // blanks around go
    {"1.2.3.4", false, true},       // seven characters
    {"1.2.3.45", true, false},      // eight
    {"", false, true},
    {"       ", false, true},
    {"1.2.3.45.", false, true}, // dot at the end, before the dot count
    {"1.2.3.4.", false, true},
    {"....1234", false, false}, // four dots, then an octet above 255
    {"255.255.255.255", true, false},
    {"255.255.255.256", false, false}, // a value above 255, no message
    {"1.2.3.999999", false, false},
    {"001.002.003.0255", true, false}, // leading zeros
    {"00000000000000.1.2.3", true, false},
    {"1..22.33", true, false}, // empty octets pass
    {".11.2.33", true, false},
    {"...00123", true, false},
    {"1.2.3.4.5", false, false}, // four dots
    {"1.2.34567", false, false}, // two dots
    {"12345678", false, false},  // none
    {"1.2.3.x4", false, false},  // a letter
    {"1.2.3.-4", false, false},
    {"1.2.3.+4", false, false},
    {"1.2. 3.4", false, false}, // a blank inside
    {"1.2.3 .45", false, false},
    {"1.2.3 4.5", false, false},
    {"1.2.3.4.x", false, false}, // too many dots and a bad octet: no message either way
    {"x.2.3.4.", false, false},  // the bad character comes before the dot at the end
};

} // namespace

TEST(Quoting, ValueTrimsBlanksAndQuotesWhileInlineOnlyQuotes) {
    for (const Quoting& row : kQuotings) {
        std::string value = row.before;
        QuoteValue(value);
        EXPECT_EQ(value, row.value) << '[' << row.before << ']';
        std::string inlined = row.before;
        QuoteInline(inlined);
        EXPECT_EQ(inlined, row.inline_) << '[' << row.before << ']';
        QuoteValue(value);
        EXPECT_EQ(value, row.value) << "twice: [" << row.before << ']';
    }
}

TEST(Quoting, TableHoldsTheQuotedTextFieldsOfTheCatalogue) {
    std::set<std::string_view> catalogue, table;
    for (const FieldSpec& spec : mainFields())
        if (spec.kind == ValueKind::QuotedText) catalogue.insert(spec.name);
    for (const QuotedField& quoted : quotedFields())
        table.insert(quoted.field);
    EXPECT_EQ(table, catalogue);
    EXPECT_EQ(quotedFields().size(), 11u);
}

TEST_F(TextRuleTest, LeavingAQuotedFieldQuotesItButTextSetByCodeStaysAsItIs) {
    main("FHOSTN").setText("  Frag Palace   ");
    main("FTM1").setText("female/ ");
    main("FTM2").setText("");
    EXPECT_EQ(main("FHOSTN").text(), "  Frag Palace   ");

    main("FHOSTN").validate();
    main("FTM1").validate();
    main("FTM2").validate();
    EXPECT_EQ(main("FHOSTN").text(), "\"  Frag Palace\"");
    EXPECT_EQ(main("FTM1").text(), "\"female/ \"");
    EXPECT_EQ(main("FTM2").text(), "\"");
    EXPECT_EQ(program.state.QuoteBuffer, "\"");

    for (const QuotedField& quoted : quotedFields()) {
        Field& field = program.frmMain.field(quoted.field);
        field.setText("x");
        field.validate();
        EXPECT_EQ(field.text(), "\"x\"") << quoted.field;
    }
    main("FSM").setText("q2dm2 ");
    main("FSM").validate();
    EXPECT_EQ(main("FSM").text(), "q2dm2 ");
    EXPECT_TRUE(platform.messages.empty());
}

TEST_F(TextRuleTest, UseDefaultGreysAndEmptiesTheAddressAndGivesItBack) {
    // The start sets "Use Default" on.
    Field& IP = main("IP");
    EXPECT_EQ(ipCheck().state(), 1);
    EXPECT_EQ(IP.backColour(), kDisabledGrey);
    EXPECT_FALSE(IP.enabled());
    EXPECT_EQ(IP.text(), "");
    EXPECT_EQ(program.state.SavedIP, "");

    ipCheck().setState(0);
    EXPECT_EQ(IP.backColour(), kWhite);
    EXPECT_TRUE(IP.enabled());
    EXPECT_EQ(IP.text(), "");
    IP.setText("10.0.0.5");

    ipCheck().setState(1);
    EXPECT_EQ(IP.text(), "");
    EXPECT_EQ(program.state.SavedIP, "10.0.0.5");
    EXPECT_FALSE(IP.enabled());
    ipCheck().setState(0);
    EXPECT_EQ(IP.text(), "10.0.0.5");
    EXPECT_TRUE(IP.enabled());

    // A grey state other than 1 counts as off.
    ipCheck().setState(2);
    EXPECT_TRUE(IP.enabled());
    EXPECT_EQ(IP.text(), "10.0.0.5");
}

TEST_F(TextRuleTest, AddressTestTrimsTheCallersTextAndSpeaksOnlyOnItsTwoMessagePaths) {
    for (const Address& row : kAddresses) {
        platform.messages.clear();
        std::string IP = row.text;
        EXPECT_EQ(Valid_IP(program, IP), row.valid) << '[' << row.text << ']';
        const std::string trimmed = IP;
        if (!row.message) {
            EXPECT_TRUE(platform.messages.empty()) << '[' << row.text << ']';
            continue;
        }
        ASSERT_EQ(platform.messages.size(), 1u) << '[' << row.text << ']';
        const MessageBoxRequest& box = platform.messages[0];
        EXPECT_EQ(box.title, "IP Validator");
        EXPECT_EQ(box.text, trimmed + " is Invalid");
        EXPECT_EQ(box.buttons, MessageButtons::Ok);
        EXPECT_EQ(box.icon, MessageIcon::None);
    }
    std::string padded = "  1.2.3.4  ";
    Valid_IP(program, padded);
    EXPECT_EQ(padded, "1.2.3.4");
}

TEST_F(TextRuleTest, LeavingTheAddressFieldTestsACopyAndChangesNothing) {
    ipCheck().setState(0);
    Field& IP = main("IP");
    IP.validate();
    ASSERT_EQ(platform.messages.size(), 1u);
    EXPECT_EQ(platform.messages[0].text, " is Invalid");

    IP.setText(" 1.2.3.4 ");
    IP.validate();
    EXPECT_EQ(IP.text(), " 1.2.3.4 ");
    EXPECT_EQ(platform.messages.back().text, "1.2.3.4 is Invalid");

    IP.setText("1.2.3.x4");
    IP.validate();
    EXPECT_EQ(IP.text(), "1.2.3.x4");
    EXPECT_EQ(platform.messages.size(), 2u);
}
