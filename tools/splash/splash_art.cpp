#include "splash_art.h"

#include "forms/shield_outline.h"

#include <QFont>
#include <QFontMetricsF>
#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <QTransform>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <utility>

namespace ks {

namespace {

constexpr double kPi = 3.14159265358979323846;

// A small generator of its own, so that the stars and the smoke fall alike on every machine.
class Scatter {
public:
    explicit Scatter(std::uint32_t seed) : state_(seed) {}
    // A number from 0 up to, but not including, 1.
    double next() {
        state_ ^= state_ << 13;
        state_ ^= state_ >> 17;
        state_ ^= state_ << 5;
        return (state_ & 0xFFFFFF) / double(0x1000000);
    }
    double between(double low, double high) { return low + (high - low) * next(); }

private:
    std::uint32_t state_;
};

QImage blankImage(int width, int height, const QColor& colour) {
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(colour);
    return image;
}

void fillBackground(QPainter& painter, const QColor& top, const QColor& bottom) {
    QLinearGradient gradient(0, 0, 0, kBannerHeight);
    gradient.setColorAt(0, top);
    gradient.setColorAt(1, bottom);
    painter.fillRect(0, 0, kBannerWidth, kBannerHeight, gradient);
}

// Lets the edges of a picture run out into transparency: the left and right ones over `across` pixels,
// the upper and lower ones over `down` pixels, so that no hard rectangle shows on the window.
void fadeEdges(QImage& image, int across, int down) {
    QPainter painter(&image);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    const auto fadeAlong = [&](QPointF end, double extent, int length) {
        QLinearGradient gradient(QPointF(0, 0), end);
        const double edge = length / extent;
        gradient.setColorAt(0, QColor(0, 0, 0, 0));
        gradient.setColorAt(edge, QColor(0, 0, 0, 255));
        gradient.setColorAt(1 - edge, QColor(0, 0, 0, 255));
        gradient.setColorAt(1, QColor(0, 0, 0, 0));
        painter.fillRect(image.rect(), gradient);
    };
    if (across > 0) fadeAlong(QPointF(image.width(), 0), image.width(), across);
    if (down > 0) fadeAlong(QPointF(0, image.height()), image.height(), down);
}

void glow(QPainter& painter, QPointF centre, double rx, double ry, const QColor& inner, const QColor& outer) {
    QRadialGradient gradient(QPointF(0, 0), 1);
    gradient.setColorAt(0, inner);
    gradient.setColorAt(0.45, outer);
    gradient.setColorAt(1, QColor(outer.red(), outer.green(), outer.blue(), 0));
    painter.save();
    painter.translate(centre);
    painter.scale(rx, ry);
    painter.setPen(Qt::NoPen);
    painter.setBrush(gradient);
    painter.drawEllipse(QPointF(0, 0), 1, 1);
    painter.restore();
}

// The slug's path: a white-hot core, and a spiral of blue sparks that thins out where the shot began.
void paintRailTrail(QPainter& painter) {
    fillBackground(painter, QColor(4, 8, 22), QColor(0, 0, 6));
    constexpr double kAxis = kBannerHeight / 2.0;
    constexpr double kStart = 24, kEnd = 420;
    for (const auto& [width, alpha] : {std::pair{14.0, 18}, {8.0, 40}, {4.0, 90}}) {
        painter.setPen(QPen(QColor(60, 150, 255, alpha), width, Qt::SolidLine, Qt::RoundCap));
        painter.drawLine(QPointF(kStart, kAxis), QPointF(kEnd, kAxis));
    }
    painter.setPen(Qt::NoPen);
    for (double x = kStart; x <= kEnd; x += 1.5) {
        const double age = (kEnd - x) / (kEnd - kStart); // 0 at the muzzle, 1 where the shot began
        const double angle = x / 34.0 * 2 * kPi;
        const double radius = 7 + 6 * age;
        const double depth = std::cos(angle); // towards the viewer at 1
        const int alpha = int((140 + 100 * depth) * (1 - 0.75 * age));
        painter.setBrush(QColor(120, 180, 255, std::max(alpha, 0)));
        painter.drawEllipse(QPointF(x, kAxis + radius * std::sin(angle)), 1.1 + 0.6 * depth, 1.1 + 0.6 * depth);
    }
    painter.setPen(QPen(QColor(235, 248, 255), 1.6, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(kStart + 40, kAxis), QPointF(kEnd, kAxis));
    glow(painter, QPointF(kEnd + 6, kAxis), 30, 18, QColor(240, 250, 255, 230), QColor(70, 150, 255, 90));
}

// A rocket flying to the right with a flame behind it and a trail of grey smoke that widens as it ages.
void paintRocketStreak(QPainter& painter) {
    fillBackground(painter, QColor(20, 10, 6), QColor(4, 2, 2));
    constexpr double kNose = 430, kTail = 392;
    const auto trailY = [](double x) { return 34 - 6 * (x / kTail); };
    Scatter scatter(0x5eed0002u);
    painter.setPen(Qt::NoPen);
    for (double x = 26; x < kTail - 18; x += 5) {
        const double age = 1 - x / kTail;
        const double radius = 4 + 9 * age + scatter.between(-1.5, 1.5);
        const int grey = int(scatter.between(70, 110));
        const int alpha = int(150 * (1 - age) * (1 - age) + 10);
        painter.setBrush(QColor(grey, grey - 6, grey - 10, alpha));
        painter.drawEllipse(QPointF(x, trailY(x) + scatter.between(-2, 2)), radius, radius * 0.8);
    }
    glow(painter, QPointF(kTail - 22, trailY(kTail)), 34, 9, QColor(255, 240, 170, 240), QColor(255, 110, 20, 150));
    glow(painter, QPointF(kTail - 6, trailY(kTail)), 12, 5, QColor(255, 255, 235), QColor(255, 190, 60, 200));
    for (int i = 0; i < 14; ++i) {
        const double x = scatter.between(250, kTail - 10);
        painter.setBrush(QColor(255, int(scatter.between(120, 200)), 40, int(scatter.between(90, 220))));
        painter.drawEllipse(QPointF(x, trailY(x) + scatter.between(-9, 9)), 1.0, 1.0);
    }

    painter.save();
    painter.translate(0, trailY(kTail));
    painter.rotate(-0.9);
    QLinearGradient metal(0, -6, 0, 6);
    metal.setColorAt(0, QColor(200, 200, 205));
    metal.setColorAt(0.4, QColor(120, 120, 128));
    metal.setColorAt(1, QColor(40, 40, 46));
    painter.setBrush(metal);
    painter.drawRect(QRectF(kTail, -5, kNose - kTail - 10, 10));
    QPainterPath nose;
    nose.moveTo(kNose - 10, -5);
    nose.quadTo(kNose - 2, -3, kNose + 2, 0);
    nose.quadTo(kNose - 2, 3, kNose - 10, 5);
    nose.closeSubpath();
    painter.setBrush(QColor(190, 30, 20));
    painter.drawPath(nose);
    QPainterPath fins;
    fins.moveTo(kTail, -5);
    fins.lineTo(kTail - 4, -11);
    fins.lineTo(kTail + 8, -5);
    fins.moveTo(kTail, 5);
    fins.lineTo(kTail - 4, 11);
    fins.lineTo(kTail + 8, 5);
    painter.setBrush(QColor(150, 24, 16));
    painter.drawPath(fins);
    painter.restore();
}

// The steel band stands left of the middle, where the round window leaves room for its lower corners.
constexpr QRectF kNameBand(26, 9, 400, kBannerHeight - 18);

// A band of brushed steel between two red lines, with the mod's name stamped into it and rivets at the ends.
void paintNameBand(QPainter& painter, const QPainterPath& letters) {
    const QRectF band = kNameBand;
    QLinearGradient steel(0, band.top(), 0, band.bottom());
    steel.setColorAt(0, QColor(70, 70, 76));
    steel.setColorAt(0.18, QColor(168, 168, 176));
    steel.setColorAt(0.5, QColor(92, 92, 100));
    steel.setColorAt(0.78, QColor(150, 150, 158));
    steel.setColorAt(1, QColor(44, 44, 50));
    painter.fillRect(band, steel);

    Scatter scatter(0x5eed0003u);
    painter.save();
    painter.setClipRect(band);
    for (int i = 0; i < 140; ++i) {
        const double y = scatter.between(band.top() + 1, band.bottom() - 1);
        const double x = scatter.between(band.left(), band.right() - 60);
        const int shade = scatter.next() < 0.5 ? 255 : 0;
        painter.setPen(QPen(QColor(shade, shade, shade, int(scatter.between(10, 30))), 1));
        painter.drawLine(QPointF(x, y), QPointF(x + scatter.between(30, 160), y));
    }
    painter.restore();
    painter.setPen(QPen(QColor(150, 22, 14), 2));
    painter.drawLine(QPointF(band.left(), band.top() + 1), QPointF(band.right(), band.top() + 1));
    painter.drawLine(QPointF(band.left(), band.bottom() - 1), QPointF(band.right(), band.bottom() - 1));

    painter.setRenderHint(QPainter::Antialiasing);
    for (const double x : {band.left() + 12, band.right() - 12}) {
        for (const double y : {band.top() + 10, band.bottom() - 10}) {
            QRadialGradient rivet(QPointF(x - 1, y - 1), 4);
            rivet.setColorAt(0, QColor(230, 230, 236));
            rivet.setColorAt(1, QColor(50, 50, 56));
            painter.setPen(QPen(QColor(20, 20, 24), 0.8));
            painter.setBrush(rivet);
            painter.drawEllipse(QPointF(x, y), 3.2, 3.2);
        }
    }

    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(235, 235, 242, 150)); // the lower lip of the stamp catches the light
    painter.drawPath(letters.translated(0.8, 1.2));
    QLinearGradient ink(0, band.top(), 0, band.bottom());
    ink.setColorAt(0, QColor(14, 14, 18));
    ink.setColorAt(1, QColor(48, 48, 56));
    painter.setBrush(ink);
    painter.drawPath(letters);
}

// The picture behind the text: an ember glow, stars and the emblem, all kept dark.
void paintBackdrop(QImage& image) {
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const double size = kBackdropSize;

    // A low ember glow under the text, warm so that the blue lettering stands apart from it.
    glow(painter, QPointF(size * 0.55, size * 0.72), size * 0.55, size * 0.38, QColor(46, 16, 6),
         QColor(22, 8, 4, 200));
    glow(painter, QPointF(size * 0.22, size * 0.35), size * 0.28, size * 0.22, QColor(20, 12, 18, 200),
         QColor(10, 6, 10, 120));

    Scatter scatter(0x5eed0004u);
    painter.setPen(Qt::NoPen);
    for (int i = 0; i < 260; ++i) {
        const QPointF at(scatter.between(0, size), scatter.between(0, size));
        const double brightness = scatter.next();
        const int level = int(40 + 110 * brightness * brightness);
        const int tint = int(scatter.between(-12, 12));
        painter.setBrush(QColor(level, level, std::clamp(level + tint, 0, 255)));
        painter.drawEllipse(at, 0.6 + 0.6 * brightness, 0.6 + 0.6 * brightness);
    }
    // A few nearer stars with a faint cross of light.
    for (int i = 0; i < 7; ++i) {
        const QPointF at(scatter.between(20, size - 20), scatter.between(20, size - 20));
        glow(painter, at, 4, 4, QColor(200, 200, 215, 200), QColor(90, 90, 110, 60));
        painter.setPen(QPen(QColor(150, 150, 170, 70), 0.8));
        painter.drawLine(at - QPointF(7, 0), at + QPointF(7, 0));
        painter.drawLine(at - QPointF(0, 7), at + QPointF(0, 7));
        painter.setPen(Qt::NoPen);
    }

    // The emblem: a tall shield in dull bronze, barely lit, behind the middle of the picture.
    const double s = size * 0.62;
    painter.translate(size / 2 - s / 2, size * 0.5 - s * 0.48);
    const QPainterPath shield = shieldOutline(s);
    painter.setPen(QPen(QColor(96, 70, 30, 90), 3));
    painter.setBrush(QColor(30, 22, 14, 60));
    painter.drawPath(shield);
    painter.setPen(QPen(QColor(96, 70, 30, 45), 1.5));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(
        QTransform::fromTranslate(s * 0.5, s * 0.5).scale(0.86, 0.86).translate(-s * 0.5, -s * 0.5).map(shield));
    QPainterPath letter; // one path, so that the strokes do not lighten where they cross
    letter.moveTo(s * 0.36, s * 0.22);
    letter.lineTo(s * 0.36, s * 0.74);
    letter.moveTo(s * 0.68, s * 0.22);
    letter.lineTo(s * 0.42, s * 0.49);
    letter.moveTo(s * 0.45, s * 0.45);
    letter.lineTo(s * 0.70, s * 0.74);
    painter.setPen(QPen(QColor(110, 22, 14, 80), s * 0.08, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
    painter.drawPath(letter);
}

// A banner painted by `paint`, its ends faded out over 36 pixels and its upper and lower edges over `fadeDown`.
template <class Paint> QImage bannerImage(Paint paint, int fadeDown) {
    QImage image = blankImage(kBannerWidth, kBannerHeight, Qt::transparent);
    {
        QPainter painter(&image);
        painter.setRenderHint(QPainter::Antialiasing);
        paint(painter);
    }
    fadeEdges(image, 36, fadeDown);
    return image;
}

// The mod's name as letters stamped into the steel band.
QPainterPath nameBandLetters() {
    QFont font(QStringLiteral("Comfortaa"));
    font.setBold(true);
    font.setPixelSize(28);
    font.setLetterSpacing(QFont::AbsoluteSpacing, 6);
    const QString name = QStringLiteral("KESTRAND");
    const QFontMetricsF metrics(font);
    const QPointF origin(kNameBand.center().x() - metrics.horizontalAdvance(name) / 2 + 3,
                         kNameBand.center().y() + (metrics.ascent() - metrics.descent()) / 2);
    QPainterPath letters;
    letters.addText(origin, font, name);
    return letters;
}

} // namespace

QImage drawBanner(Banner banner) {
    // The beam and the rocket are light in the dark that fades out all round.
    switch (banner) {
    case Banner::RailTrail:
        return bannerImage(paintRailTrail, 16);
    case Banner::RocketStreak:
        return bannerImage(paintRocketStreak, 16);
    case Banner::NameBand:
        break;
    }
    // The steel band has edges of its own: only its ends fade out.
    return bannerImage([](QPainter& painter) { paintNameBand(painter, nameBandLetters()); }, 0);
}

QImage drawBackdrop() {
    QImage image = blankImage(kBackdropSize, kBackdropSize, Qt::black);
    paintBackdrop(image);
    fadeEdges(image, 56, 56);
    return image;
}

} // namespace ks
