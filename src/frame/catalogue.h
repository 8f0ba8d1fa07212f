#pragma once

#include "frame/layer.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace ks {

// The three forms that hold settings: the main window and the two dialogs.
enum class FormId : std::uint8_t { Main, Flags, Weapons };

// A field or check box of one form, by its place in the catalogue. Code names a control through the handles
// below, so a name the catalogue lacks does not compile.
struct FieldId {
    FormId form;
    std::uint16_t index;
    friend constexpr bool operator==(FieldId, FieldId) = default;
};
struct CheckId {
    FormId form;
    std::uint16_t index;
    friend constexpr bool operator==(CheckId, CheckId) = default;
};

// What a field's text means, and so how it is quoted and whether the server reads a number there.
enum class ValueKind {
    Switch,      // 0 or 1
    Number,      // a number, with or without a range
    QuotedText,  // trailing blanks go and double quotes come round it when the focus leaves
    QuotedModel, // only the double quotes come round it when the focus leaves
    Path,        // filled by the directory selectors, "NONE" while unset
    Address,     // dotted IPv4 address
    FreeText,    // written as typed
};

// The field stands above the tab control rather than on a tab.
inline constexpr int kAboveTabs = -1;

// The values a field accepts: the leading number of its text from `lowest` to `highest`, bounds included, whole
// or not. A value outside brings up the message `text` under the title `title`.
struct Range {
    double lowest = 0;
    double highest = -1; // below `lowest`: the field has no range
    std::string_view title = {};
    std::string_view text = {};
    constexpr bool any() const { return lowest <= highest; }
};

inline constexpr std::string_view kZeroOrOne = "Must be 0 or 1";

// The range of a switch, with the title of its message.
constexpr Range zeroOrOne(std::string_view title) { return {0, 1, title, kZeroOrOne}; }

// How wide a field's box is: a short box for a number, one as wide as its column for a text.
enum class BoxWidth { Short, Column };

constexpr BoxWidth boxWidthOf(ValueKind kind) {
    return kind == ValueKind::Switch || kind == ValueKind::Number ? BoxWidth::Short : BoxWidth::Column;
}

// One setting: its control name, its key in the file, default, label, tool tip, the tab and frame it stands
// in, its kind, its range when it has one, and the width of its box (by its kind unless the row says).
struct FieldRow {
    std::string_view name;
    std::string_view key;
    std::string_view defaultText;
    std::string_view label;
    std::string_view toolTip;
    int tab;
    ValueKind kind;
    std::string_view group; // caption of the frame the field stands in, or empty
    Range range = {};
    BoxWidth width = boxWidthOf(kind);
};

// One check box of a flag group with its item field, which holds its bit value or "0".
struct FlagMember {
    int bit;
    std::string_view check;
    std::string_view caption;
    std::string_view item;
    std::string_view key;
    bool startsOn;
};

// Check boxes whose item fields add up to one total.
struct FlagGroup {
    std::string_view name;
    int tab;
    std::string_view heading;
    std::string_view total;
    std::string_view totalKey;
    std::string_view totalLabel;
    std::string_view defaultTotal;
    bool itemsTyped; // the operator can type into the item fields
    bool totalTyped; // the operator can type into the total
    std::span<const FlagMember> members;
};

struct AmmoField {
    std::string_view name;
    std::string_view label;
    std::string_view key;
};

struct Hint {
    int tab;
    std::string_view nearField; // the field the hint stands beside, empty for the directory selectors
    std::string_view text;
};

struct CheckRow {
    std::string_view name;
    std::string_view caption;
    std::string_view toolTip;
    int tab;
    std::string_view nearField;
};

// The text of FFile, QDIR and FGD while they are not set.
inline constexpr std::string_view kUnset = "NONE";
// True for the empty text and "NONE": no value has been given.
constexpr bool isUnset(std::string_view text) { return text.empty() || text == kUnset; }

inline constexpr std::string_view kMainCaption = "]{estrand Launcher";
inline constexpr std::string_view kFlagsCaption = "Weapons Flags/Item Flags";
inline constexpr std::string_view kWeaponsCaption =
    "Location Damage / Weapons Firing Rates / Weapons Damage / Weapon Kickback";
inline constexpr std::string_view kFlagsButtonCaption = "Weapons / Items/ DM Flags /Bot/ Rune Flags";
inline constexpr std::string_view kWeaponsButtonCaption = "Weapons Damage /  Kickback / Firing Rates";
inline constexpr std::string_view kFileLabel = "Current CFG File:";
inline constexpr std::string_view kCloseCaption = "Close";
inline constexpr std::string_view kStartAmmoHeading = "Starting Ammo";
inline constexpr int kStartAmmoTab = 2;

// The tab that is up when a form comes into being.
inline constexpr int kMainFirstTab = 2;  // "Team Play"
inline constexpr int kFlagsFirstTab = 1; // "Item Bans"

// The label of the camping distance field carries its own name; one label spans two respawn fields.
inline constexpr std::string_view kCampDistanceLabelName = "FCD1";
inline constexpr std::string_view kSharedRespawnLabel = "Health Respawn Time          Laser HyperBlaster";

