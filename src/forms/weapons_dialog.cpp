#include "forms/weapons_dialog.h"

#include "forms/field_layout.h"
#include "frame/catalogue.h"
#include "frame/program.h"

#include <QWidget>

namespace ks {

namespace {
constexpr ColumnPlan kWeaponsPlan{{"Weapons Damage", "Weapon Kickback"}, {230, 170, 170}, 3};
} // namespace

WeaponsDialog::WeaponsDialog(Program& program, QWidget* parent)
    : SettingsDialog(program, "Form2", kWeaponsCaption, parent) {
    auto* page = new QWidget;
    layOutFields(page, program.form(FormId::Weapons), weaponFields(), kAnyTab, kWeaponsPlan);
    setContent(page);
}

} // namespace ks
