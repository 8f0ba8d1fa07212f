#include "forms/flags_dialog.h"

#include "forms/field_layout.h"
#include "forms/look.h"
#include "forms/qt_platform.h"
#include "forms/row_tabs.h"
#include "forms/views.h"
#include "frame/catalogue.h"
#include "frame/program.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>

namespace ks {

namespace {

constexpr int kMembersPerColumn = 10;
constexpr int kItemWidth = 50;
constexpr int kTotalWidth = 60;

QString qt(std::string_view text) { return toQt(std::string(text)); }

// A group under its heading, or in a plain frame when it has none.
QWidget* groupFrame(std::string_view heading) {
    if (heading.empty()) {
        auto* frame = new QWidget;
        return frame;
    }
    return new QGroupBox(qt(heading));
}

} // namespace

FlagsDialog::FlagsDialog(Program& program, QWidget* parent)
    : SettingsDialog(program, "Form1", kFlagsCaption, parent), tabs_(new RowTabs(program.flagTabs(), 3, this)) {
    for (int tab = 0; tab < tabs_->count(); ++tab)
        buildPage(tab);
    setContent(tabs_);
}

void FlagsDialog::buildPage(int tab) {
    auto* row = new QHBoxLayout(tabs_->page(tab));
    row->setContentsMargins(4, 4, 4, 4);
    row->setSpacing(8);
    for (const FlagGroup& group : flagGroups()) {
        if (group.tab != tab) continue;
        const std::size_t g = groupIndex(group);
        QWidget* frame = groupFrame(group.heading);
        auto* grid = new QGridLayout(frame);
        grid->setHorizontalSpacing(6);
        grid->setVerticalSpacing(1);
        if (group.heading.empty()) grid->setContentsMargins(0, 0, 0, 0);
        const int members = int(group.members.size());
        const int columns = (members + kMembersPerColumn - 1) / kMembersPerColumn;
        const int perColumn = (members + columns - 1) / columns;
        for (int i = 0; i < members; ++i) {
            auto* check = new CheckView(program_.check(flagCheckAt(g, std::size_t(i))));
            auto* item = new FieldEdit(program_.field(flagItemAt(g, std::size_t(i))));
            item->setFixedSize(kItemWidth, kRowHeight);
            const int column = (i / perColumn) * 2;
            grid->addWidget(check, i % perColumn, column);
            grid->addWidget(item, i % perColumn, column + 1);
        }
        auto* totalLabel = new QLabel(qt(group.totalLabel));
        auto* total = new FieldEdit(program_.field(flagTotalAt(g)));
        total->setFixedSize(kTotalWidth, kRowHeight);
        totalLabel->setBuddy(total);
        totalLabel->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
        const int totalRow = perColumn + 1;
        grid->setRowMinimumHeight(perColumn, 6);
        grid->addWidget(totalLabel, totalRow, columns * 2 - 2);
        grid->addWidget(total, totalRow, columns * 2 - 1);
        grid->setRowStretch(totalRow + 1, 1);
        row->addWidget(frame, 0, Qt::AlignTop);
    }
    if (tab == kStartAmmoTab) {
        auto* box = new QGroupBox(qt(kStartAmmoHeading));
        auto* grid = new QGridLayout(box);
        grid->setHorizontalSpacing(6);
        grid->setVerticalSpacing(1);
        for (std::size_t ammoRow = 0; ammoRow < std::size(kStartAmmoRows); ++ammoRow) {
            const AmmoField& ammo = kStartAmmoRows[ammoRow];
            auto* edit = new FieldEdit(program_.field(startAmmoAt(ammoRow)));
            edit->setFixedSize(kItemWidth, kRowHeight);
            auto* label = new QLabel(qt(ammo.label));
            label->setBuddy(edit);
            const int line = grid->rowCount();
            grid->addWidget(label, line, 0);
            grid->addWidget(edit, line, 1);
        }
        grid->setRowStretch(grid->rowCount(), 1);
        row->addWidget(box, 0, Qt::AlignTop);
    }
    row->addStretch(1);
}

} // namespace ks
