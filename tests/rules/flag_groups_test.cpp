#include "config/writer.h"
#include "frame/catalogue.h"
#include "support/launcher.h"

using namespace ks;
using RulesTest = test::LauncherTest;

TEST_F(RulesTest, EachMemberSetsItsBitAndTheTotalFollowsAndReturnsWhenClickedBack) {
    for (const FlagGroup& group : flagGroups())
        for (const FlagMember& member : group.members) {
            const std::string item = flags(member.item).text(), total = flags(group.total).text();
            CheckBox& box = check(member.check);
            box.setState(1 - box.state());
            const bool on = box.state() == 1;
            EXPECT_EQ(flags(member.item).text(), on ? std::to_string(member.bit) : "0") << member.check;
            EXPECT_EQ(std::stod(flags(group.total).text()), std::stod(total) + (on ? 1 : -1) * member.bit);
            box.setState(1 - box.state());
            EXPECT_EQ(flags(member.item).text() + " " + flags(group.total).text(), item + " " + total);
        }
    EXPECT_TRUE(platform.messages.empty());
}

TEST_F(RulesTest, DmFlagsAddUpBeyondSixteenBitsAndAWrittenFileHoldsWhatWasClicked) {
    check("Check57").setState(1);
    EXPECT_NE(RenderConfig(program).find("\r\nset dmflags 1104\r\n"), std::string::npos);
    for (const FlagMember& member : flagGroups()[5].members)
        check(member.check).setState(1);
    EXPECT_EQ(flags("DMFLAGT").text(), "983039");
    for (const FlagMember& member : flagGroups()[5].members)
        check(member.check).setState(0);
    for (const auto& [name, total] : {std::pair{"Check62", "32768"}, {"Check63", "131072"}}) {
        check(name).setState(1);
        EXPECT_EQ(flags("DMFLAGT").text(), total);
        check(name).setState(0);
    }
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
