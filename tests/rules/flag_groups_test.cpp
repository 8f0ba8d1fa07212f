#include "config/writer.h"
#include "frame/catalogue.h"
#include "rules_fixture.h"

using namespace ks;

TEST_F(RulesTest, EachMemberSetsItsBitAndTheTotalFollowsAndReturnsWhenClickedBack) {
    std::vector<std::string> totals;
    for (const FlagGroup& group : flagGroups())
        totals.push_back(flags(group.total).text());
    EXPECT_EQ(totals, (std::vector<std::string>{"0", "0", "0", "0", "0", "80", "31", "0"}));
    for (const FlagGroup& group : flagGroups()) {
        for (const FlagMember& member : group.members) {
            const std::string item = flags(member.item).text(), total = flags(group.total).text();
            check(member.check).setState(1 - check(member.check).state());
            const bool on = check(member.check).state() == 1;
            EXPECT_EQ(flags(member.item).text(), on ? std::to_string(member.bit) : "0") << member.check;
            EXPECT_EQ(std::stod(flags(group.total).text()), std::stod(total) + (on ? 1 : -1) * member.bit);
            check(member.check).setState(1 - check(member.check).state());
            EXPECT_EQ(flags(member.item).text() + " " + flags(group.total).text(), item + " " + total);
        }
    }
    EXPECT_TRUE(platform.messages.empty());
    EXPECT_TRUE(platform.sounds.empty());
}

TEST_F(RulesTest, DmFlagsAddUpBeyondSixteenBits) {
    for (const FlagMember& member : flagGroups()[5].members)
        check(member.check).setState(1);
    EXPECT_EQ(flags("DMFLAGT").text(), "983039");
    for (const FlagMember& member : flagGroups()[5].members)
        check(member.check).setState(0);
    check("Check62").setState(1);
    EXPECT_EQ(flags("DMFLAGT").text(), "32768");
    check("Check62").setState(0);
    check("Check63").setState(1);
    EXPECT_EQ(flags("DMFLAGT").text(), "131072");
}

TEST_F(RulesTest, TypedItemValuesEnterTheSumAtTheNextClickInTheirGroupUnrounded) {
    flags("AB1").setText("7");
    check("Check71").setState(1); // another group
    EXPECT_EQ(flags("ABT").text(), "0");
    check("Check80").setState(1);
    EXPECT_EQ(flags("ABT").text(), "9");
    check("Check79").setState(1);
    EXPECT_EQ(flags("AB1").text() + " " + flags("ABT").text(), "1 3");

    flags("ABT").setText("1000");
    flags("AB3").setText("1.5");
    flags("AB4").setText("abc");
    flags("AB5").setText("2 0x");
    check("Check84").setState(1);
    EXPECT_EQ(flags("ABT").text(), "56.5");
    EXPECT_EQ(flags("AB4").text(), "abc");

    flags("RNS").setText("1e400");
    check("Check72").setState(1);
    EXPECT_EQ(flags("TRB").text(), "inf");
}

TEST_F(RulesTest, AWrittenFileHoldsTheClickedFlags) {
    check("Check57").setState(1);
    const std::string file = RenderConfig(program);
    EXPECT_NE(file.find("\r\nset dmflags 1104\r\n"), std::string::npos);
    EXPECT_NE(file.find("df_force_respawn 1024\r\n"), std::string::npos);
}
