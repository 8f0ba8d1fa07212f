#include "forms/look.h"

#include "forms/shield_outline.h"

#include <QFile>
#include <QFontDatabase>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace ks {

QColor toQColor(Colour colour) { return QColor(colour.red, colour.green, colour.blue); }

QFont launcherFont(double pointSize, bool bold) {
    // Tahoma first; the others are close to it in width, so the captions fit the same places. The machine's
    // fonts are looked through once, at the first call.
    struct Choice {
        const char* family;
        int stretch;
    };
    static const Choice preferred[] = {{"Tahoma", QFont::Unstretched},
                                       {"Segoe UI", QFont::Unstretched},
                                       {"DejaVu Sans", QFont::Condensed},
                                       {"Liberation Sans", QFont::Unstretched},
                                       {"Arial", QFont::Unstretched}};
    static const Choice* const chosen = [] {
        const QStringList available = QFontDatabase::families();
        for (const Choice& choice : preferred)
            if (available.contains(QLatin1String(choice.family), Qt::CaseInsensitive)) return &choice;
        return static_cast<const Choice*>(nullptr);
    }();
    QFont font;
    if (chosen) {
        font.setFamily(QLatin1String(chosen->family));
        font.setStretch(chosen->stretch);
    }
    font.setPointSizeF(pointSize);
    font.setBold(bold);
    return font;
}

namespace {

// A dark shield with a red "K" and a thin gold rim.
QPixmap drawIcon(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const qreal s = size;
    painter.setPen(QPen(QColor(214, 170, 60), qMax(1.0, s / 16)));
    painter.setBrush(QColor(24, 24, 28));
    painter.drawPath(shieldOutline(s));

    const qreal stroke = qMax(2.0, s * 0.14);
    painter.setPen(QPen(QColor(220, 30, 20), stroke, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.drawLine(QPointF(s * 0.34, s * 0.20), QPointF(s * 0.34, s * 0.78));
    painter.drawLine(QPointF(s * 0.70, s * 0.20), QPointF(s * 0.40, s * 0.50));
    painter.drawLine(QPointF(s * 0.44, s * 0.46), QPointF(s * 0.72, s * 0.78));
    return pixmap;
}

} // namespace

QIcon launcherIcon() {
    // The icon of the desktop's menu, made from the one drawing at build time; drawn here when the build had no
    // means to render it.
    QIcon icon;
    for (const char* size : {"16", "32", "48"}) {
        const QString file = QStringLiteral(":/icons/kslaunch-%1.png").arg(QLatin1String(size));
        if (QFile::exists(file)) icon.addFile(file);
    }
    if (!icon.isNull()) return icon;
    icon.addPixmap(drawIcon(16));
    icon.addPixmap(drawIcon(32));
    return icon;
}

} // namespace ks