// The selectors of the main window, with their tool tips.
inline constexpr std::string_view kDriveSelectorName = "Drive2";
inline constexpr std::string_view kDriveSelectorTip = "The drive where Quake2 is to run this config";
inline constexpr std::string_view kDirectorySelectorName = "Dir2";
inline constexpr std::string_view kDirectorySelectorTip = "The MOD or game directory to run";

// The tables keep one row a line.
// clang-format off
inline constexpr FieldRow kMainFieldRows[] = {
    {"FHOSTN", "hostname", "hostname", "Hostname", "This is the name reported to Quake Master Servers used to report your server to the Quake World", 0, ValueKind::QuotedText, ""},
    {"FDM", "deathmatch", "1", "Deathmatch", "1 - DeathMatch, 0 - Off", 0, ValueKind::Switch, "", zeroOrOne("DeathMatch, Off or On")},
    {"FPUBLIC", "public", "1", "Public", "1 - Makes your server availble for the world to see, 0 - Off", 0, ValueKind::Switch, "", zeroOrOne("Public, Off or On")},
    {"FMC", "maxclients", "16", "Max Clients", "Maximum number of Players / Clients to allow", 0, ValueKind::Number, ""},
    {"FDS", "dedicated", "1", "Dedicated", "1 - Dedicated server, 0 - Listen Server", 0, ValueKind::Switch, "", zeroOrOne("Dedicated, Off or On")},
    {"FFGL1", "fraglimit", "25", "Fraglimit", "Number of Frags a person will have to get to invoke the next level", 0, ValueKind::Number, ""},
    {"FTT1", "timelimit", "10", "Timelimit", "Number in Minutes for each level to run", 0, ValueKind::Number, ""},
    {"FPORT", "port", "27910", "Port", "Port for Quake II to start this game on", 0, ValueKind::Number, ""},
    {"FAD1", "allow_download", "1", "Allow Downloads", "1 - Allow Clients to Download support files like PICs textures etc., 0 - Off ", 0, ValueKind::Switch, "Download Options", zeroOrOne("Allow Downloads, Off or On")},
    {"FAD2", "allow_download_maps", "1", "Allow Map Downloads", "1 - Allow connecting players to Download maps, 0 - Off", 0, ValueKind::Switch, "Download Options", zeroOrOne("Allow Map Downloads, Off or On")},
    {"FAD3", "allow_downloads_models", "1", "Allow Model Downloads", "1 - Allow connecting players to download models, 0 - Off", 0, ValueKind::Switch, "Download Options", zeroOrOne("Allow Download of Models, Off or On")},
    {"FAD4", "allow_downloads_players", "1", "Allow Player Downloads", "1 -Allow connecting Players to download skins, 0 - Off", 0, ValueKind::Switch, "Download Options", zeroOrOne("Allow Download of Players, Off or On")},
    {"FAD5", "allow_download_sounds", "1", "Allow Sound Downloads", "1 - Allow Clients to Download sound files, 0 - Off", 0, ValueKind::Switch, "Download Options", zeroOrOne("Allow Download of Sounds, Off or On")},
    {"QDIR", "qdir", "NONE", "Quake2 Directory", "This is the Quake2 directory this program will use when trying to start this server, selected by the controls on the right", 0, ValueKind::Path, ""},
    {"FGD", "game_dir", "NONE", "Game Directory", "The Mod or game Name selected by the controls to the right", 0, ValueKind::Path, ""},
    {"IP", "IP", "", "Servers IP", "IP address for multiple IP machines", 0, ValueKind::Address, ""},
    {"FSM", "map", "q2dm1", "Starting Map", "The starting map", 0, ValueKind::FreeText, ""},
    {"FLOGF", "logfile", "1", "Logfile", "1 - Use standard logging, 0 - No logging", 0, ValueKind::Switch, "", zeroOrOne("Make Frag Stats Log, Off or On")},
    {"FLOGS", "stdlogfile", "1", "STD LOGFILE", "1 - Use the Standard log format, 0 - Uses Nonstandard", 0, ValueKind::Switch, "", zeroOrOne("Frag Stats Standard Type Log, Off or On")},
    {"FLOGN", "stdlogname", "\"kestrand/StdLog.log\"", "STD LOGNAME", "File name under Quake2 to write the Logging file", 0, ValueKind::QuotedText, ""},
    {"FRCON2", "rcon_password", "hushmarker", "RCON Password", "The remote console password you wish to use, blank or \"\" = NONE", 0, ValueKind::QuotedText, ""},
    {"FMS3", "setmaster", "q2master.example.net 192.0.2.10", "Master Server", "Master servers to report you server to", 0, ValueKind::FreeText, ""},
    {"FAV", "allow_vote", "1", "Allow Voting", "1 - Allows users to vote on game settings, 0 - Off", 1, ValueKind::Switch, "", zeroOrOne("Allow users to vote, Off or On")},
    {"FGR", "ogl", "0", "OGL Rules", "1 - OGL Standard rules apply, 0 - Off ", 1, ValueKind::Switch, "", zeroOrOne("Online Gamers League(OGL), Off or On")},
    {"FMT", "matchtime", "20", "Matchtime", "The Length in minutes of a Match", 1, ValueKind::Number, ""},
    {"FCT", "ltime", "30", "Countdown", "The length in seconds that everyone is in limbo at the start of a new map or match", 1, ValueKind::Number, ""},
    {"FOE", "allow_earthquakes", "0", "Allow Earthquakes", "1 - Allows random earthquakes, 0 - Off", 1, ValueKind::Switch, "", zeroOrOne("Allow Random EarthQuakes, Off or On")},
    {"FAF", "allow_flashlight", "1", "Allow Flashlights", "1 - Allows players to use the flashlight, 0 - Off", 1, ValueKind::Switch, "", zeroOrOne("Allow use of Flashlights, Off or On")},
    {"FR", "runes", "0", "Runes", "1 - Tech runes on, 0 - Off", 1, ValueKind::Switch, "", zeroOrOne("Runes, Off or On")},
    {"FPS", "play_song", "1", "Play Song", "1 Plays the intro song on player connect, 0 - Off", 1, ValueKind::Switch, "", zeroOrOne("Play Song at Connect, Off or On")},
    {"FPIS", "intro_song", "\"misc/ks.wav\"", "Song Name", "The name under the MOD directory of the file name to play", 1, ValueKind::QuotedText, ""},
    {"FSI", "save_info", "1", "Save Client Info", "1 - Allows disconnected players to reclaim their prior Team and frags on reconnect, 0 = Off", 1, ValueKind::Switch, "", zeroOrOne("Save Disconnected Players Info, Off or On")},
    {"FD1", "day", "0", "Day", "Number in seconds that Day turns to night (Lighting effect) 0 = Off", 1, ValueKind::Number, ""},
    {"FBP1", "sv_backpack", "1", "Backpacks", "1 - Fragged players leave a BackPack with all their items, 0 - Off", 1, ValueKind::Switch, "", zeroOrOne("Killed players Leave BackPacks, Off or On")},
    {"FRP1", "resp_protect", "5", "Respawn Protection", "Number in seconds that a player is protected from damage when spawning", 1, ValueKind::Number, ""},
    {"FP1", "protect_names", "1", "Clients Protect Names", "1 - Allows users to password protect their playing name, 0 - Off", 1, ValueKind::Switch, "", zeroOrOne("Allow Users to Protect Names, Off or On")},
    {"FHS1", "highscores", "1", "Display Highscores", "1 - Records and displays high scores at the end of each map, 0 - Off", 1, ValueKind::Switch, "", zeroOrOne("Show High Scores, Off or On")},
    {"FRATE", "maxrate", "10000", "Max Server Rate", "Max update Rate for the server to use, keeps LPBs from sucking all the band width", 1, ValueKind::Number, ""},
    {"FS", "shock", "50", "Shock", "Any number, the higher the more items get blown around the map", 1, ValueKind::Number, ""},
    {"FAM", "admenu", "1", "Admin Menus", "1 - Allows remote Administrators to use Admin Menus, 0 - Off", 1, ValueKind::Switch, "", zeroOrOne("Allow, Admin Menus for Remote Operators, Off or On")},
    {"FLO1", "lights_out", "1", "Lights out!", "1 - Allows Operators to turn lights on or off, 0 = Off", 1, ValueKind::Switch, "", zeroOrOne("Allow Lights Out, Off or On")},
    {"FF1", "flies", "25", "Flies", "When a players health falls below this level he will have flies", 1, ValueKind::Number, ""},
    {"FCTF", "ctf", "0", "CTF", "1 - CTF mode On, 0 - Off", 1, ValueKind::Switch, "CTF Settings", zeroOrOne("CTF off or on")},
    {"FCL", "capturelimit", "10", "CTF Capture Limit", "Flag Capture Limit by Team", 1, ValueKind::Number, "CTF Settings"},
    {"FH1", "hook", "1", "Hook", "1 - Allows the use of Hook, 0 = Off", 1, ValueKind::Switch, "Hook Settings", zeroOrOne("Laser Grapple, Off or On")},
    {"FHFS1", "hook_forward", "850", "Hook Forward Speed", "How fast the hook shoots forward", 1, ValueKind::Number, "Hook Settings"},
    {"FHPS2", "hook_pull", "350", "Hook Pull Speed", "How fast the hook pulls a person", 1, ValueKind::Number, "Hook Settings"},
    {"FHD1", "hook_dmg", "10", "Hook Damage", "Number of Points Damage when HOOK hits a player", 1, ValueKind::Number, "Hook Settings"},
    {"FHC1", "hook_color", "5", "Hook Color", "Hook Color", 1, ValueKind::Number, "Hook Color", {0, 8, "Laser Grapple ColorAllow, 1 - 8", "Must be 0 - 8"}},
    {"FRH1", "resethook", "1", "Reset Hook", "1 - Reset HOOK on player contact, 0 - Off", 1, ValueKind::Switch, "Hook Settings", zeroOrOne("Reset Hook on player contact, Off or On")},
    {"FSH", "sky_hook", "1", "Sky Hook", "1 - Allows Clients to Hook the Sky, 0 - Off", 1, ValueKind::Switch, "Hook Settings", zeroOrOne("Grapple the Sky, Off or On")},
    {"FTEAMS", "teams", "1", "Teamplay", "1 - Teamplay on, 0 - FFA", 2, ValueKind::Switch, "", zeroOrOne("Team Play, Off or On")},
    {"FMM", "match", "0", "Match", "1 - Match Play, 0 - Off", 2, ValueKind::Switch, "", zeroOrOne("Match Play, Off or On")},
    {"FTN1", "team1name", "\"Rail_Hoes\"", "Team Name", "Team 1 Name - No spaces please", 2, ValueKind::QuotedText, "Team 1"},
    {"FTM1", "team1model", "\"female/\"", "Team Model", "Team 1 Model, don't forget a trailing Backslash", 2, ValueKind::QuotedModel, "Team 1"},
    {"FTS1", "team1skin", "\"athena\"", "Team Skin", "Team 1 Skin", 2, ValueKind::QuotedText, "Team 1"},
    {"FTN2", "team2name", "\"Slag_Studs\"", "Team Name", "Team 2 Name", 2, ValueKind::QuotedText, "Team 2"},
    {"FTM2", "team2model", "\"male/\"", "Team Model", "Team 2 Model, don't foget the trailing Backslash", 2, ValueKind::QuotedModel, "Team 2"},
    {"FTS2", "team2skin", "\"grunt\"", "Team Skin", "Team 2 Skin", 2, ValueKind::QuotedText, "Team 2"},
    {"FTL", "loser", "\"kicked the living crap out of\"", "Winners Message", "Winner beats  Loser Message at end of map for TeamPlay", 2, ValueKind::QuotedText, ""},
    {"FCC1", "camper_check", "1", "Camper Checks", "1 - Check for Campers, 0 - Off", 3, ValueKind::Switch, "Camper Detection", zeroOrOne("Check for Campers, Off or On")},
    {"FCT1", "camp_time", "120", "Camping Time", "Number is seconds to allow a person to Camp before forced to Observer Mode", 3, ValueKind::Number, "Camper Detection"},
    {"FCD3", "camp_distance", "128", "Camping Distance", "How far the camper must move in map inches before NO LONGER considered a camper", 3, ValueKind::Number, "Camper Detection"},
    {"FFM1", "flood_msgs", "4", "Flood Msgs", "How many messages are considered flooding", 3, ValueKind::Number, "Flood Protection"},
    {"FFPS1", "flood_persecond", "4", "Floods Per Second", "Number of seconds to check for the above CVAR", 3, ValueKind::Number, "Flood Protection"},
    {"FFWD1", "flood_waitdelay", "10", "Flooding Wait Delay", "If Cleint Floods, shut him up for this long in seconds", 3, ValueKind::Number, "Flood Protection"},
    {"VM", "voosh", "0", "Voosh Mode", "One Weapon Quake - Value", 3, ValueKind::Number, "Other Settings", {0, 9, "Must be 0 - 9", "One Weapon Voosh-Mode 0 - Off, check other possible values by the text"}},
    {"FQWS", "quickswitch", "1", "Quick Weapon Switching", "1 - Weapons Qucik Switch, 0 - Off", 3, ValueKind::Switch, "Other Settings", zeroOrOne("Quick Weapons Switching, Off or On")},
    {"FCC5", "map_cycle_change", "1", "Map Cycling", "1 - Use the Map Cycle File, 0 - Off", 3, ValueKind::Switch, "Other Settings", zeroOrOne("Use Map Rotation in TXT file, Off or On")},
    {"FPF1", "filter", "1", "Text Filter", "Use the text filter file to filter player messages", 3, ValueKind::Switch, "Other Settings", zeroOrOne("Use Text Filter, Off or On")},
    {"MOTD_T", "motd_time", "5", "MOTD Time", "How long in secons the MOTD file will stay up", 3, ValueKind::Number, "Other Settings"},
    {"MH", "max_health", "300", "Max Health", "Reference Vampire Rune, Max Health points attainable", 3, ValueKind::Number, "Other Settings"},
    {"ABT", "bot_chat", "1", "Anti-Bot Chat", "Anti-Bot Talk, 1 - On, 0 - Off", 3, ValueKind::Switch, "Other Settings", zeroOrOne("Anti-Bot Talk, Off or On")},
    {"MFPS", "maxfps", "60", "MAX FPS", "Maximum Frames per Second", 3, ValueKind::Number, "Other Settings"},
    {"FMR", "map_randomize", "0", "Map Randomize", "1 -Rrandomize Maps from Map file, 0 - Off", 3, ValueKind::Switch, "Other Settings", zeroOrOne("Map Random Rotation for TXT file, Off or On")},
    {"OT", "overtime", "0", "OverTime", "Amount of Time in Minutes for Overtime in the Event of a Tie", 3, ValueKind::Number, "Other Settings"},
    {"FWRT", "respawn_time", "30", "Weapon Respawn Time", "Number in seconds that Weapons respawn", 3, ValueKind::Number, "Weapon/Item Respawn Times"},
    {"FART", "ammo_spawn", "20", "Ammo Respawn Time", "Number in seconds that Ammo respawns", 3, ValueKind::Number, "Weapon/Item Respawn Times"},
    {"FART2", "armor_spawn", "20", "Armor Respawn Time", "Number in seconds that Armour respawns", 3, ValueKind::Number, "Weapon/Item Respawn Times"},
    {"FMRT", "mega_health_spawn", "30", "Mega Health Respawn Time", "Number in seconds that MegaHealth respawns", 3, ValueKind::Number, "Weapon/Item Respawn Times"},
    {"FHRT", "health_spawn", "20", "Health Respawn Time", "Number in seconds that Health repawns", 3, ValueKind::Number, "Weapon/Item Respawn Times"},
    {"FLHB", "laser_hyperblaster", "1", "Laser HyperBlaster", "1 - Use Laser anti lag hyperblaster, 0 - Normal Hyperblaster", 3, ValueKind::Switch, "Weapon/Item Respawn Times", zeroOrOne("Use Laser Hyperblaster, Off or On")},
    {"FFile", "", "NONE", "Current CFG File:", "The Current Config file your working on", kAboveTabs, ValueKind::Path, ""},
};

