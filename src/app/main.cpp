#include "forms/launcher_start.h"
#include "forms/qt_platform.h"
#include "forms/start_ahead.h"
#include "forms/startup_trace.h"
#include "frame/program.h"
#include "session/startup.h"

#include <QApplication>

#include <cstdio>
#include <cstdlib>

namespace {

// Qt ends the process when it finds no display; say why in words instead.
bool displayAvailable() {
#if defined(_WIN32) || defined(__APPLE__)
    return true;
#else
    const auto set = [](const char* name) {
        const char* value = std::getenv(name);
        return value && *value;
    };
    return set("DISPLAY") || set("WAYLAND_DISPLAY") || set("QT_QPA_PLATFORM");
#endif
}

} // namespace

int main(int argc, char** argv) {
    if (!displayAvailable()) {
        std::fputs("kslaunch needs a graphical display and none was found (DISPLAY is not set); "
                   "use kscfg to write, convert or launch configurations from the shell.\n",
                   stderr);
        return 1;
    }
    ks::StartAhead ahead;
    QApplication app(argc, argv);
    ks::traceStartup();
    ahead.applicationReady();
    // The launcher ends by its exit animation, not by its last window closing.
    QApplication::setQuitOnLastWindowClosed(false);
    ks::QtPlatform platform;
    ks::Program program(platform);
    ks::connectHandlers(program);
    ks::LauncherStart start(program, &platform, &ahead);
    return app.exec();
}
