#include "frame/catalogue.h"
#include "frame/program.h"
#include "frame/startup.h"
#include "rules/numeric_rules.h"
#include "support/fake_platform.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

using namespace ks;

namespace {

struct NumericRuleTest : ::testing::Test {
    test::FakePlatform platform;
    Program program{platform, PathStyle::Linux};
    NumericRuleTest() {
        ConnectHandlers(program);
        LoadMainForm(program);
        platform.messages.clear();
    }
    Field& main(const char* name) { return program.frmMain.field(name); }
    Field& weapons(const char* name) { return program.Form2.field(name); }

    // Types the characters one by one, as keystrokes reach a field.
    void type(Field& field, const std::string& keys) {
        for (const char key : keys) field.setText(field.text() + key);
    }
    std::vector<std::string> titles() const {
        std::vector<std::string> result;
        for (const auto& message : platform.messages) result.push_back(message.title);
        return result;
    }
};

double highestFor(ValueKind kind) {
    switch (kind) {
    case ValueKind::Switch: return 1;
    case ValueKind::Number0to8: return 8;
    case ValueKind::Number0to9: return 9;
    default: return -1;
    }
}

} // namespace

TEST(NumericRuleTable, HasOneRuleForEachRangedFieldOfTheCatalogueAndNoOther) {
    std::map<std::pair<RuleForm, std::string_view>, double> expected;
    for (const FieldSpec& spec : mainFields())
        if (highestFor(spec.kind) >= 0) expected[{RuleForm::Main, spec.name}] = highestFor(spec.kind);
    for (const FieldSpec& spec : weaponFields())
        if (highestFor(spec.kind) >= 0) expected[{RuleForm::Weapons, spec.name}] = highestFor(spec.kind);

    std::map<std::pair<RuleForm, std::string_view>, double> actual;
    for (const NumericRule& rule : numericRules()) {
        EXPECT_TRUE(actual.emplace(std::pair{rule.form, rule.field}, rule.highest).second) << rule.field;
        EXPECT_FALSE(rule.title.empty());
        EXPECT_FALSE(rule.text.empty());
    }
    EXPECT_EQ(actual, expected);
    EXPECT_EQ(numericRules().size(), 40u);
    EXPECT_EQ(findNumericRule(RuleForm::Weapons, "ABT"), nullptr);
}

TEST_F(NumericRuleTest, DefaultsAndTheStartRunNoRule) { EXPECT_TRUE(platform.messages.empty()); }

TEST_F(NumericRuleTest, TextsWithoutALeadingNumberOutOfRangePassAndStay) {
    for (const char* text : {"abc", "-", "1x", "0.5", "1", "0", " 1 ", "&H1", "1e0", "0e9"}) {
        Field& field = main("FPUBLIC");
        field.setText(text);
        EXPECT_EQ(field.text(), text);
        field.setText("");
    }
    EXPECT_TRUE(platform.messages.empty());
}

TEST_F(NumericRuleTest, OutOfRangeOnTheMainFormShowsItsMessageOnceAndEmptiesTheField) {
    for (const char* text : {"2x", "1.5", "-1", "-0.5", "&H2", "1e400", "-1e400"}) {
        platform.messages.clear();
        main("FPUBLIC").setText(text);
        EXPECT_EQ(main("FPUBLIC").text(), "") << text;
        ASSERT_EQ(platform.messages.size(), 1u) << text;
        const MessageBoxRequest& box = platform.messages[0];
        EXPECT_EQ(box.title, "Public, Off or On");
        EXPECT_EQ(box.text, "Must be 0 or 1");
        EXPECT_EQ(box.buttons, MessageButtons::Ok);
        EXPECT_EQ(box.icon, MessageIcon::None);
        main("FPUBLIC").setText("1");
    }
}

TEST_F(NumericRuleTest, EmptyingAFieldBringsNoMessageAndTheSameTextRunsNothing) {
    main("FDM").setText("");
    main("FDM").setText("");
    main("FDM").setText("1");
    main("FDM").setText("1");
    EXPECT_TRUE(platform.messages.empty());
}

TEST_F(NumericRuleTest, HookColourAllowsZeroToEightUnderItsOddTitle) {
    main("FHC1").setText("");
    type(main("FHC1"), "1");
    EXPECT_TRUE(platform.messages.empty());
    type(main("FHC1"), "0");
    EXPECT_EQ(main("FHC1").text(), "");
    EXPECT_EQ(titles(), std::vector<std::string>{"Laser Grapple ColorAllow, 1 - 8"});
    EXPECT_EQ(platform.messages[0].text, "Must be 0 - 8");

    main("FHC1").setText("8");
    main("FHC1").setText("0");
    EXPECT_EQ(platform.messages.size(), 1u);
    main("FHC1").setText("9");
    EXPECT_EQ(platform.messages.size(), 2u);
}

TEST_F(NumericRuleTest, VooshModeShowsTitleAndTextTheOtherWayRound) {
    main("VM").setText("9");
    EXPECT_TRUE(platform.messages.empty());
    main("VM").setText("10");
    ASSERT_EQ(platform.messages.size(), 1u);
    EXPECT_EQ(platform.messages[0].title, "Must be 0 - 9");
    EXPECT_EQ(platform.messages[0].text, "One Weapon Voosh-Mode 0 - Off, check other possible values by the text");
    EXPECT_EQ(main("VM").text(), "");
}

TEST_F(NumericRuleTest, WeaponSwitchKeepsABadValueAndWarnsAtEveryKeystrokeUntilDeleted) {
    Field& field = weapons("DL1");
    field.setText("");
    type(field, "2");
    EXPECT_EQ(field.text(), "2");
    type(field, "3");
    EXPECT_EQ(field.text(), "23");
    field.setText("2");
    field.setText("");
    EXPECT_EQ(titles(), std::vector<std::string>(3, "Damage Location, Off or On"));

    weapons("FDD1").setText("5");
    weapons("FPEX").setText("-1");
    EXPECT_EQ(weapons("FDD1").text(), "5");
    EXPECT_EQ(weapons("FPEX").text(), "-1");
    EXPECT_EQ(platform.messages.at(3).title, "Display Damage Location, Off or On");
    EXPECT_EQ(platform.messages.at(4).title, "Particle Explosions, Off or On");
}

TEST_F(NumericRuleTest, OnlyTheRuleFieldsAreGuarded) {
    // ABT of the main form is the bot chat switch; ABT of the flags dialog is a total and takes anything.
    program.Form1.field("ABT").setText("99");
    main("FPORT").setText("-5");
    main("FMC").setText("1000");
    weapons("FSSWT").setText("abc");
    EXPECT_TRUE(platform.messages.empty());
    main("ABT").setText("99");
    EXPECT_EQ(titles(), std::vector<std::string>{"Anti-Bot Talk, Off or On"});
    EXPECT_EQ(program.state.ConfigSaved, 0);
}

TEST_F(NumericRuleTest, EveryRuleSpeaksWithItsOwnWords) {
    for (const NumericRule& rule : numericRules()) {
        platform.messages.clear();
        Field& field = ruleForm(program, rule.form).field(rule.field);
        field.setText("");
        field.setText(std::to_string(static_cast<int>(rule.highest)));
        field.setText("99");
        ASSERT_EQ(platform.messages.size(), 1u) << rule.field;
        EXPECT_EQ(platform.messages[0].title, rule.title);
        EXPECT_EQ(platform.messages[0].text, rule.text);
        EXPECT_EQ(field.text(), rule.form == RuleForm::Main ? "" : "99");
    }
}
