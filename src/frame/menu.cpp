#include "frame/menu.h"

#include "config/file_commands.h"
#include "server/server_commands.h"

namespace ks {

namespace {

constexpr MenuEntry kMenuRows[] = {
    {"mnuFile", "&File", 0, nullptr},
    {"mnuFileOpen", "&Open...", 1, mnuFileOpen_Click},
    {"runquake2", "&Run this Server", 1, runquake2_Click},
    {"mnuFileBar0", "", 1, nullptr},
    {"mnuFileSave", "&Save", 1, mnuFileSave_Click},
    {"mnuFileSaveAs", "Save &As...", 1, mnuFileSaveAs_Click},
    {"mnuFileBar1", "", 1, nullptr},
    {"mnuFileExit", "E&xit", 1, mnuFileExit_Click},
    {"mnuView", "&View", 0, nullptr},
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
    {"mnuHelpBar8", "", 1, nullptr},
    {"mnuViewWebBrowser", "&Web Site", 1, mnuViewWebBrowser_Click},
    {"mnuHelp", "&Help", 0, nullptr},
    {"mnuHelpContents", "&Contents", 1, mnuHelpContents_Click},
    {"mnuHelpBar7", "", 1, nullptr},
    {"ksd", "Kestrand Docs", 1, ksd_Click},
    {"mnuHelpBar0", "", 1, nullptr},
    {"bug", "&Report Bug", 1, bug_Click},
    {"mnuHelpAbout", "&About ", 1, nullptr},
};

} // namespace

std::span<const MenuEntry> mainMenu() { return kMenuRows; }

bool RunMenuCommand(Program& program, std::string_view name) {
    for (const MenuEntry& entry : kMenuRows) {
        if (entry.name != name) continue;
        // A View entry opens the companion file that its caption names.
        if (entry.opensCompanionFile)
            ViewCompanionFile(program, entry.caption);
        else if (entry.command)
            entry.command(program);
        return entry.opensCompanionFile || entry.command;
    }
    return false;
}

} // namespace ks
