#include "forms/launcher_start.h"

#include "forms/main_window.h"
#include "forms/qt_platform.h"
#include "forms/splash_screen.h"
#include "forms/start_ahead.h"
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

LauncherStart::LauncherStart(Program& program, QtPlatform* qtPlatform, StartAhead* ahead)
    : program_(program), qtPlatform_(qtPlatform) {
    // The splash's load step starts its timers and asks for the start sound. The splash is on the screen before
    // anything else is built; the sound starts right after its first frame, so that waking the sound system does
    // not hold the frame back.
    //
    // A first frame kept from the last run reaches the screen before the texts are laid out; they are built right
    // after it, on the same pixels.
    bool startSoundDue = false;
    std::function<SplashPictures()> pictures = drawSplashPictures;
    SplashPictureCache::KeptFrame kept;
    if (ahead) {
        pictures = [ahead] { return ahead->takeSplashPictures(); };
        kept = ahead->takeKeptFrame();
    }
    splash_ = new SplashScreen(
        toQt(std::string(kProgramVersionText)), [&startSoundDue] { startSoundDue = true; }, nullptr, pictures, &kept);
    connect(splash_, &SplashScreen::finished, this, &LauncherStart::splashEnded);
    splash_->show();
    waitForFirstFrame(*splash_);
    splash_->finishLoad();
    kept.image = QImage(); // shown and done with
    if (startSoundDue) program_.playCue("ks4a.wav");

    window_ = std::make_unique<MainWindow>(program_);
    if (qtPlatform_) {
        qtPlatform_->setDialogParent(splash_);
        qtPlatform_->setProgramEnd([this] { window_->leaveProgram(); });
    }
    loadMainForm(program_);
    if (qtPlatform_) qtPlatform_->setDialogParent(window_.get());
    // All that is left before the main window shows is the splash's end.
    traceStartupStep("ready");
    if (ahead)
        QTimer::singleShot(0, this, [this, ahead, keptLabel = kept.label] { keepSplashFrame(*ahead, keptLabel); });
}

void LauncherStart::keepSplashFrame(const StartAhead& ahead, const QByteArray& keptLabel) {
    // A frame under the label of the splash as it stands now looks like it: nothing to keep.
    if (!splash_ || splash_->frameLabel() == keptLabel) return;
    const QImage frame = splash_->renderFrame();
    if (!frame.isNull()) ahead.keepFrame({splash_->frameLabel(), frame});
}

LauncherStart::~LauncherStart() { delete splash_; }

void LauncherStart::splashEnded(bool byContinue) {
    traceStartupStep("splash-ended");
    splash_->hide();
    splash_->deleteLater();
    splash_ = nullptr;
    window_->show();
    // The main window takes the keyboard from the splash, also where no window manager hands it on.
    window_->raise();
    window_->activateWindow();
    if (byContinue) program_.mainTabs().setCurrent(0);
}

} // namespace ks
