#include "support/launcher_test.h"

using namespace ks;
using RulesTest = test::LauncherTest;

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
