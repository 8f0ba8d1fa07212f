#pragma once

#include "forms/splash_art.h"
#include "forms/splash_picture_cache.h"

#include <QImage>
#include <QWidget>

#include <array>
#include <cstdint>
#include <functional>

class QLabel;
class QPushButton;
class QTimer;

namespace ks {

// The round start-up screen, which is the About screen as well: title, version and credits over a picture
// and three banners that take turns every two seconds. After one second it offers Continue; after fifteen
// it ends by itself. Building it is its load step: it plays the start sound and starts its timers.
//
// It ends once, by Continue or by its timer, and says so through `finished`; what comes next (closing it,
// showing the main window, picking a tab) is for the owner to do. At start-up it is shown without
// modality; for About, `exec` shows it modally and returns when it has ended.
//
// `pictures` hands over the four pictures; it is asked once the texts have been laid out, so that the pictures
// can be drawn on another thread meanwhile.
//
// Given a first frame kept from an earlier run under its own frame label, the screen paints that frame and
// leaves its texts and pictures until `finishLoad`, which the owner calls once the first frame is on the screen:
// the same pixels reach the screen without waiting for the fonts.
class SplashScreen : public QWidget {
    Q_OBJECT
public:
    SplashScreen(const QString& versionText, std::function<void()> playStartSound, QWidget* owner = nullptr,
                 std::function<SplashPictures()> pictures = drawSplashPictures,
                 const SplashPictureCache::KeptFrame* keptFrame = nullptr);

    // Builds the texts and pictures that a kept frame stood in for; nothing when they are built.
    void finishLoad();
    // What names this screen's look: the version, the platform and the screen's resolution, then, once the texts
    // are built, the faces and sizes the machine's fonts gave them. Painted by the same drawing code (which the
    // kept file names), two screens of one label look the same.
    QByteArray frameLabel() const;
    // The screen as it looks, for keeping: once its texts are built and as long as it looks as at its load (no
    // banner has changed and Continue does not show yet); else a null image.
    QImage renderFrame();

    // Shows the screen modally and waits for its end; then hides it. True when it ended by Continue.
    bool exec();

    bool hasEnded() const { return ended_; }

    QPushButton* continueButton() const { return continueButton_; }
    QTimer* imageTimer() const { return imageTimer_; }       // every 2 s: the next banner
    QTimer* endTimer() const { return endTimer_; }           // once, after 15 s: the end without Continue
    QTimer* continueTimer() const { return continueTimer_; } // every 1 s: Continue shows

signals:
    void finished(bool byContinue);

protected:
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    QByteArray screenLabel() const;
    QRect toPixels(int left, int top, int width, int height) const;
    QLabel* addLabel(const char* name, const QString& text, QRgb colour, QRect twips, const QFont& font,
                     Qt::Alignment alignment = Qt::AlignLeft | Qt::AlignTop);
    void placePictures();
    void showPictures(SplashPictures pictures);
    void buildLabels(const QString& versionText);
    void buildContinueButton();
    void shape(QWidget* owner);
    void startTimers();

    void showNextPicture();
    void offerContinue();
    void end(bool byContinue);

    QString versionText_;
    std::function<SplashPictures()> picturesSource_; // empty once the pictures are shown
    QImage keptFrame_;
    double twipsPerPixelX_ = 15;
    double twipsPerPixelY_ = 15;
    std::array<QLabel*, 4> pictures_{}; // three banners, then the large picture behind them
    std::int16_t pictureStep_ = 0;
    QPushButton* continueButton_ = nullptr;
    QTimer* imageTimer_ = nullptr;
    QTimer* endTimer_ = nullptr;
    QTimer* continueTimer_ = nullptr;
    bool changedSinceLoad_ = false;
    bool ended_ = false;
    bool endedByContinue_ = false;
};

} // namespace ks
