#include "frame/catalogue.h"
#include "frame/field.h"
#include "frame/program.h"
#include "frame/startup.h"
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

    field.setText("1");
    EXPECT_TRUE(events.empty());
    field.setText("2");
    EXPECT_EQ(events, (std::vector<std::string>{"view 2", "change 2"}));
    field.setText("2");
    EXPECT_EQ(events.size(), 2u);
}

TEST(FieldModel, ChangeHandlerMayEmptyItsOwnFieldWithoutLooping) {
    Form form("frmTest");
    Field& field = form.addField("F1", "key", "", "", "");
    int changes = 0;
    field.onChange([&] {
        ++changes;
        if (field.text() == "bad") field.setText("");
    });
    field.setText("bad");
    EXPECT_EQ(field.text(), "");
    EXPECT_EQ(changes, 2);
}

TEST(FieldModel, CheckBoxClicksOnlyOnRealChangeAndValidateOnlyWhenAsked) {
    Form form("frmTest");
    CheckBox& box = form.addCheckBox("Check1", "Caption", "", 1);
    Field& field = form.addField("F1", "key", "x", "", "");
    int clicks = 0, validations = 0;
    box.onClick([&] { ++clicks; });
    field.onValidate([&] { ++validations; });
    box.setState(1);
    box.setState(0);
    box.setState(0);
    field.setText("y");
    EXPECT_EQ(clicks, 1);
    EXPECT_EQ(validations, 0);
    field.validate();
    EXPECT_EQ(validations, 1);
}

TEST(FieldModel, UnknownNameIsAClearErrorNotACrash) {
    Form form("frmTest");
    EXPECT_EQ(form.findField("nope"), nullptr);
    try {
        form.field("nope");
        FAIL();
    } catch (const std::out_of_range& error) {
        EXPECT_STREQ(error.what(), "frmTest has no field nope");
    }
}

TEST(Catalogue, FreshFormsHoldTheDefaultsAndTheSentinelsAreYellowAndReadOnly) {
    test::FakePlatform platform;
    Program program(platform);
    for (const FieldSpec& row : mainFields())
        EXPECT_EQ(program.frmMain.field(row.name).text(), row.defaultText) << row.name;
    EXPECT_EQ(program.frmMain.fields().size(), 83u);
    EXPECT_EQ(program.frmMain.field("IP").text(), "");
    EXPECT_EQ(program.frmMain.field("FMS3").text(), "q2master.example.net 192.0.2.10");
    for (const char* name : {"FFile", "FGD", "QDIR"}) {
        const Field& field = program.frmMain.field(name);
        EXPECT_EQ(field.text(), "NONE");
        EXPECT_EQ(field.backColour(), kPaleYellow);
        EXPECT_FALSE(field.enabled());
    }
    EXPECT_EQ(program.frmMain.tabs().current(), 2);
    EXPECT_EQ(program.Form1.tabs().current(), 1);
    EXPECT_EQ(program.Form2.fields().size(), 27u);
    EXPECT_EQ(program.Form2.field("FSSWT").text(), "17");
}

TEST(Catalogue, NamesRepeatAcrossFormsButAreDifferentFields) {
    test::FakePlatform platform;
    Program program(platform);
    EXPECT_EQ(program.frmMain.field("FGD").tag(), "game_dir");
    EXPECT_EQ(program.Form2.field("FGD").tag(), "g_damage");
    EXPECT_EQ(program.frmMain.field("ABT").tag(), "bot_chat");
    EXPECT_EQ(program.Form1.field("ABT").tag(), "ban_ammo");
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
    EXPECT_EQ(program.Form1.check("Check51").state(), 1);
    EXPECT_EQ(program.Form1.field("DMFLAGT").text(), "80");
    EXPECT_EQ(program.Form1.field("BOTT").text(), "31");
    EXPECT_EQ(program.Form1.field("DMFLAG7").text(), "64");
    EXPECT_FALSE(program.Form1.field("WB1").enabled());
    EXPECT_TRUE(program.Form1.field("AB1").enabled());
    EXPECT_TRUE(program.Form1.field("ABT").enabled());
    EXPECT_FALSE(program.Form1.field("TRB").enabled());
    EXPECT_TRUE(program.Form1.field("RND").enabled());
}

TEST(Frame, SplitRoutinesCutAtTheLastSeparatorOfTheStyle) {
    test::FakePlatform platform;
    Program windows(platform, PathStyle::Windows);
    struct Row {
        const char* path;
        const char* directory;
        const char* file;
    };
    for (const Row& row : {Row{"C:\\KS\\kslaunch.exe", "C:\\KS\\", "kslaunch.exe"}, Row{"plain", "", "plain"},
                           Row{"C:\\", "C:\\", ""}, Row{"", "", ""}}) {
        windows.state.SplitPath = row.path;
        windows.SplitDirectory();
        EXPECT_EQ(windows.state.SplitResult, row.directory) << row.path;
        windows.SplitFileName();
        EXPECT_EQ(windows.state.SplitResult, row.file) << row.path;
    }
    Program linux(platform, PathStyle::Linux);
    linux.state.SplitPath = "/opt/ks/server.cfg";
    linux.SplitDirectory();
    EXPECT_EQ(linux.state.SplitResult, "/opt/ks/");
}

TEST(Frame, CuePlaysFromTheProgramDirectoryOnlyWithASoundDevice) {
    test::FakePlatform platform;
    Program program(platform);
    ConnectHandlers(program);
    program.state.SplitResult = "/somewhere/else/";
    program.frmMain.tabs().setCurrent(0);
    EXPECT_EQ(platform.sounds, (std::vector<std::string>{"/opt/kslaunch/tab.wav"}));
    platform.soundDevices = 0;
    program.frmMain.tabs().setCurrent(1);
    EXPECT_EQ(platform.sounds.size(), 1u);
}
