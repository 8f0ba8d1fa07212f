#include "forms/start_ahead.h"

#include <utility>

#ifdef KS_HAVE_FONTCONFIG
#include <fontconfig/fontconfig.h>
#endif

namespace ks {

StartAhead::StartAhead(SplashPictureCache cache) : cache_(std::move(cache)), thread_(&StartAhead::run, this) {}

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
    SplashPictures pictures;
    const bool kept = cache_.read(pictures);
    fontsRead_.set_value();
    if (!goOn_.get_future().get()) return;
    try {
        drawMissingPictures(pictures);
    } catch (...) {
        pictures_.set_exception(std::current_exception());
        return;
    }
    pictures_.set_value(pictures);
    if (!kept) cache_.write(pictures);
}

void StartAhead::applicationReady() {
    fontsRead_.get_future().wait();
    goOn_.set_value(true);
    wentOn_ = true;
}

SplashPictures StartAhead::takeSplashPictures() { return pictures_.get_future().get(); }

} // namespace ks
