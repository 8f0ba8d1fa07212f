#pragma once

#include <QDialog>

namespace ks {

class Program;

// The weapon tuning dialog, a view of Form2: its fields under their headings. Close and the window's
// close box only hide it.
class WeaponsDialog : public QDialog {
    Q_OBJECT
public:
    explicit WeaponsDialog(Program& program, QWidget* parent = nullptr);

private:
    void Command1_Click();

    Program& program_;
};

} // namespace ks
