#pragma once

#include "forms/layer.h"

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
// Its pictures and the letters of its captions were drawn when the program was built (forms/splash_layout.h,
// tools/splash): the screen only shows them, and its first frame touches no font. Each caption is a label that
// holds its text, for a screen reader and for finding it by name, and paints the picture of it.
//
// It ends once, by Continue or by its timer, and says so through `finished`; what comes next (closing it,
// showing the main window, picking a tab) is for the owner to do. At start-up it is shown without
// modality; for About, `exec` shows it modally and returns when it has ended.
class SplashScreen : public QWidget {
    Q_OBJECT
public:
    explicit SplashScreen(std::function<void()> playStartSound, QWidget* owner = nullptr);

    // Shows the screen modally and waits for its end; then hides it. True when it ended by Continue.
    bool exec();

    bool hasEnded() const { return ended_; }
    // Whether the round edge is drawn smooth on a window the window system composes, rather than cut by a mask.
    bool hasSmoothEdge() const;

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
    void shape(QWidget* owner);
    void buildPictures();
    void buildCaptions();
    void buildContinueButton();
    void startTimers();

    void showNextPicture();
    void offerContinue();
    void end(bool byContinue);

    std::array<QLabel*, 4> pictures_{}; // in the order of the splash's table: the large picture, then the banners
    std::int16_t pictureStep_ = 0;
    QPushButton* continueButton_ = nullptr;
    QTimer* imageTimer_ = nullptr;
    QTimer* endTimer_ = nullptr;
    QTimer* continueTimer_ = nullptr;
    bool ended_ = false;
    bool endedByContinue_ = false;
};

} // namespace ks
