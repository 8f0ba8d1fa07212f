#include "frame/catalogue.h"
#include "frame/field.h"
#include "frame/program.h"
#include "support/fake_platform.h"

#include <gtest/gtest.h>

#include <tuple>

using namespace ks;

TEST(FieldModel, ViewsHearBeforeTheChangeHandlerAndOnlyRealChangesRunEither) {
    Form form("frmTest");
    Field& field = form.addField("F1", "key", "1", "Label", "Tip");
    std::vector<std::string> events;
    field.addView([&] { events.push_back("view " + field.text()); });
    field.onChange([&] {
        events.push_back("change " + field.text());
        if (field.text() == "bad") field.setText(""); // a handler may empty its own field
    });
    field.onValidate([&] { events.push_back("validate"); });
    for (const char* text : {"1", "2", "2", "bad"})
        field.setText(text);
    field.validate();
    EXPECT_EQ(events, (std::vector<std::string>{"view 2", "change 2", "view bad", "change bad", "view ", "change ",
                                                "validate"}));
    EXPECT_THROW(form.field("nope"), std::out_of_range);
    CheckBox& box = form.addCheckBox("Check1", "Caption", "", 1);
    int clicks = 0;
    box.onClick([&] { ++clicks; });
    for (int state : {1, 0, 0})
        box.setState(state);
    EXPECT_EQ(clicks, 1);
}

TEST(Catalogue, FreshFormsHaveYellowSentinelsStartTotalsAndSameNamedFieldsApart) {
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
    // Each group starts at the sum of its members that start on.
    for (const FlagGroup& group : flagGroups()) {
        long sum = 0;
        for (const FlagMember& member : group.members)
            sum += member.startsOn ? member.bit : 0;
        EXPECT_EQ(program.Form1.field(group.total).text(), std::to_string(sum)) << group.total;
    }
    EXPECT_EQ(program.Form2.field("FGD").tag(), "g_damage");
    program.Form1.field("ABT").setText("7");
    EXPECT_EQ(program.frmMain.field("ABT").text(), "1");
}

TEST(Frame, SplitRoutinesCutAtTheLastSeparatorOfTheStyle) {
    test::FakePlatform platform;
    Program windows(platform, PathStyle::Windows), linux(platform, PathStyle::Linux);
    using Row = std::tuple<Program*, const char*, const char*, const char*>; // program, path, directory, file
    for (const auto& [program, path, directory, file] :
         {Row{&windows, "C:\\KS\\kslaunch.exe", "C:\\KS\\", "kslaunch.exe"}, Row{&windows, "plain", "", "plain"},
          Row{&windows, "C:\\", "C:\\", ""}, Row{&windows, "", "", ""},
          Row{&linux, "/opt/ks/server.cfg", "/opt/ks/", "server.cfg"}}) {
        program->state.SplitPath = path;
        program->SplitDirectory();
        EXPECT_EQ(program->state.SplitResult, directory) << path;
        program->SplitFileName();
        EXPECT_EQ(program->state.SplitResult, file) << path;
    }
}
