#pragma once

#include <span>
#include <string_view>

namespace ks {

class Form;

// What a field's text means, and so which rule applies to it.
enum class ValueKind {
    Switch,     // 0 or 1
    Number,     // any text; no rule
    Number0to8, // hook colour
    Number0to9, // voosh mode
    QuotedText, // put between double quotes when the focus leaves
    Path,       // filled by the directory selectors, "NONE" while unset
    Address,    // dotted IPv4 address
    FreeText,   // written as typed
};

// The field stands above the tab control rather than on a tab.
inline constexpr int kAboveTabs = -1;

struct FieldRow {
    std::string_view name;
    std::string_view key;
    std::string_view defaultText;
    std::string_view label;
    std::string_view toolTip;
    int tab;
    ValueKind kind;
    std::string_view group; // caption of the frame the field stands in, or empty
};

struct FlagMember {
    int bit;
    std::string_view check;
    std::string_view caption;
    std::string_view item;
    std::string_view key;
    bool startsOn;
};

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

struct GroupCaption {
    int tab;
    std::string_view caption;
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

inline constexpr std::string_view kNone = "NONE";

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

std::span<const std::string_view> mainTabs();
std::span<const std::string_view> flagTabs();
std::span<const FieldRow> mainFields();
std::span<const FieldRow> weaponFields();
std::span<const FlagGroup> flagGroups();
std::span<const AmmoField> startAmmo();
std::span<const GroupCaption> mainGroupCaptions();
std::span<const std::string_view> weaponHeadings();
std::span<const Hint> mainHints();
std::span<const CheckRow> mainCheckBoxes();

// The label of the camping distance field carries its own name; one label spans two respawn fields.
inline constexpr std::string_view kCampDistanceLabelName = "FCD1";
inline constexpr std::string_view kSharedRespawnLabel = "Health Respawn Time          Laser HyperBlaster";

// Fill a form with its fields, check boxes and tabs at their defaults.
void buildMainForm(Form& form);
void buildFlagsForm(Form& form);
void buildWeaponsForm(Form& form);

} // namespace ks
