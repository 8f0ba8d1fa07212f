#pragma once

#include "forms/layer.h"

#include <QDialog>

#include <string_view>

namespace ks {

class Program;

// A modal dialog of settings with a Close button under its content. Close plays its cue and hides the
// dialog; the window's close box and Escape hide it too, so every value stays as it was left.
class SettingsDialog : public QDialog {
    Q_OBJECT
public:
    SettingsDialog(Program& program, const char* name, std::string_view title, QWidget* parent);

protected:
    // Puts the content above the Close button.
    void setContent(QWidget* content);

    Program& program_;

private:
    // The Close button: its cue, then the dialog hides.
    void closeDialog();
};

} // namespace ks
