#pragma once

#include "forms/splash_screen.h"

#include <QObject>
#include <QPointer>

#include <memory>

namespace ks {

class MainWindow;
class Program;
class QtPlatform;
class StartAhead;

// The launcher's start as the operator sees it. The splash comes first and is painted at once; the main
// window is built and loaded unseen behind it ("Use Default" on, the search for the mod's directory, whose
// message stands over the splash). The splash's end unloads it and shows the main window: on the first tab
// after Continue, on "Team Play" after the splash's own timer. Only the first of the two ends counts.
class LauncherStart : public QObject {
    Q_OBJECT
public:
    // `qtPlatform` is the desktop's platform, or null when the program runs on another one (the tests). `ahead`,
    // when given, draws the splash's pictures, hands over its first frame kept from the last run and keeps this
    // run's when it differs.
    LauncherStart(Program& program, QtPlatform* qtPlatform, StartAhead* ahead = nullptr);
    ~LauncherStart() override;

    MainWindow& window() const { return *window_; }
    // Null once the splash has ended.
    SplashScreen* splash() const { return splash_; }

private:
    void splashEnded(bool byContinue);
    // Keeps the splash as it looks now for the next start, unless the kept frame is of the same look.
    void keepSplashFrame(const StartAhead& ahead, const QByteArray& keptLabel);

    Program& program_;
    QtPlatform* qtPlatform_;
    std::unique_ptr<MainWindow> window_;
    QPointer<SplashScreen> splash_;
};

} // namespace ks
