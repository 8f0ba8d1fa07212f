#pragma once

#include "forms/layer.h"

#include "frame/colour.h"

#include <QColor>
#include <QFont>
#include <QIcon>
#include <QRect>

namespace ks {

// Lengths on the launcher's forms are given in twips, fifteen to the pixel.
constexpr int kTwipsPerPixel = 15;
constexpr int px(int twips) { return (twips + kTwipsPerPixel / 2) / kTwipsPerPixel; }
inline QRect twipRect(int left, int top, int width, int height) {
    return QRect(px(left), px(top), px(width), px(height));
}

QColor toQColor(Colour colour);

// The forms' own font: Tahoma when the machine has it, else the closest narrow sans serif it has.
QFont launcherFont(double pointSize = 8.25, bool bold = false);

// The window icon, in 16, 32 and 48 pixels.
QIcon launcherIcon();

} // namespace ks
