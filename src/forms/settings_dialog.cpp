#include "forms/settings_dialog.h"

#include "forms/look.h"
#include "forms/qt_platform.h"
#include "frame/catalogue.h"
#include "frame/program.h"

#include "forms/push_button.h"
#include <QHBoxLayout>
#include <QVBoxLayout>

namespace ks {

SettingsDialog::SettingsDialog(Program& program, const char* name, std::string_view title, QWidget* parent)
    : QDialog(parent), program_(program) {
    setObjectName(QString::fromLatin1(name));
    setWindowTitle(toQt(std::string(title)));
    setFont(launcherFont());
    setModal(true);
}

void SettingsDialog::setContent(QWidget* content) {
    auto* close = new PushButton(toQt(std::string(kCloseCaption)));
    close->setObjectName(QStringLiteral("Command1"));
    close->setAutoDefault(false);
    connect(close, &QPushButton::clicked, this, &SettingsDialog::closeDialog);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(content, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(close);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void SettingsDialog::closeDialog() {
    program_.playCue(kCloseButtonSound);
    hide();
}

} // namespace ks
