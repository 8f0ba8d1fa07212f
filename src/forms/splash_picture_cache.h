#pragma once

#include "forms/splash_art.h"

#include <QString>

namespace ks {

// The splash's pictures come out the same on every run of one build of the launcher as long as the machine's
// fonts shape the name band's letters alike, so they are kept in a file between runs. The file names the letters
// its name band was drawn with; when the fonts shape them otherwise now, the band is drawn again. A file written
// by another build of the pictures or another Qt, or a damaged one, is not read.
class SplashPictureCache {
public:
    // What a file holds.
    struct Kept {
        SplashPictures pictures;
        quint64 letters = 0; // the fingerprint of the name band's letters
    };

    explicit SplashPictureCache(QString file = defaultFile());
    // kslaunch/splash-pictures in the user's cache directory.
    static QString defaultFile();
    static quint64 fingerprint(const QPainterPath& letters);

    // Reads the file, or, when it does not serve, fills nothing and says so. Needs no application object.
    bool read(Kept& kept) const;
    // When the file cannot be written, the next run draws the pictures again.
    void write(const SplashPictures& pictures, const QPainterPath& letters) const;

private:
    QString file_;
};

} // namespace ks
