#include "frame/menu.h"

#include "config/file_commands.h"
#include "server/server_commands.h"

namespace ks {

namespace {

template <const char* File> void view(Program& program) { ViewCompanionFile(program, File); }

constexpr char kBotDetected[] = "bot_detected.txt";
constexpr char kTextFilter[] = "textfilter.cfg";
constexpr char kHelp[] = "help.txt";
constexpr char kIpBanned[] = "ip_banned.txt";
constexpr char kMapsCtf[] = "maps_ctf.txt";
constexpr char kMapsDm[] = "maps_dm.txt";
constexpr char kMotd[] = "motd.txt";
constexpr char kServer[] = "server.txt";
constexpr char kUserV[] = "user_v.txt";
constexpr char kUserM[] = "user_m.txt";
constexpr char kUserO[] = "user_o.txt";

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
    {"Bot_Detected", kBotDetected, 1, view<kBotDetected>},
    {"textfilter", kTextFilter, 1, view<kTextFilter>},
    {"help", kHelp, 1, view<kHelp>},
    {"ip_banned", kIpBanned, 1, view<kIpBanned>},
    {"maps_ctf", kMapsCtf, 1, view<kMapsCtf>},
    {"maps_dm", kMapsDm, 1, view<kMapsDm>},
    {"MOTD", kMotd, 1, view<kMotd>},
    {"server", kServer, 1, view<kServer>},
    {"user_v", kUserV, 1, view<kUserV>},
    {"user_m", kUserM, 1, view<kUserM>},
    {"user_o", kUserO, 1, view<kUserO>},
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
        if (entry.name == name && entry.command) {
            entry.command(program);
            return true;
        }
    }
    return false;
}

} // namespace ks
