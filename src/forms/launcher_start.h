#pragma once

#include "forms/layer.h"

#include "forms/splash_screen.h"

#include <QObject>
#include <QPointer>

#include <memory>
#include <optional>
#include <string>

namespace ks {

class MainWindow;
class Program;
class QtPlatform;

// The launcher's start as the operator sees it. The splash comes first and is painted at once; the main
// window is built and loaded unseen behind it ("Use Default" on, the search for the mod's directory, whose
// message stands over the splash). The splash's end unloads it and shows the main window: on the first tab
// after Continue, on "Team Play" after the splash's own timer, with the keyboard on the first field of that tab.
// Only the first of the two ends counts.
//
// An end that comes while the load's message is still open waits for the answer: the splash stays until the
// message, which stands over it, has closed, and the main window shows loaded.
class LauncherStart : public QObject {
    Q_OBJECT
public:
    // `qtPlatform` is the desktop's platform, or null when the program runs on another one (the tests).
    // `fileToOpen`, when not empty, is opened once the main window shows, as File, Open opens a chosen file.
    LauncherStart(Program& program, QtPlatform* qtPlatform, std::string fileToOpen = {});
    ~LauncherStart() override;

    MainWindow& window() const { return *window_; }
    // Null once the splash has ended.
    SplashScreen* splash() const { return splash_; }

private:
    void splashEnded(bool byContinue);
    void handOver(bool byContinue);

    Program& program_;
    QtPlatform* qtPlatform_;
    std::string fileToOpen_;
    std::unique_ptr<MainWindow> window_;
    QPointer<SplashScreen> splash_;
    bool loading_ = false;
    std::optional<bool> endedWhileLoading_; // by Continue or not
};

} // namespace ks
