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

// Each row in turn on one launcher: the outcome, what changed on the three forms and the messages shown.
TEST_F(SettingsByKey, AValueRunsTheHandlersAsTypingAndLeavingTheFieldWould) {
    struct Case {
        std::string assignment, result;
        test::Launcher::Snapshot changed;
        std::vector<std::string> shown = {};
    };
    const std::string dm = "DeathMatch, Off or On|Must be 0 or 1", dl = "Damage Location, Off or On|Must be 0 or 1";
    const std::vector<Case> cases = {
        {"hostname=My Server  ", "done", {{"frmMain.FHOSTN", "\"My Server\""}}},
        {"team1model=male", "done", {{"frmMain.FTM1", "\"male\""}}},
        // The single quote of an empty model would take the rest of its line along on the server.
        {"team2model=", "refused|team2model|a double quote in the value is never closed", {{"frmMain.FTM2", "\""}}},
        {"map=q2dm3 ", "done", {{"frmMain.FSM", "q2dm3 "}}},
        {"hook_color=8", "done", {{"frmMain.FHC1", "8"}}},
        // The server reads a number where it stands: a word or a sign is refused, whether a rule passes it or not.
        {"port=abc", "refused|port|must be a number", {{"frmMain.FPORT", "abc"}}},
        {"maxclients=-5", "refused|maxclients|must be a number", {{"frmMain.FMC", "-5"}}},
        {"deathmatch=1x", "refused|deathmatch|must be a number", {{"frmMain.FDM", "1x"}}},
        {"sa_shells=0.5", "done", {{"Form1.SAS", "0.5"}}},
        {"deathmatch=5", "refused|" + dm, {{"frmMain.FDM", ""}}, {dm}},
        {"qdir=/srv/q2", "done", {{"frmMain.QDIR", "/srv/q2"}}},
        {"hostname=two\nlines", "refused|hostname|a value cannot hold a line break", {}},
        // A switch of the weapon dialog keeps the refused text, as the dialog does; its FGD is not the main one.
        {"damage_locate=2", "refused|" + dl, {{"Form2.DL1", "2"}}, {dl}},
        {"g_damage=99", "done", {{"Form2.FGD", "99"}}},
        // A flag takes 1 or 0 and its total follows, but a total is not set itself.
        {"df_force_respawn=1", "done", {{"Form1.Check57", "1"}, {"Form1.DMFLAG11", "1024"}, {"Form1.DMFLAGT", "1104"}}},
        {"df_force_respawn=on", "refused|df_force_respawn|takes 1 (on) or 0 (off)", {}},
        {"b_ban=0", "done", {{"Form1.Check69", "0"}, {"Form1.BOT5", "0"}, {"Form1.BOTT", "15"}}},
        {"sv_botdetection=31",
         "not settable|sv_botdetection adds up its flags (b_log ... b_ban) and follows them: "
         "set a flag to 1 or 0 instead, as in b_log=1",
         {}},
        // A refused address stays as typed, some said so by a message; an empty one turns Use Default back on.
        {"IP=10.0.0.1", "done", {{"frmMain.ipCheck", "0"}, {"frmMain.IP", "10.0.0.1"}}},
        {"IP=10.0.0.256", "refused|IP Validator|10.0.0.256 is Invalid", {{"frmMain.IP", "10.0.0.256"}}},
        {"IP= 10.0.0 ",
         "refused|IP Validator|10.0.0 is Invalid",
         {{"frmMain.IP", " 10.0.0 "}},
         {"IP Validator|10.0.0 is Invalid"}},
        {"IP=", "done", {{"frmMain.ipCheck", "1"}, {"frmMain.IP", ""}}},
    };
    for (const Case& c : cases) {
        platform.messages.clear();
        const std::size_t is = c.assignment.find('=');
        const SettingKey& key = setting(c.assignment.substr(0, is));
        std::string result;
        EXPECT_EQ(changedBy([&] { result = outcome(assignSetting(program, key, c.assignment.substr(is + 1))); }),
                  c.changed)
            << c.assignment;
        EXPECT_EQ(result, c.result) << c.assignment;
        EXPECT_EQ(shown(), c.shown) << c.assignment;
    }
}

TEST(SettingKeys, TheNearestKeysAreThoseFewestEditsAway) {
    using Keys = std::vector<std::string_view>;
    EXPECT_EQ(nearestSettingKeys("fraglimt", 3, 2), Keys{"fraglimit"});
    EXPECT_EQ(nearestSettingKeys("allow_downloads", 3, 5), (Keys{"allow_download", "allow_download_maps"}));
    EXPECT_EQ(nearestSettingKeys("sg_kik", 3, 2), (Keys{"sg_kick", "ssg_kick", "mg_kick"}));
    EXPECT_EQ(nearestSettingKeys("xyz", 3, 2), Keys{});
}
