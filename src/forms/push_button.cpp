#include "forms/push_button.h"

#include <QKeyEvent>

#include <QStyleOptionButton>
#include <QStylePainter>

namespace ks {

void PushButton::keyPressEvent(QKeyEvent* event) {
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && event->modifiers() == Qt::NoModifier) {
        click();
        return;
    }
    QPushButton::keyPressEvent(event);
}

void WrapButton::paintEvent(QPaintEvent*) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    const QString caption = option.text;
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);
    const QRect area = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this).adjusted(2, 0, -2, 0);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled, QPalette::ButtonText));
    painter.drawText(area, Qt::AlignCenter | Qt::TextWordWrap | Qt::TextShowMnemonic, caption);
    if (hasFocus()) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = area.adjusted(-1, 1, 1, -1);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }
}

} // namespace ks
