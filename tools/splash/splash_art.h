#pragma once

#include <QImage>

namespace ks {

// The pictures of the splash screen, painted here: the same picture on every build.

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

// The large dark picture behind the text: stars, a faint ember glow and a shield emblem.
QImage drawBackdrop();

} // namespace ks
