#pragma once

#include <QDialog>

namespace ks {

class Program;
class RowTabs;

// The flags dialog, a view of Form1: six tabs of check boxes with their item fields and totals, and the
// start ammunition. Close and the window's close box only hide it, so everything stays as it was left.
class FlagsDialog : public QDialog {
    Q_OBJECT
public:
    explicit FlagsDialog(Program& program, QWidget* parent = nullptr);

    RowTabs* tabs() const { return tabs_; }

private:
    void buildPage(int tab);
    void Command1_Click();

    Program& program_;
    RowTabs* tabs_;
};

} // namespace ks