inline constexpr FieldRow kWeaponFieldRows[] = {
    {"DL1", "damage_locate", "0", "Damage Locate", "1 - Head shots do more damage Torso shots Normal Damage, Leg shots less damage, 0 - Off", 0, ValueKind::Switch, "Location Damage", zeroOrOne("Damage Location, Off or On")},
    {"FDD1", "damage_display", "0", "Display Damage", "1 - Display on clients screen where their shots hit opponets, 0 - Off", 0, ValueKind::Switch, "Location Damage", zeroOrOne("Display Damage Location, Off or On")},
    {"FSWT", "shotgun_wait", "18", "Shotgun", "Wait time, for Shot Gun Reload, 18 is Default", 0, ValueKind::Number, "Weapon Firing Rates"},
    {"FSSWT", "sshotgun_wait", "17", "Super Shotgun", "Wait time, for SuperShot Gun Reload, 5 is Default", 0, ValueKind::Number, "Weapon Firing Rates"},
    {"FRLWT", "rocket_wait", "10", "Rocket Launcher", "Wait time, for RocketLauncher Reload, 10 is Default", 0, ValueKind::Number, "Weapon Firing Rates"},
    {"FRGWT", "railgun_wait", "12", "Rail Gun", "Wait time, for Rail Gun Reload, 12 is Default", 0, ValueKind::Number, "Weapon Firing Rates"},
    {"FBFGWT", "bfg_wait", "38", "BFG", "Wait time, for BFG Reload, 38 is Default", 0, ValueKind::Number, "Weapon Firing Rates"},
    {"RLS", "rocket_speed", "650", "Rocket Speed", "How quickly rockets fly throw the air, higher = faster", 0, ValueKind::Number, ""},
    {"RLDR", "rl_radius", "120", "Rocket Damage Radius", "The radius in map inches that the Rocket Launcher causes Radius Damage", 0, ValueKind::Number, ""},
    {"RLSP", "rl_radius_damage", "120", "Rocket Radius Damage Points", "How many points damage the Rocket Launcher causes in Raduis damage", 0, ValueKind::Number, ""},
    {"FPEX", "particle_explosions", "1", "Particle Explosions", "1 - Scrapnel from explosions, 0 - Off", 0, ValueKind::Switch, "", zeroOrOne("Particle Explosions, Off or On")},
    {"FWD1", "b_damage", "15", "Blaster", "Blaster Damage, Default 15", 0, ValueKind::Number, "Weapons Damage"},
    {"FWD2", "sg_damage", "4", "Shotgun", "Shotgun Damage, Dafault 4 per shot", 0, ValueKind::Number, "Weapons Damage"},
    {"FWD3", "ssg_damage", "6", "Super Shotgun", "Super Shot Gun Damage, Default  6 per shot", 0, ValueKind::Number, "Weapons Damage"},
    {"FWD4", "mg_damage", "8", "Machinegun", "Machine Gun Damage, Default 8 per Bullet", 0, ValueKind::Number, "Weapons Damage"},
    {"FWD5", "cg_damage", "6", "Chaingun", "Chain Gun Damage, Default 6 per bullet", 0, ValueKind::Number, "Weapons Damage"},
    {"FGD", "g_damage", "150", "Grenade", "Grenade Damage, Default 150", 0, ValueKind::Number, "Weapons Damage"},
    {"FWD6", "gl_damage", "80", "Grenade Launcher", "Grenade Launcher Damage, Deafault 80", 0, ValueKind::Number, "Weapons Damage"},
    {"FWD7", "rl_damage", "75", "Rocket Launcher", "Rocket Launcher Damage, Default 75", 0, ValueKind::Number, "Weapons Damage"},
    {"FWD8", "hb_damage", "15", "Hyperblaster", "HyperBlaster Damage, Default 15 per bolt", 0, ValueKind::Number, "Weapons Damage"},
    {"FWD9", "rg_damage", "75", "Railgun", "Rail Gun Damage, Default 75", 0, ValueKind::Number, "Weapons Damage"},
    {"FWD0", "bfg_damage", "200", "BFG", "BFG Damage, Default 200", 0, ValueKind::Number, "Weapons Damage"},
    {"FWK2", "sg_kick", "8", "Shotgun", "Shotgun Kickback, Default 8", 0, ValueKind::Number, "Weapon Kickback"},
    {"FWK3", "ssg_kick", "12", "Super Shotgun", "Super Shot Gun Kickback, Default 12", 0, ValueKind::Number, "Weapon Kickback"},
    {"FWK4", "mg_kick", "2", "Machinegun", "Machine Gun KickBack, Default 2", 0, ValueKind::Number, "Weapon Kickback"},
    {"FWK5", "cg_kick", "2", "Chaingun", "Chain Gun Kickback, Default 2", 0, ValueKind::Number, "Weapon Kickback"},
    {"FWK9", "rg_kick", "100", "Railgun", "Rail Gun KickBack, Default 100", 0, ValueKind::Number, "Weapon Kickback"},
};

