#pragma once

#include "config/layer.h"

#include "config/layout.h"
#include "frame/catalogue.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace ks {

// What the value of a setting is and how it is given.
enum class SettingKind {
    Text,    // the text of a field
    Number,  // the text of a field that the server reads as a number: a switch, a count, a time, a start ammo
    Address, // the server IP, which stands behind "Use Default"
    Flag,    // a member of a flag group: its item field holds its bit while its check box is on, else 0
    Total,   // the sum of a flag group's item fields, which follows the check boxes
};

// A setting as a written file names it: its key, the line it stands on and the field that holds its value.
struct SettingKey {
    std::string_view key;
    LineKind line;
    FieldId field;
    SettingKind kind = SettingKind::Text;
    CheckId check{};       // a flag member's check box
    std::size_t group = 0; // a flag member's or a total's group
};

// Every setting of a written file, in the order of its lines (the IP among them, whether its line is written
// or not).
std::span<const SettingKey> settingKeys();

// The setting a file names by `key`; null when no line of a written file has that key. Keys are compared
// exactly, as the reader compares them.
const SettingKey* findSettingKey(std::string_view key);

// The setting whose value a field holds; null for a field that reaches no file (FFile).
const SettingKey* settingOfField(FieldId field);

// The keys nearest to a word that is none: up to `most` of them, fewest edits (insert, delete or replace one
// character) first and, at equal distance, in file order. Keys more than `furthest` edits away are left out.
std::vector<std::string_view> nearestSettingKeys(std::string_view word, std::size_t most, std::size_t furthest);

// The catalogue row of a field of the main form or the weapon dialog; null for a field of the flags dialog.
const FieldRow* fieldRowOf(FieldId field);

} // namespace ks
