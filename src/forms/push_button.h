#pragma once

#include "forms/layer.h"

#include <QPushButton>

namespace ks {

// A push button that Enter presses while it has the focus, as Space does, on a window and in a dialog alike,
// without becoming a dialog's default button for Enter pressed elsewhere.
class PushButton : public QPushButton {
    Q_OBJECT
public:
    using QPushButton::QPushButton;

protected:
    void keyPressEvent(QKeyEvent* event) override;
};

// A push button whose caption wraps onto more lines when it is wider than the button.
class WrapButton : public PushButton {
    Q_OBJECT
public:
    using PushButton::PushButton;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace ks