inline constexpr FlagMember kWBTMembers[] = {
    {1, "Check6", "Shotgun", "WB6", "weapon_shotgun", false},
    {2, "Check3", "Super Shotgun", "WB3", "weapon_supershotgun", false},
    {4, "Check5", "Machinegun", "WB5", "weapon_machinegun", false},
    {8, "Check4", "Chaingun", "WB4", "weapon_chaingun", false},
    {16, "Check1", "Grenade Launcher", "WB1", "weapon_grenadelauncher", false},
    {32, "Check2", "Rocket Launcher", "WB2", "weapon_rocketlauncher", false},
    {64, "Check8", "Hyperblaster", "WB8", "weapon_hyperblaster", false},
    {128, "Check9", "Railgun", "WB9", "weapon_railgun", false},
    {256, "Check7", "BFG", "WB7", "weapon_bfg", false},
};

inline constexpr FlagMember kABTMembers[] = {
    {1, "Check79", "Grenades", "AB1", "ab_grenades", false},
    {2, "Check80", "Shells", "AB2", "ab_shells", false},
    {4, "Check81", "Bullets", "AB3", "ab_bullets", false},
    {8, "Check82", "Cells", "AB4", "ab_cells", false},
    {16, "Check83", "Rockets", "AB5", "ab_rockets", false},
    {32, "Check84", "Slugs", "AB6", "ab_slugs", false},
};

