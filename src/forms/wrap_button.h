#pragma once

#include <QPushButton>

namespace ks {

// A push button whose caption wraps onto more lines when it is wider than the button.
class WrapButton : public QPushButton {
    Q_OBJECT
public:
    using QPushButton::QPushButton;

protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace ks
