#include "forms/start_ahead.h"

#include <QThread>

#include <utility>

#ifdef KS_HAVE_FONTCONFIG
#include <fontconfig/fontconfig.h>
#endif

namespace ks {

StartAhead::StartAhead(SplashPictureCache cache) : cache_(std::move(cache)) {
    // Qt takes the first thread that asks for its thread data for the program's main thread. The thread started
    // here reads a file with Qt before the application exists, so this thread asks first.
    QThread::currentThread();
    thread_ = std::thread(&StartAhead::run, this);
}

StartAhead::~StartAhead() {
    if (!wentOn_) goOn_.set_value(false);
    thread_.join();
}

void StartAhead::run() {
    // Until the application exists nothing here may touch a font or a painter: the application object is being
    // made meanwhile. Qt reads the font configuration through the same call when it first needs a font, and then
    // finds it read.
#ifdef KS_HAVE_FONTCONFIG
    FcInit();
#endif
    SplashPictureCache::Kept kept;
    bool read = false;
    try {
        read = cache_.read(kept);
        cache_.readFrame(keptFrame_);
    } catch (...) {
        // Pictures that could not be read are drawn.
    }
    fontsRead_.set_value();
    if (!goOn_.get_future().get()) return;
    // The kept pictures serve when the fonts shape the name band's letters as they did for the kept band.
    SplashPictures& pictures = kept.pictures;
    QPainterPath letters;
    bool drawn = false;
    try {
        letters = nameBandLetters();
        drawn = !read || kept.letters != SplashPictureCache::fingerprint(letters);
        if (drawn) pictures.banners[std::size_t(Banner::NameBand)] = drawNameBand(letters);
        drawMissingPictures(pictures);
    } catch (...) {
        pictures_.set_exception(std::current_exception());
        return;
    }
    pictures_.set_value(pictures);
    if (drawn) cache_.write(pictures, letters);
}

void StartAhead::applicationReady() {
    fontsRead_.get_future().wait();
    goOn_.set_value(true);
    wentOn_ = true;
}

SplashPictures StartAhead::takeSplashPictures() { return pictures_.get_future().get(); }

} // namespace ks
