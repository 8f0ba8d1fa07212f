#include "support/launcher_test.h"

#include <algorithm>

using namespace ks;
using RulesTest = test::LauncherTest;

namespace {
// Every field with a range: on the main form or the weapon dialog, its name, its highest value and its message.
struct RangedField {
    bool onMain;
    const char* name;
    int highest;
    const char* title;
    const char* text = "Must be 0 or 1";
};
// clang-format off
const RangedField kRangedFields[] = {
    {true, "ABT", 1, "Anti-Bot Talk, Off or On"},
    {true, "FAD1", 1, "Allow Downloads, Off or On"},
    {true, "FAD2", 1, "Allow Map Downloads, Off or On"},
    {true, "FAD3", 1, "Allow Download of Models, Off or On"},
    {true, "FAD4", 1, "Allow Download of Players, Off or On"},
    {true, "FAD5", 1, "Allow Download of Sounds, Off or On"},
    {true, "FAF", 1, "Allow use of Flashlights, Off or On"},
    {true, "FAM", 1, "Allow, Admin Menus for Remote Operators, Off or On"},
    {true, "FAV", 1, "Allow users to vote, Off or On"},
    {true, "FBP1", 1, "Killed players Leave BackPacks, Off or On"},
    {true, "FCC1", 1, "Check for Campers, Off or On"},
    {true, "FCC5", 1, "Use Map Rotation in TXT file, Off or On"},
    {true, "FCTF", 1, "CTF off or on"},
    {true, "FDM", 1, "DeathMatch, Off or On"},
    {true, "FDS", 1, "Dedicated, Off or On"},
    {true, "FGR", 1, "Online Gamers League(OGL), Off or On"},
    {true, "FH1", 1, "Laser Grapple, Off or On"},
    {true, "FHS1", 1, "Show High Scores, Off or On"},
    {true, "FLHB", 1, "Use Laser Hyperblaster, Off or On"},
    {true, "FLO1", 1, "Allow Lights Out, Off or On"},
    {true, "FLOGF", 1, "Make Frag Stats Log, Off or On"},
    {true, "FLOGS", 1, "Frag Stats Standard Type Log, Off or On"},
    {true, "FMM", 1, "Match Play, Off or On"},
    {true, "FMR", 1, "Map Random Rotation for TXT file, Off or On"},
    {true, "FOE", 1, "Allow Random EarthQuakes, Off or On"},
    {true, "FP1", 1, "Allow Users to Protect Names, Off or On"},
    {true, "FPF1", 1, "Use Text Filter, Off or On"},
    {true, "FPS", 1, "Play Song at Connect, Off or On"},
    {true, "FPUBLIC", 1, "Public, Off or On"},
    {true, "FQWS", 1, "Quick Weapons Switching, Off or On"},
    {true, "FR", 1, "Runes, Off or On"},
    {true, "FRH1", 1, "Reset Hook on player contact, Off or On"},
    {true, "FSH", 1, "Grapple the Sky, Off or On"},
    {true, "FSI", 1, "Save Disconnected Players Info, Off or On"},
    {true, "FTEAMS", 1, "Team Play, Off or On"},
    {true, "FHC1", 8, "Laser Grapple ColorAllow, 1 - 8", "Must be 0 - 8"},
    {true, "VM", 9, "Must be 0 - 9", "One Weapon Voosh-Mode 0 - Off, check other possible values by the text"},
    {false, "DL1", 1, "Damage Location, Off or On"},
    {false, "FDD1", 1, "Display Damage Location, Off or On"},
    {false, "FPEX", 1, "Particle Explosions, Off or On"},
};
// clang-format on
} // namespace

TEST_F(RulesTest, EveryRangedFieldRefusesTheValueAboveItsBoundWithItsOwnWordsAndNoOtherFieldHasARange) {
    for (const RangedField& ranged : kRangedFields) {
        Field& field = ranged.onMain ? main(ranged.name) : weapons(ranged.name);
        platform.messages.clear();
        field.setText(std::to_string(ranged.highest));
        field.setText(std::to_string(ranged.highest + 1));
        EXPECT_EQ(shown(), std::vector<std::string>{std::string(ranged.title) + "|" + ranged.text}) << ranged.name;
        EXPECT_EQ(field.text(), ranged.onMain ? "" : std::to_string(ranged.highest + 1));
    }
    // Any other field takes any text in silence: the flags' ABT too, though the bot chat switch shares its name.
    std::size_t others = 0;
    for (const FormId form : {FormId::Main, FormId::Weapons, FormId::Flags})
        for (const auto& field : program.form(form).fields()) {
            const bool ranged = std::any_of(std::begin(kRangedFields), std::end(kRangedFields), [&](const auto& r) {
                return r.name == field->name() && r.onMain == (form == FormId::Main) && form != FormId::Flags;
            });
            if (ranged || field->name() == "IP") continue;
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
}

// A weapon switch keeps a refused text, so each keystroke that leaves it out of range warns again.
TEST_F(RulesTest, AWeaponSwitchWarnsAtEveryKeystrokeUntilEmptied) {
    for (const char* text : {"2", "23", "2", ""})
        weapons("DL1").setText(text);
    EXPECT_EQ(shown(), std::vector<std::string>(3, "Damage Location, Off or On|Must be 0 or 1"));
}
