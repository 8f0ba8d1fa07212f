#pragma once

#include "forms/layer.h"

#include "forms/settings_dialog.h"

namespace ks {

// The weapon tuning dialog, a view of Form2: its fields under their headings. Close and the window's
// close box only hide it.
class WeaponsDialog : public SettingsDialog {
    Q_OBJECT
public:
    explicit WeaponsDialog(Program& program, QWidget* parent = nullptr);
};

} // namespace ks
