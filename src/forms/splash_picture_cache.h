#pragma once

#include "forms/splash_art.h"

#include <QString>

namespace ks {

// The splash's pictures that need no fonts, the backdrop and the rail and rocket banners, come out the same on
// every run of one build of the launcher, so they are kept in a file between runs; the name band, whose letters
// follow the machine's fonts, is drawn each time. A file written by another build of the pictures or another Qt,
// or a damaged one, is not read.
class SplashPictureCache {
public:
    explicit SplashPictureCache(QString file = defaultFile());
    // kslaunch/splash-pictures in the user's cache directory.
    static QString defaultFile();

    // Fills the backdrop and the rail and rocket banners from the file, or, when the file does not serve, nothing
    // and says so. Needs no application object.
    bool read(SplashPictures& pictures) const;
    // Keeps those three pictures; when the file cannot be written, the next run draws them again.
    void write(const SplashPictures& pictures) const;

private:
    QString file_;
};

} // namespace ks
