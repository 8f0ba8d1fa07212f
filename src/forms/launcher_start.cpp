#include "forms/launcher_start.h"

#include "forms/main_window.h"
#include "forms/qt_platform.h"
#include "forms/splash_screen.h"
#include "forms/startup_trace.h"
#include "frame/program.h"
#include "session/startup.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <QWindow>

#include <utility>

namespace ks {

namespace {

// A window manager may hold a new window back; the start does not wait longer than this for the splash.
constexpr int kFirstFrameWaitMs = 250;

// Runs the event loop until the window has been exposed, which paints it and hands the frame to the screen.
void waitForFirstFrame(QWidget& window) {
    QWindow* handle = window.windowHandle();
    if (!handle) return;
    const QDeadlineTimer deadline(kFirstFrameWaitMs);
    QTimer wake; // ends the wait for events when nothing else comes
    wake.setSingleShot(true);
    wake.start(kFirstFrameWaitMs);
    while (!handle->isExposed() && !deadline.hasExpired())
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents | QEventLoop::WaitForMoreEvents);
}

} // namespace

LauncherStart::LauncherStart(Program& program, QtPlatform* qtPlatform, std::string fileToOpen)
    : program_(program), qtPlatform_(qtPlatform), fileToOpen_(std::move(fileToOpen)) {
    // The splash's load step starts its timers and asks for the start sound. The splash is on the screen before
    // anything else is built; the sound starts right after its first frame, so that waking the sound system does
    // not hold the frame back.
    bool startSoundDue = false;
    splash_ = new SplashScreen([&startSoundDue] { startSoundDue = true; });
    connect(splash_, &SplashScreen::finished, this, &LauncherStart::splashEnded);
    splash_->show();
    waitForFirstFrame(*splash_);
    if (startSoundDue) program_.playCue(kStartSound);

    window_ = std::make_unique<MainWindow>(program_);
    connect(window_.get(), &MainWindow::farewellPlayed, this, [] { QCoreApplication::exit(0); });
    if (qtPlatform_) {
        qtPlatform_->setDialogParent(splash_);
        qtPlatform_->setProgramEnd([this] { window_->leaveProgram(); });
    }
    loading_ = true;
    loadMainForm(program_);
    loading_ = false;
    if (qtPlatform_) qtPlatform_->setDialogParent(window_.get());
    // All that is left before the main window shows is the splash's end.
    traceStartupStep("ready");
    if (endedWhileLoading_) handOver(*endedWhileLoading_);
}

LauncherStart::~LauncherStart() { delete splash_; }

void LauncherStart::splashEnded(bool byContinue) {
    // The splash owns the load's message, whose box is still open: it goes once the box has closed.
    if (loading_)
        endedWhileLoading_ = byContinue;
    else
        handOver(byContinue);
}

void LauncherStart::handOver(bool byContinue) {
    traceStartupStep("splash-ended");
    splash_->hide();
    splash_->deleteLater();
    splash_ = nullptr;
    if (byContinue) program_.mainTabs().setCurrent(0);
    window_->show();
    // The main window takes the keyboard from the splash, also where no window manager hands it on, on the first
    // field of its tab (showing a window forgets that the keyboard's focus should be shown).
    window_->raise();
    window_->activateWindow();
    window_->takeKeyboard();
    if (!fileToOpen_.empty())
        QTimer::singleShot(0, this, [this] { window_->openConfig(std::exchange(fileToOpen_, {})); });
}

} // namespace ks