inline constexpr FlagMember kWIBTMembers[] = {
    {1, "Check10", "Body Armor", "WIB1", "item_armor_body", false},
    {2, "Check11", "Combat Armor", "WIB2", "item_armor_combat", false},
    {4, "Check12", "Jacket Armor", "WIB3", "item_armor_jacket", false},
    {8, "Check13", "Armor Shard", "WIB4", "item_armor_shard", false},
    {16, "Check14", "Power Screen", "WIB5", "item_power_screen", false},
    {32, "Check15", "Power Shield", "WIB6", "item_power_shield", false},
    {64, "Check16", "Quad", "WIB8", "item_quad", false},
    {128, "Check17", "Invulnerability", "WIB9", "item_invulnerability", false},
    {256, "Check18", "Silencer", "WIB10", "item_silencer", false},
    {512, "Check19", "Breather", "WIB11", "item_breather", false},
    {1024, "Check20", "Enviro", "WIB12", "item_enviro", false},
    {2048, "Check21", "Adrealine", "WIB13", "item_adrenaline", false},
    {4096, "Check22", "Bandolier", "WIB14", "item_bandolier", false},
    {8192, "Check23", "Pack", "WIB15", "item_pack", false},
};

inline constexpr FlagMember kWSWTMembers[] = {
    {1, "Check24", "Shotgun", "WSW1", "s_weapon_shotgun", false},
    {2, "Check29", "Super Shotgun", "WSW2", "s_weapon_supershotgun", false},
    {4, "Check28", "Machinegun", "WSW3", "s_weapon_machinegun", false},
    {8, "Check27", "Chaingun", "WSW4", "s_weapon_chaingun", false},
    {16, "Check26", "Grenade Launcher", "WSW5", "s_weapon_grenadelauncher", false},
    {32, "Check25", "Rocket Launcher", "WSW6", "s_weapon_rocketlauncher", false},
    {64, "Check31", "Hyperblaster", "WSW7", "s_weapon_hyperblaster", false},
    {128, "Check30", "Railgun", "WSW8", "s_weapon_railgun", false},
    {256, "Check32", "BFG", "WSW9", "s_weapon_bfg", false},
};

