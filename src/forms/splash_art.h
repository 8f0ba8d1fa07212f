#pragma once

#include <QImage>
#include <QPainterPath>

#include <array>

namespace ks {

// The pictures of the splash screen, painted here: the same picture for the same fonts on every run.

constexpr int kBannerWidth = 468;
constexpr int kBannerHeight = 60;
constexpr int kBackdropSize = 450;

// Three banners that take turns in one place; each one reads at a glance by its own colour.
enum class Banner {
    RailTrail,    // a cold blue beam with its spiral trail
    RocketStreak, // a rocket with its flame and a trail of smoke
    NameBand,     // "KESTRAND" stamped into a band of brushed steel
};

// The banners fade out at their ends and lie on the window without a box around them.
QImage drawBanner(Banner banner);

// The letters of the name band as the machine's fonts shape them: all that the fonts give to the band.
QPainterPath nameBandLetters();
QImage drawNameBand(const QPainterPath& letters);

// The large dark picture behind the text: stars, a faint ember glow and a shield emblem.
QImage drawBackdrop();

// All the pictures of one splash screen. They may be drawn on any thread once the application object exists.
struct SplashPictures {
    QImage backdrop;
    std::array<QImage, 3> banners; // in the order of Banner
};
SplashPictures drawSplashPictures();
// Draws those that are still null.
void drawMissingPictures(SplashPictures& pictures);

} // namespace ks
