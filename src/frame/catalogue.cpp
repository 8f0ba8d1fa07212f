#include "frame/catalogue.h"

#include "frame/colour.h"
#include "frame/field.h"

#include <string>
#include <vector>

namespace ks {

namespace {

Field& addRow(Form& form, const FieldRow& row) {
    return form.addField(std::string(row.name), std::string(row.key), std::string(row.defaultText),
                         std::string(row.label), std::string(row.toolTip));
}

template <std::size_t N> std::vector<std::string> captions(const std::string_view (&rows)[N]) {
    return std::vector<std::string>(std::begin(rows), std::end(rows));
}

} // namespace

void buildMainForm(Form& form) {
    for (const FieldRow& row : kMainFieldRows) {
        Field& field = addRow(form, row);
        if (row.kind == ValueKind::Path) {
            // The sentinels: read-only, yellow while unset.
            field.setEnabled(false);
            field.setBackColour(kPaleYellow);
        }
    }
    for (const CheckRow& row : kMainCheckRows)
        form.addCheckBox(std::string(row.name), std::string(row.caption), std::string(row.toolTip));
    form.addTabs("SSTab1", captions(kMainTabRows), kMainFirstTab);
}

void buildFlagsForm(Form& form) {
    for (const FlagGroup& group : kFlagGroupRows) {
        for (const FlagMember& member : group.members) {
            form.addCheckBox(std::string(member.check), std::string(member.caption), "", member.startsOn ? 1 : 0);
            Field& item = form.addField(std::string(member.item), std::string(member.key),
                                        member.startsOn ? std::to_string(member.bit) : "0", "", "");
            item.setEnabled(group.itemsTyped);
        }
        Field& total = form.addField(std::string(group.total), std::string(group.totalKey),
                                     std::string(group.defaultTotal), std::string(group.totalLabel), "");
        total.setEnabled(group.totalTyped);
        total.setBackColour(kPaleYellow);
    }
    for (const AmmoField& ammo : kStartAmmoRows)
        form.addField(std::string(ammo.name), std::string(ammo.key), "0", std::string(ammo.label), "");
    form.addTabs("SSTab1", captions(kFlagTabRows), kFlagsFirstTab);
}

void buildWeaponsForm(Form& form) {
    for (const FieldRow& row : kWeaponFieldRows)
        addRow(form, row);
}

} // namespace ks
