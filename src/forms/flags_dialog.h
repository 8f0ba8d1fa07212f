#pragma once

#include "forms/layer.h"

#include "forms/settings_dialog.h"

namespace ks {

class RowTabs;

// The flags dialog, a view of Form1: six tabs of check boxes with their item fields and totals, and the
// start ammunition. Close and the window's close box only hide it, so everything stays as it was left.
class FlagsDialog : public SettingsDialog {
    Q_OBJECT
public:
    explicit FlagsDialog(Program& program, QWidget* parent = nullptr);

    RowTabs* tabs() const { return tabs_; }

private:
    void buildPage(int tab);
    RowTabs* tabs_;
};

} // namespace ks
