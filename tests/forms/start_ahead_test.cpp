// The thread beside the start runs before the application object exists: however long the main thread takes to
// make the application, it stays Qt's main thread, and the pictures come over. A program of its own, because the
// application object must not exist when it starts.

#include "forms/start_ahead.h"
#include "support/temp_dir.h"

#include <QApplication>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>

namespace {

// Qt says so when the application object is made on another thread than the one Qt took for the main thread.
std::atomic<bool> notMainThread = false;

void noteMessage(QtMsgType, const QMessageLogContext&, const QString& message) {
    if (message.contains(QLatin1String("main() thread"))) notMainThread = true;
}

} // namespace

int main(int argc, char** argv) {
    qInstallMessageHandler(noteMessage);
    ks::test::TempDir temp;
    const ks::SplashPictureCache cache(QString::fromStdString(temp.file("splash-pictures")));
    ks::StartAhead ahead(cache);
    // The thread has looked for the kept pictures long before the application comes.
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
    QApplication app(argc, argv);
    ahead.applicationReady();
    const ks::SplashPictures pictures = ahead.takeSplashPictures();
    if (notMainThread) std::fputs("the thread beside the start became Qt's main thread\n", stderr);
    if (pictures.backdrop.isNull() || pictures.banners[2].isNull()) std::fputs("the pictures did not come\n", stderr);
    return notMainThread || pictures.backdrop.isNull() || pictures.banners[2].isNull() ? 1 : 0;
}
