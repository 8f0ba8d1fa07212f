#pragma once

#include "forms/splash_art.h"

#include <QString>

namespace ks {

// The splash's pictures come out the same on every run of one build of the launcher as long as the machine's
// fonts shape the name band's letters alike, so they are kept in a file between runs. The file names the letters
// its name band was drawn with; when the fonts shape them otherwise now, the band is drawn again. A file written
// by another build of the pictures or another Qt, or a damaged one, is not read. The splash's whole first frame
// is kept the same way, so that the next start can show it before a single text has been laid out.
class SplashPictureCache {
public:
    // What a file holds.
    struct Kept {
        SplashPictures pictures;
        quint64 letters = 0; // the fingerprint of the name band's letters
    };

    // The splash's whole first frame, kept beside the pictures. `label` names the screen, the version and the
    // drawing the frame was made for; the splash paints the frame only under its own label.
    struct KeptFrame {
        QByteArray label;
        QImage image;
    };

    explicit SplashPictureCache(QString file = defaultFile());
    // kslaunch/splash-pictures in the user's cache directory.
    static QString defaultFile();
    static quint64 fingerprint(const QPainterPath& letters);

    // Reads the file, or, when it does not serve, fills nothing and says so. Needs no application object.
    bool read(Kept& kept) const;
    // When the file cannot be written, the next run draws the pictures again.
    void write(const SplashPictures& pictures, const QPainterPath& letters) const;

    // The same for the first frame, kept in a file of its own beside the pictures' file.
    bool readFrame(KeptFrame& kept) const;
    void writeFrame(const KeptFrame& frame) const;

private:
    QString file_;
};

} // namespace ks
