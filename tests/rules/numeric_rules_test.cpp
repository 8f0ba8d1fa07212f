#include "frame/catalogue.h"
#include "rules/numeric_rules.h"
#include "support/launcher.h"

#include <map>

using namespace ks;
using RulesTest = test::LauncherTest;

TEST_F(RulesTest, EveryRangedFieldHasOneRuleUpToItsBoundWithItsOwnWordsAndNoOtherFieldHasOne) {
    flags("ABT").setText("99"); // the ammo ban total shares its name with the bot chat switch
    main("FPORT").setText("-5");
    weapons("FSSWT").setText("abc");
    EXPECT_TRUE(platform.messages.empty());
    const std::map<ValueKind, int> highest{
        {ValueKind::Switch, 1}, {ValueKind::Number0to8, 8}, {ValueKind::Number0to9, 9}};
    std::size_t ruled = 0;
    for (const auto& [form, rows] : {std::pair{RuleForm::Main, mainFields()}, {RuleForm::Weapons, weaponFields()}})
        for (const FieldRow& row : rows) {
            if (!highest.contains(row.kind)) continue;
            ++ruled;
            const NumericRule* rule = findNumericRule(form, row.name);
            ASSERT_NE(rule, nullptr) << row.name;
            Field& field = ruleForm(program, form).field(row.name);
            platform.messages.clear();
            field.setText(std::to_string(highest.at(row.kind)));
            field.setText(std::to_string(highest.at(row.kind) + 1));
            ASSERT_EQ(platform.messages.size(), 1u) << row.name;
            EXPECT_EQ(platform.messages[0].title + "|" + platform.messages[0].text,
                      std::string(rule->title) + "|" + std::string(rule->text));
            EXPECT_EQ(field.text(), form == RuleForm::Main ? "" : std::to_string(highest.at(row.kind) + 1));
        }
    EXPECT_EQ(ruled, 40u);
    EXPECT_EQ(numericRules().size(), 40u);
}

TEST_F(RulesTest, MainSwitchTakesAnyLeadingNumberFromZeroToOneAndEmptiesItselfOtherwise) {
    for (const char* text : {"", "abc", "-", "1x", "0.5", "1", " 1 ", "&H1", "0e9"}) {
        main("FPUBLIC").setText(text);
        EXPECT_EQ(main("FPUBLIC").text(), text);
    }
    EXPECT_TRUE(platform.messages.empty()) << "no rule runs at the start nor for texts in range";
    for (const char* text : {"2x", "1.5", "-0.5", "1e400", "-1e400"}) {
        main("FPUBLIC").setText(text);
        EXPECT_EQ(main("FPUBLIC").text(), "") << text;
    }
    EXPECT_EQ(shown(), std::vector<std::string>(5, "Public, Off or On|Must be 0 or 1")) << "none for emptying";
    EXPECT_EQ(platform.messages[0].buttons, MessageButtons::Ok);
    EXPECT_EQ(platform.messages[0].icon, MessageIcon::None);
}

TEST_F(RulesTest, HookColourAndVooshModeHaveWiderRangesAndAWeaponSwitchWarnsAtEveryKeystrokeUntilEmptied) {
    for (const char* text : {"1", "10", "8"})
        main("FHC1").setText(text);
    main("VM").setText("10");
    for (const char* text : {"2", "23", "2", ""})
        weapons("DL1").setText(text);
    const std::string dl1 = "Damage Location, Off or On|Must be 0 or 1";
    EXPECT_EQ(shown(), (std::vector<std::string>{
                           "Laser Grapple ColorAllow, 1 - 8|Must be 0 - 8",
                           "Must be 0 - 9|One Weapon Voosh-Mode 0 - Off, check other possible values by the text", dl1,
                           dl1, dl1}));
}