inline constexpr FlagMember kWSITMembers[] = {
    {1, "Check33", "Body Armor", "WSI1", "s_item_armor_body", false},
    {2, "Check34", "Combat Armor", "WSI2", "s_item_armor_combat", false},
    {4, "Check45", "Jacket Armor", "WSI13", "s_item_armor_jacket", false},
    {8, "Check35", "Armor Shard", "WSI3", "s_item_armor_shard", false},
    {16, "Check36", "Power Screen", "WSI4", "s_item_power_screen", false},
    {32, "Check37", "Power Shield", "WSI5", "s_item_power_shield", false},
    {64, "Check38", "Quad", "WSI6", "s_item_quad", false},
    {128, "Check39", "Invulnerability", "WSI7", "s_item_invulnerability", false},
    {256, "Check40", "Silencer", "WSI8", "s_item_silencer", false},
    {512, "Check41", "Breather", "WSI9", "s_item_breather", false},
    {1024, "Check42", "Enviro", "WSI10", "s_item_enviro", false},
    {2048, "Check43", "Adrenaline", "WSI11", "s_item_adrenaline", false},
    {4096, "Check44", "Bandolier", "WSI12", "s_item_bandolier", false},
    {8192, "Check46", "Pack", "WSI14", "s_item_pack", false},
};

