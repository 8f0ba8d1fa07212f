#include "frame/field.h"
#include "frame/path_style.h"

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
    EXPECT_EQ(form.findField("nope"), nullptr);
    CheckBox& box = form.addCheckBox("Check1", "Caption", "", 1);
    int clicks = 0;
    box.onClick([&] { ++clicks; });
    for (int state : {1, 0, 0})
        box.setState(state);
    EXPECT_EQ(clicks, 1);
}

TEST(Paths, DirectoryAndFileNameAreCutAtTheLastSeparatorOfTheStyle) {
    using Row = std::tuple<PathStyle, const char*, const char*, const char*>; // style, path, directory, file
    for (const auto& [style, path, directory, file] :
         {Row{PathStyle::Windows, "C:\\KS\\kslaunch.exe", "C:\\KS\\", "kslaunch.exe"},
          Row{PathStyle::Windows, "plain", "", "plain"}, Row{PathStyle::Windows, "C:\\", "C:\\", ""},
          Row{PathStyle::Windows, "", "", ""}, Row{PathStyle::Linux, "/opt/ks/server.cfg", "/opt/ks/", "server.cfg"},
          Row{PathStyle::Linux, "C:\\KS\\x.cfg", "", "C:\\KS\\x.cfg"}}) {
        EXPECT_EQ(directoryPart(style, path), directory) << path;
        EXPECT_EQ(fileNamePart(style, path), file) << path;
    }
}
