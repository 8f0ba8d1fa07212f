#include "config/reader_keys.h"

#include "config/setting_keys.h"

#include <string>
#include <unordered_map>

namespace ks {

namespace {

std::string_view readKeyOf(FieldId field, std::string_view writtenKey) {
    for (const KeyReadOtherwise& other : kKeysReadOtherwise)
        if (other.field == field) return other.readKey;
    return writtenKey;
}

struct KeyTables {
    std::unordered_map<std::string_view, ReadKey> second;
    std::unordered_map<std::string_view, ReadKey> third;
};

// Both tables, from the settings of a written file.
KeyTables buildKeyTables() {
    KeyTables tables;
    for (const SettingKey& setting : settingKeys()) {
        const FieldId field = setting.field;
        const std::string_view key = readKeyOf(field, setting.key);
        switch (setting.line) {
        case LineKind::Section:
        case LineKind::Empty:
            break;
        case LineKind::Set:
        case LineKind::Bare: {
            // The host name and the start map are known by their first word; a total is not read.
            if (field == id::FHOSTN || field == id::FSM || setting.kind == SettingKind::Total) break;
            const ReadAction action = field == id::FGD ? ReadAction::GameDirectory : ReadAction::Text;
            tables.second.emplace(key, ReadKey{key, action, field, {}});
            break;
        }
        case LineKind::Marked:
        case LineKind::Comment: {
            ReadKey read{key, ReadAction::Text, field, {}};
            if (field == id::QDIR) {
                read.action = ReadAction::QuakeDirectory;
            } else if (setting.kind == SettingKind::Address) {
                read.action = ReadAction::Address;
            } else if (setting.kind == SettingKind::Flag) {
                read.action = ReadAction::Flag;
                read.check = setting.check;
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
