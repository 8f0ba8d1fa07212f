#pragma once

#include "forms/layer.h"

#include "frame/field.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>

namespace ks {

// A text box that shows one field of the core. What the operator types goes to the field; a change of the
// field by code shows here without running the field's handlers again. Leaving the box validates the field.
// A setting's text is bytes, shown as Latin-1; a path (FFile, QDIR, FGD) is shown in the file system's encoding.
class FieldEdit : public QLineEdit {
    Q_OBJECT
public:
    enum class Holds { Text, Path };
    explicit FieldEdit(Field& field, QWidget* parent = nullptr, Holds holds = Holds::Text);
    ~FieldEdit() override;

    Field& field() const { return field_; }

protected:
    void focusOutEvent(QFocusEvent* event) override;

private:
    void refresh();

    QString shown(const std::string& text) const;

    Field& field_;
    Holds holds_;
    Observers::Id view_;
};

// A check box that shows one check box of the core; an operator's click sets the core state.
class CheckView : public QCheckBox {
    Q_OBJECT
public:
    explicit CheckView(CheckBox& box, QWidget* parent = nullptr);
    ~CheckView() override;

    CheckBox& box() const { return box_; }

private:
    void refresh();

    CheckBox& box_;
    Observers::Id view_;
};

// The phrases of a caption, split where two blanks or more stand in a row (spaces, tabs, line breaks); a single
// blank stays inside its phrase.
QStringList captionPhrases(const QString& caption);

// One label beside two fields: the caption's phrases, split where a run of blanks stands, each drawn
// level with its own field.
class SpanLabel : public QLabel {
    Q_OBJECT
public:
    SpanLabel(const QString& caption, int rows, QWidget* parent = nullptr);
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QStringList phrases() const;
    int rows_;
};

} // namespace ks