inline constexpr FlagMember kDMFLAGTMembers[] = {
    {1, "Check47", "No Health", "DMFLAG1", "df_no_health", false},
    {2, "Check48", "No Items", "DMFLAG2", "df_no_items", false},
    {4, "Check49", "Weapons Stay", "DMFLAG3", "df_weapons_stay", false},
    {8, "Check50", "No Falling Dmg", "DMFLAG4", "df_no_falling", false},
    {16, "Check51", "Instant Items", "DMFLAG5", "df_instant_items", true},
    {32, "Check52", "Same Level", "DMFLAG6", "df_same_level", false},
    {64, "Check53", "Teams by Skin", "DMFLAG7", "df_skinteams", true},
    {128, "Check54", "Teams by Model", "DMFLAG8", "df_modelteams", false},
    {256, "Check55", "No Friendly Fire", "DMFLAG9", "df_no_friendly_fire", false},
    {512, "Check56", "Spawn Farthest", "DMFLAG10", "df_spawn_farthest", false},
    {1024, "Check57", "Force Respawn", "DMFLAG11", "df_force_respawn", false},
    {2048, "Check58", "No Armor", "DMFLAG12", "df_no_armor", false},
    {4096, "Check59", "Allow Exit", "DMFLAG13", "df_allow_exit", false},
    {8192, "Check60", "Infinite Ammo", "DMFLAG14", "df_infinite_ammo", false},
    {16384, "Check61", "Quad Drop", "DMFLAG15", "df_quad_drop", false},
    {32768, "Check62", "Fixed Fov", "DMFLAG16", "df_fixed_fov", false},
    {131072, "Check63", "CTF Force Join", "DMFLAG17", "df_ctf_forcejoin", false},
    {262144, "Check64", "Armor Protect", "DMFLAG18", "df_armor_protect", false},
    {524288, "Check70", "CTF No Techs", "DMFLAG19", "df_ctf_no_tech", false},
};

inline constexpr FlagMember kBOTTMembers[] = {
    {1, "Check65", "Log Bot", "BOT1", "b_log", true},
    {2, "Check66", "Kick Bot", "BOT2", "b_kick", true},
    {4, "Check67", "Notify Other Players", "BOT3", "b_notify", true},
    {8, "Check68", "Include Impulses", "BOT4", "b_use_impulses", true},
    {16, "Check69", "Ban", "BOT5", "b_ban", true},
};

inline constexpr FlagMember kTRBMembers[] = {
    {1, "Check71", "Strength", "RNS", "br_strength", false},
    {2, "Check72", "Resist", "RNR", "br_resist", false},
    {4, "Check73", "Haste", "RNH", "br_haste", false},
    {8, "Check74", "Regeneration", "RNG", "br_regen", false},
    {16, "Check75", "Super Jump", "RNJ", "br_jump", false},
    {32, "Check76", "Liquid", "RNL", "br_liquid", false},
    {64, "Check77", "Invisibility", "RNI", "br_invis", false},
    {128, "Check78", "Vampire", "RNV", "br_vampire", false},
    {256, "Check85", "Speed", "RND", "br_speed", false},
};

inline constexpr FlagGroup kFlagGroupRows[] = {
    {"Weapon bans", 0, "Weapons Bans", "WBT", "wbanflags", "Total", "0", false, false, kWBTMembers},
    {"Ammo bans", 0, "Ammo Bans", "ABT", "ban_ammo", "Total", "0", true, true, kABTMembers},
    {"Item bans", 1, "", "WIBT", "banned_items", "Total", "0", false, false, kWIBTMembers},
    {"Start weapons", 2, "Starting Weapons", "WSWT", "startweapons", "Total", "0", false, false, kWSWTMembers},
    {"Start items", 3, "", "WSIT", "start_items", "Total", "0", false, false, kWSITMembers},
    {"DM flags", 4, "", "DMFLAGT", "dmflags", "Total DM Flags", "80", false, false, kDMFLAGTMembers},
    {"Bot detection", 5, "Bot Detection", "BOTT", "sv_botdetection", "Total", "31", false, false, kBOTTMembers},
    {"Rune bans", 5, "Rune Bans", "TRB", "ban_rune", "Total", "0", true, false, kTRBMembers},
};

inline constexpr AmmoField kStartAmmoRows[] = {
    {"SAS", "Shells", "sa_shells"},
    {"SAB", "Bullets", "sa_bullets"},
    {"SAG", "Grenades", "sa_grenades"},
    {"SAR", "Rockets", "sa_rockets"},
    {"SASL", "Slugs", "sa_slugs"},
    {"SAC", "Cells", "sa_cells"},
};

inline constexpr std::string_view kMainTabRows[] = {"Quake II Settings", "Kestrand Settings", "Team Play", "Other Settings"};
inline constexpr std::string_view kFlagTabRows[] = {"Weapon / Ammo Bans", "Item Bans",  "Start Weapons/Ammo",
                                             "Start Items",        "Dm Flags", "Bot / Rune Bans"};

inline constexpr Hint kHintRows[] = {
    {0, "", "Use the Drive and Directory selectors to pick the directory where the MOD is Located and I will do the "
            "hard work."},
    {1, "FHC1", "1=Red 2=Blue 3=Green 4=Yellow 5=Yellow/Strobe 7=Lt Blue 8=Orange"},
    {3, "VM", "1 - Blaster, 2 - Shotgun, 3 - Super Shotgun, 4 - Machine Gun, 5 - Chain Gun, 6 - Grenade, 7 - Rocket, "
              "8 - HyperBlaster, 9 Rail Gun"},
};

