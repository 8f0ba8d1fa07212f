#include "config/setting_keys.h"

#include <algorithm>
#include <numeric>
#include <unordered_map>

namespace ks {

namespace {

// The key, kind and check box of a field of the flags dialog: a member's item field, a total or a start ammo.
SettingKey flagsSetting(FieldId field, LineKind line) {
    for (std::size_t g = 0; g < std::size(kFlagGroupRows); ++g) {
        const FlagGroup& group = kFlagGroupRows[g];
        for (std::size_t m = 0; m < group.members.size(); ++m)
            if (flagItemAt(g, m) == field)
                return {group.members[m].key, line, field, SettingKind::Flag, flagCheckAt(g, m), g};
        if (flagTotalAt(g) == field) return {group.totalKey, line, field, SettingKind::Total, {}, g};
    }
    for (std::size_t row = 0; row < std::size(kStartAmmoRows); ++row)
        if (startAmmoAt(row) == field) return {kStartAmmoRows[row].key, line, field, SettingKind::Number};
    return {{}, line, field};
}

SettingKind kindOf(const FieldRow& row) {
    switch (row.kind) {
    case ValueKind::Address:
        return SettingKind::Address;
    case ValueKind::Switch:
    case ValueKind::Number:
        return SettingKind::Number;
    default:
        return SettingKind::Text;
    }
}

std::vector<SettingKey> buildSettingKeys() {
    std::vector<SettingKey> all;
    for (const LayoutLine& line : configLayout()) {
        if (line.kind == LineKind::Section || line.kind == LineKind::Empty) continue;
        if (line.field.form == FormId::Flags) {
            all.push_back(flagsSetting(line.field, line.kind));
            continue;
        }
        const FieldRow& row = *fieldRowOf(line.field);
        all.push_back({row.key, line.kind, line.field, kindOf(row)});
    }
    return all;
}

const std::vector<SettingKey>& allSettings() {
    static const std::vector<SettingKey> all = buildSettingKeys();
    return all;
}

std::size_t editDistance(std::string_view a, std::string_view b) {
    std::vector<std::size_t> row(b.size() + 1);
    std::iota(row.begin(), row.end(), std::size_t{0});
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t above = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

} // namespace

std::span<const SettingKey> settingKeys() { return allSettings(); }

const SettingKey* findSettingKey(std::string_view key) {
    static const std::unordered_map<std::string_view, const SettingKey*> byKey = [] {
        std::unordered_map<std::string_view, const SettingKey*> map;
        for (const SettingKey& setting : allSettings())
            map.emplace(setting.key, &setting);
        return map;
    }();
    const auto it = byKey.find(key);
    return it == byKey.end() ? nullptr : it->second;
}

const SettingKey* settingOfField(FieldId field) {
    for (const SettingKey& setting : allSettings())
        if (setting.field == field) return &setting;
    return nullptr;
}

std::vector<std::string_view> nearestSettingKeys(std::string_view word, std::size_t most, std::size_t furthest) {
    std::vector<std::pair<std::size_t, std::string_view>> near;
    for (const SettingKey& setting : allSettings()) {
        // The lengths alone set a floor under the distance: a long word is never near any key.
        const std::size_t longer = std::max(word.size(), setting.key.size());
        if (longer - std::min(word.size(), setting.key.size()) > furthest) continue;
        if (const std::size_t distance = editDistance(word, setting.key); distance <= furthest)
            near.emplace_back(distance, setting.key);
    }
    std::stable_sort(near.begin(), near.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    std::vector<std::string_view> keys;
    for (std::size_t i = 0; i < near.size() && i < most; ++i)
        keys.push_back(near[i].second);
    return keys;
}

const FieldRow* fieldRowOf(FieldId field) {
    switch (field.form) {
    case FormId::Main:
        return &kMainFieldRows[field.index];
    case FormId::Weapons:
        return &kWeaponFieldRows[field.index];
    case FormId::Flags:
        break;
    }
    return nullptr;
}

} // namespace ks
