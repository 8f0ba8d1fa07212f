#pragma once

#include <QMainWindow>

class QLabel;
class QTimer;

namespace ks {

class Program;
class RowTabs;
class FlagsDialog;
class WeaponsDialog;
struct MenuEntry;

// The launcher's working window, a view of the main form: two dialog buttons and the current file above
// four tabs of settings, the menus and a status bar with date and time.
class MainWindow : public QMainWindow {
    Q_OBJECT
public:
    explicit MainWindow(Program& program, QWidget* parent = nullptr);
    ~MainWindow() override;

    RowTabs* tabs() const { return tabs_; }
    // The two dialogs; each comes into being at its first opening and then only hides.
    FlagsDialog* flagsDialog();
    WeaponsDialog* weaponsDialog();

    // The two buttons above the tabs: each plays its cue and opens its dialog modally.
    void openFlagsDialog();
    void openWeaponsDialog();
    // Help, About: the splash screen again, modal.
    void showAbout();
    // The end of the program: the exit animation, then the event loop ends, so everything is torn down in order.
    void leaveProgram();

protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;

private:
    void buildControls();
    void buildPages();
    void buildMenus();
    void buildStatusBar();
    void updateClock();
    void runCommand(const MenuEntry& entry);

    Program& program_;
    RowTabs* tabs_ = nullptr;
    QLabel* date_ = nullptr;
    QLabel* time_ = nullptr;
    QTimer* clock_ = nullptr;
    FlagsDialog* flags_ = nullptr;
    WeaponsDialog* weapons_ = nullptr;
    bool leaving_ = false;
};

} // namespace ks
