#include "forms/views.h"

#include "forms/look.h"
#include "forms/qt_platform.h"

#include <QFocusEvent>
#include <QPainter>
#include <QSignalBlocker>

namespace ks {

FieldEdit::FieldEdit(Field& field, QWidget* parent, Holds holds) : QLineEdit(parent), field_(field), holds_(holds) {
    setObjectName(toQt(field.name()));
    setToolTip(toQt(field.toolTip()));
    view_ = field_.addView([this] { refresh(); });
    connect(this, &QLineEdit::textEdited, this,
            [this](const QString& text) { field_.setText(holds_ == Holds::Path ? pathFromQt(text) : fromQt(text)); });
    refresh();
}

FieldEdit::~FieldEdit() { field_.removeView(view_); }

QString FieldEdit::shown(const std::string& text) const { return holds_ == Holds::Path ? pathToQt(text) : toQt(text); }

void FieldEdit::refresh() {
    const QString text = shown(field_.text());
    if (this->text() != text) {
        const QSignalBlocker blocker(this);
        setText(text);
        // A text set by code is shown from its beginning, as the operator would read it.
        if (!hasFocus()) setCursorPosition(0);
    }
    setEnabled(field_.enabled());
    QPalette colours = palette();
    const QColor back = toQColor(field_.backColour());
    for (auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        colours.setColor(group, QPalette::Base, back);
    // Disabled text stays readable on the pale backgrounds.
    colours.setColor(QPalette::Disabled, QPalette::Text, QColor(96, 96, 96));
    setPalette(colours);
}

void FieldEdit::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    // Only a move to another control of the form counts as leaving the field; a message box, a menu or
    // another window taking the focus does not.
    const auto reason = event->reason();
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason || reason == Qt::MenuBarFocusReason)
        return;
    field_.validate();
}

CheckView::CheckView(CheckBox& box, QWidget* parent) : QCheckBox(toQt(box.caption()), parent), box_(box) {
    setObjectName(toQt(box.name()));
    setToolTip(toQt(box.toolTip()));
    view_ = box_.addView([this] { refresh(); });
    connect(this, &QCheckBox::clicked, this, [this](bool checked) { box_.setState(checked ? 1 : 0); });
    refresh();
}

CheckView::~CheckView() { box_.removeView(view_); }

void CheckView::refresh() {
    const bool on = box_.state() == 1;
    if (isChecked() != on) {
        const QSignalBlocker blocker(this);
        setChecked(on);
    }
}

SpanLabel::SpanLabel(const QString& caption, int rows, QWidget* parent) : QLabel(caption, parent), rows_(rows) {}

QStringList captionPhrases(const QString& caption) {
    const auto blank = [](QChar c) { return c == u' ' || (c >= u'\t' && c <= u'\r'); };
    QStringList phrases;
    qsizetype start = 0;
    for (qsizetype i = 0; i < caption.size();) {
        if (!blank(caption[i])) {
            ++i;
            continue;
        }
        qsizetype end = i;
        while (end < caption.size() && blank(caption[end]))
            ++end;
        if (end - i >= 2) {
            if (i > start) phrases << caption.mid(start, i - start);
            start = end;
        }
        i = end;
    }
    if (caption.size() > start) phrases << caption.mid(start);
    return phrases;
}

QStringList SpanLabel::phrases() const { return captionPhrases(text()); }

QSize SpanLabel::sizeHint() const {
    int width = 0;
    for (const QString& phrase : phrases())
        width = qMax(width, fontMetrics().horizontalAdvance(phrase));
    return QSize(width + 2, fontMetrics().height() * rows_);
}

void SpanLabel::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    const QStringList parts = phrases();
    const int band = height() / qMax(1, rows_);
    for (int i = 0; i < parts.size(); ++i) {
        const int row = qMin(i, rows_ - 1);
        painter.drawText(QRect(0, row * band, width(), band),
                         int(alignment() & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter, parts[i]);
    }
}

} // namespace ks
