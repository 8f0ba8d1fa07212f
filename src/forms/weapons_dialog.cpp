#include "forms/weapons_dialog.h"

#include "forms/field_layout.h"
#include "forms/look.h"
#include "forms/qt_platform.h"
#include "frame/catalogue.h"
#include "frame/program.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QVBoxLayout>

namespace ks {

namespace {
constexpr ColumnPlan kWeaponsPlan{{"Weapons Damage", "Weapon Kickback"}, {230, 170, 170}, 3};
} // namespace

WeaponsDialog::WeaponsDialog(Program& program, QWidget* parent) : QDialog(parent), program_(program) {
    setObjectName(QStringLiteral("Form2"));
    setWindowTitle(toQt(std::string(kWeaponsCaption)));
    setFont(launcherFont());
    setModal(true);

    auto* page = new QWidget;
    layOutFields(page, program.Form2, weaponFields(), kAnyTab, kWeaponsPlan);

    auto* close = new QPushButton(toQt(std::string(kCloseCaption)));
    close->setObjectName(QStringLiteral("Command1"));
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &WeaponsDialog::Command1_Click);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(page, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(close);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void WeaponsDialog::Command1_Click() {
    program_.PlayCue("button.wav");
    hide();
}

} // namespace ks
