#include "support/launcher_test.h"

#include <fstream>
#include <set>
#include <sstream>

using namespace ks;
using RulesTest = test::LauncherTest;

// Each ranged field of tests/data/ranges.txt takes its highest value in silence and refuses the next with its own
// message; a switch of the main form empties itself, one of the weapon dialog keeps the refused text. Any other
// field takes any text in silence: the flags' ABT too, though the bot chat switch shares its name.
TEST_F(RulesTest, EveryRangedFieldRefusesTheValueAboveItsBoundWithItsOwnWordsAndNoOtherFieldHasARange) {
    std::ifstream table(std::string(KS_TEST_DATA) + "/ranges.txt");
    std::set<std::string> ranged;
    for (std::string line; std::getline(table, line);) {
        if (line.empty() || line[0] == '#') continue;
        std::istringstream row(line);
        std::string form, name, message;
        int highest = 0;
        row >> form >> name >> highest >> std::ws;
        std::getline(row, message);
        ranged.insert(form + "." + name);
        Field& field = form == "main" ? main(name) : weapons(name);
        platform.messages.clear();
        field.setText(std::to_string(highest));
        field.setText(std::to_string(highest + 1));
        EXPECT_EQ(shown(), std::vector<std::string>{message}) << name;
        EXPECT_EQ(field.text(), form == "main" ? "" : std::to_string(highest + 1)) << name;
    }
    std::size_t others = 0;
    for (const auto& [id, form] : {std::pair{FormId::Main, "main"}, {FormId::Weapons, "weapons"}, {FormId::Flags, ""}})
        for (const auto& field : program.form(id).fields()) {
            if (ranged.contains(form + ("." + field->name())) || field->name() == "IP") continue;
            platform.messages.clear();
            field->setText("-12345");
            EXPECT_TRUE(platform.messages.empty()) << field->name();
            ++others;
        }
    EXPECT_GT(others, 100u);
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
    // A weapon switch keeps a refused text, so each keystroke that leaves it out of range warns again.
    platform.messages.clear();
    for (const char* text : {"2", "23", "2", ""})
        weapons("DL1").setText(text);
    EXPECT_EQ(shown(), std::vector<std::string>(3, "Damage Location, Off or On|Must be 0 or 1"));
}
