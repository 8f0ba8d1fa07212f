#pragma once

#include "forms/layer.h"

#include <QMainWindow>

#include <functional>
#include <string>

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
    // Opens the configuration file as File, Open does once a file is chosen.
    void openConfig(const std::string& path);
    // Puts the keyboard on the first field of the tab that shows, with the cue that the keyboard's focus has.
    void takeKeyboard();
    // The end of the program: the exit animation, then `farewellPlayed`, on which the start ends the event loop
    // with status 0, so everything is torn down in order. From the first request on, everything the operator does
    // is passed over: a second close, the menus and their keys, the buttons. The show runs to its end.
    void leaveProgram();

signals:
    void farewellPlayed();

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
    void runWithinMemory(const std::function<void()>& command);
    void playFarewell();

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
