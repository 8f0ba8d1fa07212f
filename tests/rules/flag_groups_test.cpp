#include "support/launcher_test.h"

#include <map>

using namespace ks;
using RulesTest = test::LauncherTest;

TEST_F(RulesTest, EveryBoxOnGivesEachGroupItsFullMaskAndEveryBoxOffGivesZero) {
    for (const auto& box : program.form(FormId::Flags).checkBoxes())
        box->setState(1);
    const std::map<std::string, std::string> full = {{"WBT", "511"},  {"ABT", "63"},     {"WIBT", "16383"},
                                                     {"WSWT", "511"}, {"WSIT", "16383"}, {"DMFLAGT", "983039"},
                                                     {"BOTT", "31"},  {"TRB", "511"}};
    for (const auto& [total, value] : full)
        EXPECT_EQ(flags(total).text(), value) << total;
    EXPECT_EQ(flags("DMFLAG19").text() + " " + flags("WSI13").text() + " " + flags("RND").text(), "524288 4 256");
    for (const auto& box : program.form(FormId::Flags).checkBoxes())
        box->setState(0);
    for (const auto& [total, value] : full)
        EXPECT_EQ(flags(total).text(), "0") << total;
    EXPECT_EQ(flags("DMFLAG19").text(), "0");
    EXPECT_TRUE(platform.messages.empty());
}

TEST_F(RulesTest, TypedItemValuesEnterTheSumAtTheNextClickInTheirGroupUnrounded) {
    flags("AB1").setText("7");
    check("Check71").setState(1); // another group
    EXPECT_EQ(flags("ABT").text(), "0");
    check("Check80").setState(1);
    EXPECT_EQ(flags("ABT").text(), "9"); // a sum, not an OR
    check("Check79").setState(1);
    EXPECT_EQ(flags("AB1").text() + " " + flags("ABT").text(), "1 3");

    flags("AB3").setText("1.5");
    flags("AB4").setText("abc");
    flags("AB5").setText("2 0x");
    check("Check84").setState(1);
    EXPECT_EQ(flags("ABT").text(), "56.5");
}
