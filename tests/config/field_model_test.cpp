#include "frame/catalogue.h"
#include "frame/field.h"
#include "frame/program.h"
#include "support/fake_platform.h"

#include <gtest/gtest.h>

#include <set>

using namespace ks;

TEST(FieldModel, DifferentTextNotifiesViewsBeforeChangeHandlerAndSameTextRunsNothing) {
    Form form("frmTest");
    Field& field = form.addField("F1", "key", "1", "Label", "Tip");
    std::vector<std::string> events;
    field.addView([&] { events.push_back("view " + field.text()); });
    field.onChange([&] { events.push_back("change " + field.text()); });
    int validations = 0;
    field.onValidate([&] { ++validations; });
    field.setText("1");
    EXPECT_TRUE(events.empty());
    field.setText("2");
    field.setText("2");
    EXPECT_EQ(events, (std::vector<std::string>{"view 2", "change 2"}));
    EXPECT_EQ(validations, 0);
    field.validate();
    EXPECT_EQ(validations, 1);
    EXPECT_THROW(form.field("nope"), std::out_of_range);
}

TEST(FieldModel, HandlersMayEmptyTheirOwnFieldAndBoxesClickOnlyOnRealChange) {
    Form form("frmTest");
    Field& field = form.addField("F1", "key", "", "", "");
    int changes = 0, clicks = 0;
    field.onChange([&] {
        ++changes;
        if (field.text() == "bad") field.setText("");
    });
    field.setText("bad");
    EXPECT_EQ(field.text(), "");
    EXPECT_EQ(changes, 2);
    CheckBox& box = form.addCheckBox("Check1", "Caption", "", 1);
    box.onClick([&] { ++clicks; });
    box.setState(1);
    box.setState(0);
    box.setState(0);
    EXPECT_EQ(clicks, 1);
}

TEST(Catalogue, FreshFormsHaveYellowSentinelsAndSameNamedFieldsStayApart) {
    test::FakePlatform platform;
    Program program(platform);
    for (const char* name : {"FFile", "FGD", "QDIR"}) {
        const Field& field = program.frmMain.field(name);
        EXPECT_EQ(field.text(), "NONE");
        EXPECT_EQ(field.backColour(), kPaleYellow);
        EXPECT_FALSE(field.enabled());
    }
    EXPECT_EQ(program.frmMain.tabs().current(), 2);
    EXPECT_EQ(program.Form1.tabs().current(), 1);
    EXPECT_EQ(program.Form2.field("FGD").tag(), "g_damage");
    program.Form1.field("ABT").setText("7");
    EXPECT_EQ(program.frmMain.field("ABT").text(), "1");
}

TEST(Catalogue, FlagGroupsHave85MembersWithUniqueNamesAndConsistentDefaults) {
    std::set<std::string_view> checks, items, keys;
    std::size_t members = 0;
    for (const FlagGroup& group : flagGroups()) {
        long sum = 0;
        for (const FlagMember& member : group.members) {
            ++members;
            EXPECT_TRUE(checks.insert(member.check).second) << member.check;
            EXPECT_TRUE(items.insert(member.item).second) << member.item;
            EXPECT_TRUE(keys.insert(member.key).second) << member.key;
            if (member.startsOn) sum += member.bit;
        }
        EXPECT_EQ(std::to_string(sum), group.defaultTotal) << group.total;
    }
    EXPECT_EQ(members, 85u);
    test::FakePlatform platform;
    Program program(platform);
    EXPECT_EQ(program.Form1.field("DMFLAG7").text(), "64");
    for (const auto& [name, enabled] :
         std::vector<std::pair<const char*, bool>>{{"WB1", false}, {"AB1", true}, {"TRB", false}, {"RND", true}})
        EXPECT_EQ(program.Form1.field(name).enabled(), enabled) << name;
}

TEST(Frame, SplitRoutinesCutAtTheLastSeparatorOfTheStyle) {
    test::FakePlatform platform;
    Program windows(platform, PathStyle::Windows), linux(platform, PathStyle::Linux);
    struct Row {
        Program& program;
        const char* path;
        const char* directory;
        const char* file;
    };
    for (const Row& row : {Row{windows, "C:\\KS\\kslaunch.exe", "C:\\KS\\", "kslaunch.exe"},
                           Row{windows, "plain", "", "plain"}, Row{windows, "C:\\", "C:\\", ""},
                           Row{windows, "", "", ""}, Row{linux, "/opt/ks/server.cfg", "/opt/ks/", "server.cfg"}}) {
        row.program.state.SplitPath = row.path;
        row.program.SplitDirectory();
        EXPECT_EQ(row.program.state.SplitResult, row.directory) << row.path;
        row.program.SplitFileName();
        EXPECT_EQ(row.program.state.SplitResult, row.file) << row.path;
    }
}
