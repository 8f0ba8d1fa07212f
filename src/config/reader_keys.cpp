#include "config/reader_keys.h"

#include "config/layout.h"

#include <string>
#include <unordered_map>

namespace ks {

namespace {

std::string_view readKeyOf(FieldId field, std::string_view writtenKey) {
    for (const KeyReadOtherwise& other : kKeysReadOtherwise)
        if (other.field == field) return other.readKey;
    return writtenKey;
}

std::string_view writtenKeyOf(FieldId field) {
    switch (field.form) {
    case FormId::Main:
        return kMainFieldRows[field.index].key;
    case FormId::Weapons:
        return kWeaponFieldRows[field.index].key;
    case FormId::Flags:
        break;
    }
    for (std::size_t g = 0; g < std::size(kFlagGroupRows); ++g)
        for (std::size_t m = 0; m < kFlagGroupRows[g].members.size(); ++m)
            if (flagItemAt(g, m) == field) return kFlagGroupRows[g].members[m].key;
    for (std::size_t row = 0; row < std::size(kStartAmmoRows); ++row)
        if (startAmmoAt(row) == field) return kStartAmmoRows[row].key;
    return {}; // a total
}

// The check box of the flag member whose item field this is.
const CheckId* memberCheckOf(FieldId field) {
    static std::unordered_map<std::uint16_t, CheckId> checks = [] {
        std::unordered_map<std::uint16_t, CheckId> all;
        for (std::size_t g = 0; g < std::size(kFlagGroupRows); ++g)
            for (std::size_t m = 0; m < kFlagGroupRows[g].members.size(); ++m)
                all.emplace(flagItemAt(g, m).index, flagCheckAt(g, m));
        return all;
    }();
    if (field.form != FormId::Flags) return nullptr;
    const auto it = checks.find(field.index);
    return it == checks.end() ? nullptr : &it->second;
}

struct KeyTables {
    std::unordered_map<std::string_view, ReadKey> second;
    std::unordered_map<std::string_view, ReadKey> third;
};

// Both tables, from the lines of a written file.
KeyTables buildKeyTables() {
    KeyTables tables;
    for (const LayoutLine& line : configLayout()) {
        const FieldId field = line.field;
        switch (line.kind) {
        case LineKind::Section:
        case LineKind::Empty:
            break;
        case LineKind::Set:
        case LineKind::Bare: {
            if (field == id::FHOSTN || field == id::FSM) break; // known by their first word
            const std::string_view key = readKeyOf(field, writtenKeyOf(field));
            if (field.form == FormId::Flags) break; // a total
            const ReadAction action = field == id::FGD ? ReadAction::GameDirectory : ReadAction::Text;
            tables.second.emplace(key, ReadKey{key, action, field, {}});
            break;
        }
        case LineKind::Marked:
        case LineKind::Comment: {
            const std::string_view key = readKeyOf(field, writtenKeyOf(field));
            ReadKey read{key, ReadAction::Text, field, {}};
            if (field == id::QDIR) {
                read.action = ReadAction::QuakeDirectory;
            } else if (field == id::IP) {
                read.action = ReadAction::Address;
            } else if (const CheckId* check = memberCheckOf(field)) {
                read.action = ReadAction::Flag;
                read.check = *check;
            }
            tables.third.emplace(key, read);
            break;
        }
        }
    }
    return tables;
}

const KeyTables& keyTables() {
    static const KeyTables tables = buildKeyTables();
    return tables;
}

const ReadKey* find(const std::unordered_map<std::string_view, ReadKey>& table, std::string_view word) {
    const auto it = table.find(word);
    return it == table.end() ? nullptr : &it->second;
}

} // namespace

const ReadKey* findSecondWordKey(std::string_view word) { return find(keyTables().second, word); }
const ReadKey* findThirdWordKey(std::string_view word) { return find(keyTables().third, word); }

} // namespace ks
