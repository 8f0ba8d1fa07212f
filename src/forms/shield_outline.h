#pragma once

#include "forms/layer.h"

#include <QPainterPath>

namespace ks {

// The launcher's shield in a square of `size`: the fallback window icon's, and the emblem on the splash's large
// picture, which the build draws (tools/splash).
inline QPainterPath shieldOutline(qreal size) {
    const qreal s = size;
    QPainterPath shield;
    shield.moveTo(s * 0.08, s * 0.06);
    shield.lineTo(s * 0.92, s * 0.06);
    shield.lineTo(s * 0.92, s * 0.52);
    shield.quadTo(s * 0.90, s * 0.82, s * 0.5, s * 0.97);
    shield.quadTo(s * 0.10, s * 0.82, s * 0.08, s * 0.52);
    shield.closeSubpath();
    return shield;
}

} // namespace ks
