#include "config/reader_keys.h"

#include <string>
#include <unordered_map>

namespace ks {

namespace {

// In the order the reader tries them; the first equal key wins.
constexpr SecondWordKey kSecondWordRows[] = {
    {"public", FormId::Main, "FPUBLIC"},
    {"deathmatch", FormId::Main, "FDM"},
    {"game_dir", FormId::Main, "FGD"},
    {"maxclients", FormId::Main, "FMC"},
    {"allow_downloads", FormId::Main, "FAD1"},
    {"allow_downloads_maps", FormId::Main, "FAD2"},
    {"allow_downloads_models", FormId::Main, "FAD3"},
    {"allow_downloads_players", FormId::Main, "FAD4"},
    {"allow_downloads_sounds", FormId::Main, "FAD5"},
    {"port", FormId::Main, "FPORT"},
    {"allow_vote", FormId::Main, "FAV"},
    {"ogl", FormId::Main, "FGR"},
    {"matchtime", FormId::Main, "FMT"},
    {"ltime", FormId::Main, "FCT"},
    {"allow_earthquakes", FormId::Main, "FOE"},
    {"allow_flashlight", FormId::Main, "FAF"},
    {"play_song", FormId::Main, "FPS"},
    {"intro_song", FormId::Main, "FPIS"},
    {"runes", FormId::Main, "FR"},
    {"save_info", FormId::Main, "FSI"},
    {"shock", FormId::Main, "FS"},
    {"admenu", FormId::Main, "FAM"},
    {"protect_names", FormId::Main, "FP1"},
    {"day", FormId::Main, "FD1"},
    {"ctf", FormId::Main, "FCTF"},
    {"capturelimit", FormId::Main, "FCL"},
    {"highscores", FormId::Main, "FHS1"},
    {"maxrate", FormId::Main, "FRATE"},
    {"sv_backpack", FormId::Main, "FBP1"},
    {"resp_protect", FormId::Main, "FRP1"},
    {"hook", FormId::Main, "FH1"},
    {"hook_forward", FormId::Main, "FHFS1"},
    {"hook_pull", FormId::Main, "FHPS2"},
    {"hook_dmg", FormId::Main, "FHD1"},
    {"lights_out", FormId::Main, "FLO1"},
    {"hook_color", FormId::Main, "FHC1"},
    {"resethook", FormId::Main, "FRH1"},
    {"flies", FormId::Main, "FF1"},
    {"damage_locate", FormId::Weapons, "DL1"},
    {"damage_display", FormId::Weapons, "FDD1"},
    {"b_damage", FormId::Weapons, "FWD1"},
    {"sg_damage", FormId::Weapons, "FWD2"},
    {"ssg_damage", FormId::Weapons, "FWD3"},
    {"mg_damage", FormId::Weapons, "FWD4"},
    {"cg_damage", FormId::Weapons, "FWD5"},
    {"g_damage", FormId::Weapons, "FGD"},
    {"gl_damage", FormId::Weapons, "FWD6"},
    {"rl_damage", FormId::Weapons, "FWD7"},
    {"hb_damage", FormId::Weapons, "FWD8"},
    {"rg_damage", FormId::Weapons, "FWD9"},
    {"bfg_damage", FormId::Weapons, "FWD0"},
    {"sg_kick", FormId::Weapons, "FWK2"},
    {"ssg_kick", FormId::Weapons, "FWK3"},
    {"mg_kick", FormId::Weapons, "FWK4"},
    {"cg_kick", FormId::Weapons, "FWK5"},
    {"rg_kick", FormId::Weapons, "FWK9"},
    {"rocket_wait", FormId::Weapons, "FRLWT"},
    {"railgun_wait", FormId::Weapons, "FRGWT"},
    {"shotgun_wait", FormId::Weapons, "FSWT"},
    {"sshotgun_wait", FormId::Weapons, "FSSWT"},
    {"bfg_wait", FormId::Weapons, "FBFGWT"},
    {"fraglimit", FormId::Main, "FFGL1"},
    {"timelimit", FormId::Main, "FTT1"},
    {"rcon_password", FormId::Main, "FRCON2"},
    {"logfile", FormId::Main, "FLOGF"},
    {"stdlogfile", FormId::Main, "FLOGS"},
    {"stdlogname", FormId::Main, "FLOGN"},
    {"master", FormId::Main, "FMS3"},
    {"quickswitch", FormId::Main, "FQWS"},
    {"camper_check", FormId::Main, "FCC1"},
    {"camp_time", FormId::Main, "FCT1"},
    {"camp_distance", FormId::Main, "FCD3"},
    {"flood_msgs", FormId::Main, "FFM1"},
    {"flood_persecond", FormId::Main, "FFPS1"},
    {"flood_waitdelay", FormId::Main, "FFWD1"},
    {"filter", FormId::Main, "FPF1"},
    {"motd_time", FormId::Main, "MOTD_T"},
    {"max_health", FormId::Main, "MH"},
    {"bot_talk", FormId::Main, "ABT"},
    {"maxfps", FormId::Main, "MFPS"},
    {"map_cycle_change", FormId::Main, "FCC5"},
    {"map_randomize", FormId::Main, "FMR"},
    {"overtime", FormId::Main, "OT"},
    {"respawn_time", FormId::Main, "FWRT"},
    {"ammo_spawn", FormId::Main, "FART"},
    {"armor_spawn", FormId::Main, "FART2"},
    {"mega_health_spawn", FormId::Main, "FMRT"},
    {"health_spawn", FormId::Main, "FHRT"},
    {"teams", FormId::Main, "FTEAMS"},
    {"team1model", FormId::Main, "FTM1"},
    {"team1skin", FormId::Main, "FTS1"},
    {"team1name", FormId::Main, "FTN1"},
    {"team2name", FormId::Main, "FTN2"},
    {"team2model", FormId::Main, "FTM2"},
    {"team2skin", FormId::Main, "FTS2"},
    {"loser", FormId::Main, "FTL"},
    {"match", FormId::Main, "FMM"},
    {"sky_hook", FormId::Main, "FSH"},
    {"laser_hyperblaster", FormId::Main, "FLHB"},
    {"voosh", FormId::Main, "VM"},
    {"particle_explosions", FormId::Weapons, "FPEX"},
    {"rocket_speed", FormId::Weapons, "RLS"},
    {"rl_radius", FormId::Weapons, "RLDR"},
    {"rl_radius_damage", FormId::Weapons, "RLSP"},
};

constexpr ThirdWordKey kThirdWordRows[] = {
    {"qdir", ThirdWordAction::QuakeDirectory, FormId::Main, "QDIR"},
    {"dedicated", ThirdWordAction::Text, FormId::Main, "FDS"},
    {"IP", ThirdWordAction::Address, FormId::Main, "IP"},
    {"sa_shells", ThirdWordAction::Text, FormId::Flags, "SAS"},
    {"sa_bullets", ThirdWordAction::Text, FormId::Flags, "SAB"},
    {"sa_grenades", ThirdWordAction::Text, FormId::Flags, "SAG"},
    {"sa_rockets", ThirdWordAction::Text, FormId::Flags, "SAR"},
    {"sa_slugs", ThirdWordAction::Text, FormId::Flags, "SASL"},
    {"sa_cells", ThirdWordAction::Text, FormId::Flags, "SAC"},
    {"weapon_shotgun", ThirdWordAction::Flag, FormId::Flags, "Check6"},
    {"weapon_supershotgun", ThirdWordAction::Flag, FormId::Flags, "Check3"},
    {"weapon_machinegun", ThirdWordAction::Flag, FormId::Flags, "Check5"},
    {"weapon_chaingun", ThirdWordAction::Flag, FormId::Flags, "Check4"},
    {"weapon_grenadelauncher", ThirdWordAction::Flag, FormId::Flags, "Check1"},
    {"weapon_rocketlauncher", ThirdWordAction::Flag, FormId::Flags, "Check2"},
    {"weapon_hyperblaster", ThirdWordAction::Flag, FormId::Flags, "Check8"},
    {"weapon_railgun", ThirdWordAction::Flag, FormId::Flags, "Check9"},
    {"weapon_bfg", ThirdWordAction::Flag, FormId::Flags, "Check7"},
    {"item_armor_body", ThirdWordAction::Flag, FormId::Flags, "Check10"},
    {"item_armor_combat", ThirdWordAction::Flag, FormId::Flags, "Check11"},
    {"item_armor_jacket", ThirdWordAction::Flag, FormId::Flags, "Check12"},
    {"item_armor_shard", ThirdWordAction::Flag, FormId::Flags, "Check13"},
    {"item_power_screen", ThirdWordAction::Flag, FormId::Flags, "Check14"},
    {"item_power_shield", ThirdWordAction::Flag, FormId::Flags, "Check15"},
    {"item_quad", ThirdWordAction::Flag, FormId::Flags, "Check16"},
    {"item_invulnerability", ThirdWordAction::Flag, FormId::Flags, "Check17"},
    {"item_silencer", ThirdWordAction::Flag, FormId::Flags, "Check18"},
    {"item_breather", ThirdWordAction::Flag, FormId::Flags, "Check19"},
    {"item_enviro", ThirdWordAction::Flag, FormId::Flags, "Check20"},
    {"item_adrenaline", ThirdWordAction::Flag, FormId::Flags, "Check21"},
    {"item_bandolier", ThirdWordAction::Flag, FormId::Flags, "Check22"},
    {"item_pack", ThirdWordAction::Flag, FormId::Flags, "Check23"},
    {"s_weapon_shotgun", ThirdWordAction::Flag, FormId::Flags, "Check24"},
    {"s_weapon_supershotgun", ThirdWordAction::Flag, FormId::Flags, "Check29"},
    {"s_weapon_machinegun", ThirdWordAction::Flag, FormId::Flags, "Check28"},
    {"s_weapon_chaingun", ThirdWordAction::Flag, FormId::Flags, "Check27"},
    {"s_weapon_grenadelauncher", ThirdWordAction::Flag, FormId::Flags, "Check26"},
    {"s_weapon_rocketlauncher", ThirdWordAction::Flag, FormId::Flags, "Check25"},
    {"s_weapon_hyperblaster", ThirdWordAction::Flag, FormId::Flags, "Check31"},
    {"s_weapon_railgun", ThirdWordAction::Flag, FormId::Flags, "Check30"},
    {"s_weapon_bfg", ThirdWordAction::Flag, FormId::Flags, "Check32"},
    {"s_item_armor_body", ThirdWordAction::Flag, FormId::Flags, "Check33"},
    {"s_item_armor_combat", ThirdWordAction::Flag, FormId::Flags, "Check34"},
    {"s_item_armor_jacket", ThirdWordAction::Flag, FormId::Flags, "Check45"},
    {"s_item_armor_shard", ThirdWordAction::Flag, FormId::Flags, "Check35"},
    {"s_item_power_screen", ThirdWordAction::Flag, FormId::Flags, "Check36"},
    {"s_item_power_shield", ThirdWordAction::Flag, FormId::Flags, "Check37"},
    {"s_item_quad", ThirdWordAction::Flag, FormId::Flags, "Check38"},
    {"s_item_invulnerability", ThirdWordAction::Flag, FormId::Flags, "Check39"},
    {"s_item_silencer", ThirdWordAction::Flag, FormId::Flags, "Check40"},
    {"s_item_breather", ThirdWordAction::Flag, FormId::Flags, "Check41"},
    {"s_item_enviro", ThirdWordAction::Flag, FormId::Flags, "Check42"},
    {"s_item_adrenaline", ThirdWordAction::Flag, FormId::Flags, "Check43"},
    {"s_item_bandolier", ThirdWordAction::Flag, FormId::Flags, "Check44"},
    {"s_item_pack", ThirdWordAction::Flag, FormId::Flags, "Check46"},
    {"df_no_health", ThirdWordAction::Flag, FormId::Flags, "Check47"},
    {"df_no_items", ThirdWordAction::Flag, FormId::Flags, "Check48"},
    {"df_weapons_stay", ThirdWordAction::Flag, FormId::Flags, "Check49"},
    {"df_no_falling", ThirdWordAction::Flag, FormId::Flags, "Check50"},
    {"df_instant_items", ThirdWordAction::Flag, FormId::Flags, "Check51"},
    {"df_same_level", ThirdWordAction::Flag, FormId::Flags, "Check52"},
    {"df_skinteams", ThirdWordAction::Flag, FormId::Flags, "Check53"},
    {"df_modelteams", ThirdWordAction::Flag, FormId::Flags, "Check54"},
    {"df_no_friendly_fire", ThirdWordAction::Flag, FormId::Flags, "Check55"},
    {"df_spawn_farthest", ThirdWordAction::Flag, FormId::Flags, "Check56"},
    {"df_force_respawn", ThirdWordAction::Flag, FormId::Flags, "Check57"},
    {"df_no_armor", ThirdWordAction::Flag, FormId::Flags, "Check58"},
    {"df_allow_exit", ThirdWordAction::Flag, FormId::Flags, "Check59"},
    {"df_infinite_ammo", ThirdWordAction::Flag, FormId::Flags, "Check60"},
    {"df_quad_drop", ThirdWordAction::Flag, FormId::Flags, "Check61"},
    {"df_fixed_fov", ThirdWordAction::Flag, FormId::Flags, "Check62"},
    {"df_ctf_forcejoin", ThirdWordAction::Flag, FormId::Flags, "Check63"},
    {"df_armor_protect", ThirdWordAction::Flag, FormId::Flags, "Check64"},
    {"df_ctf_no_tech", ThirdWordAction::Flag, FormId::Flags, "Check70"},
    {"b_log", ThirdWordAction::Flag, FormId::Flags, "Check65"},
    {"b_kick", ThirdWordAction::Flag, FormId::Flags, "Check66"},
    {"b_notify", ThirdWordAction::Flag, FormId::Flags, "Check67"},
    {"b_use_impulses", ThirdWordAction::Flag, FormId::Flags, "Check68"},
    {"b_ban", ThirdWordAction::Flag, FormId::Flags, "Check69"},
    {"br_strength", ThirdWordAction::Flag, FormId::Flags, "Check71"},
    {"br_resist", ThirdWordAction::Flag, FormId::Flags, "Check72"},
    {"br_haste", ThirdWordAction::Flag, FormId::Flags, "Check73"},
    {"br_regen", ThirdWordAction::Flag, FormId::Flags, "Check74"},
    {"br_jump", ThirdWordAction::Flag, FormId::Flags, "Check75"},
    {"br_liquid", ThirdWordAction::Flag, FormId::Flags, "Check76"},
    {"br_invis", ThirdWordAction::Flag, FormId::Flags, "Check77"},
    {"br_vampire", ThirdWordAction::Flag, FormId::Flags, "Check78"},
    {"br_speed", ThirdWordAction::Flag, FormId::Flags, "Check85"},
    {"ab_grenades", ThirdWordAction::Flag, FormId::Flags, "Check79"},
    {"ab_shells", ThirdWordAction::Flag, FormId::Flags, "Check80"},
    {"ab_bullets", ThirdWordAction::Flag, FormId::Flags, "Check81"},
    {"ab_cells", ThirdWordAction::Flag, FormId::Flags, "Check82"},
    {"ab_rockets", ThirdWordAction::Flag, FormId::Flags, "Check83"},
    {"ab_slugs", ThirdWordAction::Flag, FormId::Flags, "Check84"},
};

// A lookup by hash that keeps the first row of each key, as the walk from the top would find it.
template <typename Row> class KeyIndex {
public:
    explicit KeyIndex(std::span<const Row> rows) {
        for (const Row& row : rows)
            index_.emplace(row.key, &row);
    }
    const Row* find(std::string_view word) const {
        const auto it = index_.find(word);
        return it == index_.end() ? nullptr : it->second;
    }

private:
    std::unordered_map<std::string_view, const Row*> index_;
};

} // namespace

std::span<const SecondWordKey> secondWordKeys() {
    return kSecondWordRows;
}
std::span<const ThirdWordKey> thirdWordKeys() {
    return kThirdWordRows;
}

const SecondWordKey* findSecondWordKey(std::string_view word) {
    static const KeyIndex<SecondWordKey> index{secondWordKeys()};
    return index.find(word);
}

const ThirdWordKey* findThirdWordKey(std::string_view word) {
    static const KeyIndex<ThirdWordKey> index{thirdWordKeys()};
    return index.find(word);
}

} // namespace ks
