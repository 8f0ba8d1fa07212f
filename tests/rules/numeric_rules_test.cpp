#include "frame/catalogue.h"
#include "rules/numeric_rules.h"
#include "rules_fixture.h"

#include <map>

using namespace ks;

TEST(NumericRuleTable, HasOneRuleForEachRangedFieldOfTheCatalogueAndNoOther) {
    const std::map<ValueKind, double> highest{
        {ValueKind::Switch, 1}, {ValueKind::Number0to8, 8}, {ValueKind::Number0to9, 9}};
    std::map<std::pair<RuleForm, std::string_view>, double> expected, actual;
    for (const auto& [form, specs] : {std::pair{RuleForm::Main, mainFields()}, {RuleForm::Weapons, weaponFields()}})
        for (const FieldSpec& row : specs)
            if (highest.contains(row.kind)) expected[{form, row.name}] = highest.at(row.kind);
    for (const NumericRule& rule : numericRules())
        EXPECT_TRUE(actual.emplace(std::pair{rule.form, rule.field}, rule.highest).second) << rule.field;
    EXPECT_EQ(actual, expected);
    EXPECT_EQ(actual.size(), 40u);
}

TEST_F(RulesTest, MainSwitchTakesAnyLeadingNumberFromZeroToOneAndEmptiesItselfOtherwise) {
    for (const char* text : {"", "abc", "-", "1x", "0.5", "1", " 1 ", "&H1", "0e9"}) {
        main("FPUBLIC").setText(text);
        EXPECT_EQ(main("FPUBLIC").text(), text);
    }
    EXPECT_TRUE(platform.messages.empty()) << "no rule runs at the start nor for texts in range";
    for (const char* text : {"2x", "1.5", "-1", "-0.5", "1e400", "-1e400"}) {
        main("FPUBLIC").setText(text);
        EXPECT_EQ(main("FPUBLIC").text(), "") << text;
    }
    ASSERT_EQ(titles(), std::vector<std::string>(6, "Public, Off or On")) << "one message each, none for emptying";
    const MessageBoxRequest& box = platform.messages[0];
    EXPECT_EQ(box.text, "Must be 0 or 1");
    EXPECT_EQ(box.buttons, MessageButtons::Ok);
    EXPECT_EQ(box.icon, MessageIcon::None);
}

TEST_F(RulesTest, HookColourAndVooshModeHaveTheirWiderRangesAndOddWords) {
    main("FHC1").setText("");
    main("FHC1").setText("1");
    main("FHC1").setText("10");
    EXPECT_EQ(main("FHC1").text(), "");
    main("FHC1").setText("8");
    main("VM").setText("9");
    main("VM").setText("10");
    EXPECT_EQ(main("VM").text(), "");
    ASSERT_EQ(titles(), (std::vector<std::string>{"Laser Grapple ColorAllow, 1 - 8", "Must be 0 - 9"}));
    EXPECT_EQ(platform.messages[0].text, "Must be 0 - 8");
    EXPECT_EQ(platform.messages[1].text, "One Weapon Voosh-Mode 0 - Off, check other possible values by the text");
}

TEST_F(RulesTest, WeaponSwitchKeepsABadValueAndWarnsAtEveryKeystrokeUntilDeleted) {
    for (const char* text : {"2", "23", "2", ""})
        weapons("DL1").setText(text);
    weapons("FPEX").setText("5");
    EXPECT_EQ(weapons("FPEX").text(), "5");
    EXPECT_EQ(titles(), (std::vector<std::string>{"Damage Location, Off or On", "Damage Location, Off or On",
                                                  "Damage Location, Off or On", "Particle Explosions, Off or On"}));
}

TEST_F(RulesTest, EachRuleGuardsItsOwnFieldOnlyWithItsOwnWords) {
    flags("ABT").setText("99"); // the ammo ban total shares its name with the bot chat switch
    main("FPORT").setText("-5");
    weapons("FSSWT").setText("abc");
    EXPECT_TRUE(platform.messages.empty());
    for (const NumericRule& rule : numericRules()) {
        platform.messages.clear();
        Field& field = ruleForm(program, rule.form).field(rule.field);
        field.setText(std::to_string(static_cast<int>(rule.highest)));
        field.setText("99");
        ASSERT_EQ(platform.messages.size(), 1u) << rule.field;
        EXPECT_EQ(platform.messages[0].title, rule.title);
        EXPECT_EQ(platform.messages[0].text, rule.text);
        EXPECT_EQ(field.text(), rule.form == RuleForm::Main ? "" : "99");
    }
}
