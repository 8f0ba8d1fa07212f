#include "session/menu.h"

#include "config/file_commands.h"
#include "server/companion.h"
#include "server/launch.h"
#include "server/links.h"

namespace ks {

namespace {

constexpr MenuEntry kMenuRows[] = {
    {"mnuFile", "&File", 0},
    {"mnuFileOpen", "&Open...", 1, chooseAndOpenConfig},
    {"runquake2", "&Run this Server", 1, saveAndStartServer},
    {"mnuFileBar0", "", 1},
    {"mnuFileSave", "&Save", 1, saveConfig},
    {"mnuFileSaveAs", "Save &As...", 1, saveConfigAs},
    {"mnuFileBar1", "", 1},
    {"mnuFileExit", "E&xit", 1, exitLauncher},
    {"mnuView", "&View", 0},
    {"Bot_Detected", "bot_detected.txt", 1, nullptr, true},
    {"textfilter", "textfilter.cfg", 1, nullptr, true},
    {"help", "help.txt", 1, nullptr, true},
    {"ip_banned", "ip_banned.txt", 1, nullptr, true},
    {"maps_ctf", "maps_ctf.txt", 1, nullptr, true},
    {"maps_dm", "maps_dm.txt", 1, nullptr, true},
    {"MOTD", "motd.txt", 1, nullptr, true},
    {"server", "server.txt", 1, nullptr, true},
    {"user_v", "user_v.txt", 1, nullptr, true},
    {"user_m", "user_m.txt", 1, nullptr, true},
    {"user_o", "user_o.txt", 1, nullptr, true},
    {"mnuHelpBar8", "", 1},
    {"mnuViewWebBrowser", "&Web Site", 1, openWebSite},
    {"mnuHelp", "&Help", 0},
    {"mnuHelpContents", "&Contents", 1, openHelp},
    {"mnuHelpBar7", "", 1},
    {"ksd", "Kestrand Docs", 1, openDocsPage},
    {"mnuHelpBar0", "", 1},
    {"bug", "&Report Bug", 1, writeBugReport},
    {"mnuHelpAbout", "&About ", 1},
};

} // namespace

std::span<const MenuEntry> mainMenu() { return kMenuRows; }

bool runMenuCommand(Program& program, const MenuEntry& entry) {
    if (entry.opensCompanionFile)
        openCompanionFile(program, entry.caption);
    else if (entry.command)
        entry.command(program);
    return entry.opensCompanionFile || entry.command;
}

bool runMenuCommand(Program& program, std::string_view name) {
    for (const MenuEntry& entry : kMenuRows)
        if (entry.name == name) return runMenuCommand(program, entry);
    return false;
}

} // namespace ks
