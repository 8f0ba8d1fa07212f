#include "forms/launcher_start.h"

#include "forms/main_window.h"
#include "forms/qt_platform.h"
#include "forms/splash_screen.h"
#include "forms/startup_trace.h"
#include "frame/program.h"
#include "session/startup.h"

#include <QCoreApplication>

namespace ks {

LauncherStart::LauncherStart(Program& program, QtPlatform* qtPlatform) : program_(program), qtPlatform_(qtPlatform) {
    // The splash's load step plays the start sound and starts its timers; it is on the screen before anything
    // else is built.
    splash_ = new SplashScreen(toQt(std::string(kProgramVersionText)), [this] { program_.playCue("ks4a.wav"); });
    connect(splash_, &SplashScreen::finished, this, &LauncherStart::splashEnded);
    splash_->show();
    splash_->repaint();
    QCoreApplication::processEvents();

    window_ = std::make_unique<MainWindow>(program_);
    if (qtPlatform_) {
        qtPlatform_->setDialogParent(splash_);
        qtPlatform_->setProgramEnd([this] { window_->leaveProgram(); });
    }
    loadMainForm(program_);
    if (qtPlatform_) qtPlatform_->setDialogParent(window_.get());
    // All that is left before the main window shows is the splash's end.
    traceStartupStep("ready");
}

LauncherStart::~LauncherStart() { delete splash_; }

void LauncherStart::splashEnded(bool byContinue) {
    traceStartupStep("splash-ended");
    splash_->hide();
    splash_->deleteLater();
    splash_ = nullptr;
    window_->show();
    if (byContinue) program_.mainTabs().setCurrent(0);
}

} // namespace ks
