#include "session/settings_by_key.h"
#include "support/launcher_test.h"

using namespace ks;
using SettingsByKey = test::LauncherTest;

namespace {

const SettingKey& setting(std::string_view key) {
    const SettingKey* found = findSettingKey(key);
    if (!found) throw std::out_of_range("no setting " + std::string(key));
    return *found;
}

std::string outcome(const AssignResult& result) {
    switch (result.outcome) {
    case AssignOutcome::Done:
        return "done";
    case AssignOutcome::Refused:
        return "refused|" + result.title + "|" + result.text;
    case AssignOutcome::NotSettable:
        return "not settable|" + result.text;
    }
    return {};
}

} // namespace

TEST_F(SettingsByKey, AValueRunsTheFieldsHandlersAsTypingAndLeavingTheFieldWould) {
    struct Case {
        std::string key, value, field, text, result;
        std::vector<std::string> shown = {};
    };
    // clang-format off
    const std::vector<Case> cases = {
        {"hostname", "My Server  ", "FHOSTN", "\"My Server\"", "done"},
        {"team1model", "male", "FTM1", "\"male\"", "done"},
        {"team2model", "", "FTM2", "\"", "done"},
        {"map", "q2dm3 ", "FSM", "q2dm3 ", "done"},
        {"hook_color", "8", "FHC1", "8", "done"},
        {"deathmatch", "5", "FDM", "", "refused|DeathMatch, Off or On|Must be 0 or 1", {"DeathMatch, Off or On|Must be 0 or 1"}},
        {"qdir", "/srv/q2", "QDIR", "/srv/q2", "done"},
        {"hostname", "two\nlines", "FHOSTN", "\"My Server\"", "refused|hostname|a value cannot hold a line break"},
    };
    // clang-format on
    for (const Case& c : cases) {
        platform.messages.clear();
        EXPECT_EQ(outcome(assignSetting(program, setting(c.key), c.value)), c.result) << c.key;
        EXPECT_EQ(main(c.field).text(), c.text) << c.key;
        EXPECT_EQ(shown(), c.shown) << c.key;
    }
    EXPECT_EQ(main("QDIR").backColour(), kWhite);
    // A switch of the weapon dialog keeps the refused text, as the dialog does.
    EXPECT_EQ(outcome(assignSetting(program, setting("damage_locate"), "2")),
              "refused|Damage Location, Off or On|Must be 0 or 1");
    EXPECT_EQ(weapons("DL1").text(), "2");
    EXPECT_EQ(outcome(assignSetting(program, setting("g_damage"), "99")), "done");
    EXPECT_EQ(weapons("FGD").text(), "99");
    EXPECT_EQ(main("FGD").text(), "NONE");
}

TEST_F(SettingsByKey, AFlagTakesOneOrZeroAndItsTotalFollowsButIsNotSetItself) {
    EXPECT_EQ(outcome(assignSetting(program, setting("df_force_respawn"), "1")), "done");
    EXPECT_EQ(check("Check57").state(), 1);
    EXPECT_EQ(flags("DMFLAG11").text(), "1024");
    EXPECT_EQ(flags("DMFLAGT").text(), "1104");
    EXPECT_EQ(outcome(assignSetting(program, setting("df_force_respawn"), "on")),
              "refused|df_force_respawn|takes 1 (on) or 0 (off)");
    EXPECT_EQ(check("Check57").state(), 1);
    EXPECT_EQ(outcome(assignSetting(program, setting("b_ban"), "0")), "done");
    EXPECT_EQ(flags("BOTT").text(), "15");
    EXPECT_EQ(outcome(assignSetting(program, setting("sv_botdetection"), "31")),
              "not settable|sv_botdetection adds up its flags (b_log ... b_ban) and follows them: set a flag to 1 or "
              "0 instead, as in b_log=1");
    EXPECT_EQ(flags("BOTT").text(), "15");
}

TEST_F(SettingsByKey, TheAddressIsTestedAndAnEmptyOneTurnsUseDefaultBackOn) {
    EXPECT_EQ(outcome(assignSetting(program, setting("IP"), "10.0.0.1")), "done");
    EXPECT_EQ(check("ipCheck").state(), 0);
    EXPECT_EQ(main("IP").text(), "10.0.0.1");
    EXPECT_EQ(outcome(assignSetting(program, setting("IP"), "")), "done");
    EXPECT_EQ(check("ipCheck").state(), 1);
    EXPECT_EQ(main("IP").text(), "");
    // The address test refuses some addresses with its message and others without one.
    EXPECT_EQ(outcome(assignSetting(program, setting("IP"), "10.0.0.256")),
              "refused|IP Validator|10.0.0.256 is Invalid");
    EXPECT_EQ(shown(), std::vector<std::string>{});
    EXPECT_EQ(outcome(assignSetting(program, setting("IP"), " 10.0.0 ")), "refused|IP Validator|10.0.0 is Invalid");
    EXPECT_EQ(shown(), std::vector<std::string>{"IP Validator|10.0.0 is Invalid"});
}

TEST(SettingKeys, TheNearestKeysAreThoseFewestEditsAway) {
    using Keys = std::vector<std::string_view>;
    EXPECT_EQ(nearestSettingKeys("fraglimt", 3, 2), Keys{"fraglimit"});
    EXPECT_EQ(nearestSettingKeys("allow_downloads", 3, 5), (Keys{"allow_download", "allow_download_maps"}));
    EXPECT_EQ(nearestSettingKeys("sg_kik", 3, 2), (Keys{"sg_kick", "ssg_kick", "mg_kick"}));
    EXPECT_EQ(nearestSettingKeys("xyz", 3, 2), Keys{});
}