inline constexpr CheckRow kMainCheckRows[] = {
    {"ipCheck", "Use Default", "Checked uses Default IP address", 0, "IP"},
};
// clang-format on

constexpr std::span<const FieldRow> mainFields() { return kMainFieldRows; }
constexpr std::span<const FieldRow> weaponFields() { return kWeaponFieldRows; }
constexpr std::span<const FlagGroup> flagGroups() { return kFlagGroupRows; }

// Where a control stands on its form. The flags form holds, group by group, the item fields followed by the
// total, and then the starting ammunition.
constexpr FieldId mainFieldAt(std::size_t row) { return {FormId::Main, static_cast<std::uint16_t>(row)}; }
constexpr FieldId weaponFieldAt(std::size_t row) { return {FormId::Weapons, static_cast<std::uint16_t>(row)}; }
constexpr std::size_t flagGroupStart(std::size_t group) {
    std::size_t index = 0;
    for (std::size_t g = 0; g < group; ++g)
        index += kFlagGroupRows[g].members.size() + 1;
    return index;
}
constexpr std::size_t flagCheckStart(std::size_t group) {
    std::size_t index = 0;
    for (std::size_t g = 0; g < group; ++g)
        index += kFlagGroupRows[g].members.size();
    return index;
}
constexpr FieldId flagItemAt(std::size_t group, std::size_t member) {
    return {FormId::Flags, static_cast<std::uint16_t>(flagGroupStart(group) + member)};
}
constexpr FieldId flagTotalAt(std::size_t group) {
    return {FormId::Flags, static_cast<std::uint16_t>(flagGroupStart(group) + kFlagGroupRows[group].members.size())};
}
constexpr CheckId flagCheckAt(std::size_t group, std::size_t member) {
    return {FormId::Flags, static_cast<std::uint16_t>(flagCheckStart(group) + member)};
}
constexpr FieldId startAmmoAt(std::size_t row) {
    return {FormId::Flags, static_cast<std::uint16_t>(flagGroupStart(std::size(kFlagGroupRows)) + row)};
}
constexpr std::size_t groupIndex(const FlagGroup& group) { return static_cast<std::size_t>(&group - kFlagGroupRows); }

namespace detail {
// Never defined: a handle that names no control of the catalogue calls it, and so does not compile.
void controlNotInCatalogue(std::string_view name);
} // namespace detail

// The handle of a control of the catalogue, found when the program is compiled.
consteval FieldId mainField(std::string_view name) {
    for (std::size_t row = 0; row < std::size(kMainFieldRows); ++row)
        if (kMainFieldRows[row].name == name) return mainFieldAt(row);
    detail::controlNotInCatalogue(name);
    return {};
}
consteval FieldId weaponField(std::string_view name) {
    for (std::size_t row = 0; row < std::size(kWeaponFieldRows); ++row)
        if (kWeaponFieldRows[row].name == name) return weaponFieldAt(row);
    detail::controlNotInCatalogue(name);
    return {};
}
consteval FieldId flagsField(std::string_view name) {
    for (std::size_t g = 0; g < std::size(kFlagGroupRows); ++g) {
        for (std::size_t m = 0; m < kFlagGroupRows[g].members.size(); ++m)
            if (kFlagGroupRows[g].members[m].item == name) return flagItemAt(g, m);
        if (kFlagGroupRows[g].total == name) return flagTotalAt(g);
    }
    for (std::size_t row = 0; row < std::size(kStartAmmoRows); ++row)
        if (kStartAmmoRows[row].name == name) return startAmmoAt(row);
    detail::controlNotInCatalogue(name);
    return {};
}
consteval CheckId mainCheck(std::string_view name) {
    for (std::size_t row = 0; row < std::size(kMainCheckRows); ++row)
        if (kMainCheckRows[row].name == name) return {FormId::Main, static_cast<std::uint16_t>(row)};
    detail::controlNotInCatalogue(name);
    return {};
}
consteval CheckId flagsCheck(std::string_view name) {
    for (std::size_t g = 0; g < std::size(kFlagGroupRows); ++g)
        for (std::size_t m = 0; m < kFlagGroupRows[g].members.size(); ++m)
            if (kFlagGroupRows[g].members[m].check == name) return flagCheckAt(g, m);
    detail::controlNotInCatalogue(name);
    return {};
}

// The controls that code names.
namespace id {
inline constexpr FieldId FFile = mainField("FFile");
inline constexpr FieldId QDIR = mainField("QDIR");
inline constexpr FieldId FGD = mainField("FGD");
inline constexpr FieldId FDS = mainField("FDS");
inline constexpr FieldId FPORT = mainField("FPORT");
inline constexpr FieldId FHOSTN = mainField("FHOSTN");
inline constexpr FieldId FSM = mainField("FSM");
inline constexpr FieldId IP = mainField("IP");
inline constexpr CheckId ipCheck = mainCheck("ipCheck");
} // namespace id

class Form;

// Fill a form with its fields, check boxes and tabs at their defaults.
void buildMainForm(Form& form);
void buildFlagsForm(Form& form);
void buildWeaponsForm(Form& form);

} // namespace ks
