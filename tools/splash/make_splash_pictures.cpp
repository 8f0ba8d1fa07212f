// Draws the splash screen's pictures when the program is built: the large picture, the three banners and every
// caption, each cut to the round window, anti-aliased, and written into a file named after its control (Image4,
// Label5, VERS, ...). The launcher shows them as they are; it draws no text and no picture of its own on the
// splash, so its first frame needs no font.
//
// A file holds the bare pixels, row by row, in the premultiplied ARGB32 form the launcher paints from, in this
// machine's byte order: the launcher takes them from its resources in place, with nothing to decode, and knows
// their sizes from the splash's table (forms/splash_layout.h).
//
// The letters come from the fonts in FONT_DIR alone: the tool hands fontconfig a configuration that names that
// folder and nothing else, so every build draws the same letters whatever fonts the machine has.
//
// Last it writes OUT_DIR/splash_pictures.qrc, the resource file that lists them under /splash, uncompressed.
//
// Usage: ks_make_splash_pictures OUT_DIR FONT_DIR VERSION

#include "forms/splash_layout.h"
#include "splash_art.h"

#include <QColor>
#include <QDir>
#include <QFile>
#include <QFont>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cstdio>
#include <optional>
#include <string_view>
#include <vector>

using namespace ks;
using namespace ks::splash;

namespace {

// The faces of the captions; each is one of the font files.
QFont captionFont(Face face) {
    QFont font;
    switch (face) {
    case Face::Title:
        font = QFont(QStringLiteral("Comfortaa"), 24, QFont::Bold);
        break;
    case Face::Form:
        font = QFont(QStringLiteral("DejaVu Sans"));
        font.setPointSizeF(8.25);
        break;
    case Face::Credit:
    case Face::CreditName:
        font = QFont(QStringLiteral("DejaVu Sans"));
        font.setPointSizeF(face == Face::Credit ? 13.5 : 15.75);
        font.setBold(true);
        font.setItalic(true);
        font.setUnderline(face == Face::Credit);
        break;
    }
    return font;
}

// Lets fontconfig see the fonts of `fontDir` and no other. Must come before the application object.
bool useOnlyFontsIn(const QString& fontDir, const QString& scratchDir) {
    const QString conf = scratchDir + QStringLiteral("/fonts.conf");
    QFile file(conf);
    if (!QDir().mkpath(scratchDir) || !file.open(QIODevice::WriteOnly | QIODevice::Truncate)) return false;
    const QString text =
        QStringLiteral("<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">\n<fontconfig>\n"
                       "  <dir>%1</dir>\n  <cachedir>%2</cachedir>\n"
                       "  <match target=\"font\">\n"
                       "    <edit name=\"antialias\" mode=\"assign\"><bool>true</bool></edit>\n"
                       "    <edit name=\"hinting\" mode=\"assign\"><bool>true</bool></edit>\n"
                       "    <edit name=\"hintstyle\" mode=\"assign\"><const>hintslight</const></edit>\n"
                       "    <edit name=\"rgba\" mode=\"assign\"><const>none</const></edit>\n"
                       "  </match>\n</fontconfig>\n")
            .arg(QDir(fontDir).absolutePath().toHtmlEscaped(),
                 QDir(scratchDir + QStringLiteral("/cache")).absolutePath().toHtmlEscaped());
    if (file.write(text.toUtf8()) < 0 || !file.flush()) return false;
    qputenv("FONTCONFIG_FILE", QFile::encodeName(conf));
    return true;
}

// How much of each pixel of a picture at (left, top) of the window lies inside the round window.
QImage ovalCover(QSize size, QPoint at) {
    QImage cover(size, QImage::Format_Alpha8);
    cover.fill(0);
    QPainter painter(&cover);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawEllipse(QRectF(-at.x(), -at.y(), kWidthPixels, kHeightPixels));
    return cover;
}

void cutToOval(QImage& picture, QPoint at) {
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_DestinationIn);
    painter.drawImage(0, 0, ovalCover(picture.size(), at));
}

QImage blank(QSize size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    return image;
}

int textFlags(const Caption& caption) {
    return Qt::TextWordWrap | (caption.centred ? Qt::AlignCenter : Qt::AlignLeft | Qt::AlignTop);
}

// Where the letters of a caption in `font` leave ink, in the caption's own coordinates: drawn on a margin as
// wide as the caption, so that a letter that leans or reaches out shows.
QRect inkOf(const Caption& caption, const QString& text, const QFont& font, QSize size) {
    const QSize margin = size;
    QImage trial = blank(size + 2 * margin);
    {
        QPainter painter(&trial);
        painter.setFont(font);
        painter.setPen(Qt::white);
        painter.drawText(QRect(QPoint(margin.width(), margin.height()), size), textFlags(caption), text);
    }
    QRect ink;
    for (int y = 0; y < trial.height(); ++y) {
        const auto* line = reinterpret_cast<const QRgb*>(trial.constScanLine(y));
        for (int x = 0; x < trial.width(); ++x)
            if (qAlpha(line[x]) > 0) ink |= QRect(x, y, 1, 1);
    }
    return ink.translated(-margin.width(), -margin.height());
}

bool insideOval(QPointF point) {
    const double dx = (point.x() - kWidthPixels / 2.0) / (kWidthPixels / 2.0);
    const double dy = (point.y() - kHeightPixels / 2.0) / (kHeightPixels / 2.0);
    return dx * dx + dy * dy <= 1;
}

// The caption's font, made smaller a quarter point at a time until its ink stays inside its place and inside the
// round window; nothing when it does not fit at 6 points, or leaves no ink at all.
std::optional<QFont> fittedFont(const Caption& caption, const QString& text) {
    const QRect place(pixels(caption.left), pixels(caption.top), pixels(caption.width), pixels(caption.height));
    for (QFont font = captionFont(caption.face); font.pointSizeF() >= 6; font.setPointSizeF(font.pointSizeF() - 0.25)) {
        const QRect ink = inkOf(caption, text, font, place.size());
        if (ink.isEmpty()) return std::nullopt;
        const QRect placed = ink.translated(place.topLeft());
        if (QRect(QPoint(0, 0), place.size()).contains(ink) && insideOval(placed.topLeft()) &&
            insideOval(placed.topRight() + QPoint(1, 0)) && insideOval(placed.bottomLeft() + QPoint(0, 1)) &&
            insideOval(placed.bottomRight() + QPoint(1, 1)))
            return font;
    }
    return std::nullopt;
}

QImage drawCaption(const Caption& caption, const QString& text, const QFont& font) {
    const QPoint at(pixels(caption.left), pixels(caption.top));
    const QSize size(pixels(caption.width), pixels(caption.height));
    QImage image = blank(size);
    {
        QPainter painter(&image);
        painter.setFont(font);
        painter.setPen(QColor(QRgb(caption.rgb)));
        painter.drawText(QRect(QPoint(0, 0), size), textFlags(caption), text);
    }
    cutToOval(image, at);
    return image;
}

QImage drawPicture(std::string_view name) {
    if (name == "Image1") return drawBanner(Banner::RailTrail);
    if (name == "Image2") return drawBanner(Banner::RocketStreak);
    if (name == "Image3") return drawBanner(Banner::NameBand);
    return drawBackdrop();
}

QString fileName(std::string_view name) { return QLatin1String(name.data(), qsizetype(name.size())); }

bool save(const QImage& image, const QString& dir, std::string_view name) {
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QFile file(dir + QLatin1Char('/') + fileName(name));
    bool written = file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    for (int y = 0; written && y < pixels.height(); ++y)
        written = file.write(reinterpret_cast<const char*>(pixels.constScanLine(y)), qint64(pixels.width()) * 4) ==
                  qint64(pixels.width()) * 4;
    if (written && file.flush()) return true;
    std::fprintf(stderr, "ks_make_splash_pictures: cannot write %s\n", qPrintable(file.fileName()));
    return false;
}

// The resource file of every picture, under the prefix /splash.
bool writeResourceList(const QString& dir) {
    QString text = QStringLiteral("<!DOCTYPE RCC>\n<RCC version=\"1.0\">\n    <qresource prefix=\"/splash\">\n");
    const QString line = QStringLiteral("        <file compression-algorithm=\"none\">%1</file>\n");
    for (const PicturePlace& place : kPictures)
        text += line.arg(fileName(place.name));
    for (const Caption& caption : kCaptions)
        text += line.arg(fileName(caption.name));
    text += QStringLiteral("    </qresource>\n</RCC>\n");
    QFile file(dir + QStringLiteral("/splash_pictures.qrc"));
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(text.toUtf8()) >= 0 && file.flush())
        return true;
    std::fprintf(stderr, "ks_make_splash_pictures: cannot write %s\n", qPrintable(file.fileName()));
    return false;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: ks_make_splash_pictures OUT_DIR FONT_DIR VERSION\n");
        return 2;
    }
    const QString outDir = QFile::decodeName(argv[1]);
    const QString fontDir = QFile::decodeName(argv[2]);
    const QString version = QString::fromUtf8(argv[3]);
    if (!useOnlyFontsIn(fontDir, outDir + QStringLiteral("/fontconfig"))) {
        std::fprintf(stderr, "ks_make_splash_pictures: cannot write the font configuration under %s\n", argv[1]);
        return 1;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    for (const char* family : {"Comfortaa", "DejaVu Sans"}) {
        if (!QFontDatabase::hasFamily(QLatin1String(family))) {
            std::fprintf(stderr, "ks_make_splash_pictures: the font %s is missing from %s\n", family, argv[2]);
            return 1;
        }
    }

    for (const PicturePlace& place : kPictures) {
        QImage picture = drawPicture(place.name);
        if (picture.size() != QSize(place.width, place.height)) {
            std::fprintf(stderr, "ks_make_splash_pictures: %s is drawn in the wrong size\n", place.name.data());
            return 1;
        }
        cutToOval(picture, QPoint(pixels(place.left), pixels(place.top)));
        if (!save(picture, outDir, place.name)) return 1;
    }

    // Each caption in the largest size that fits; the title and its shadow in one size, the smaller of the two. A
    // caption that cannot fit its place fails the build rather than showing cut letters.
    const auto textOf = [&version](const Caption& caption) {
        return caption.text.empty() ? version
                                    : QString::fromLatin1(caption.text.data(), qsizetype(caption.text.size()));
    };
    std::vector<QFont> fonts;
    double titleSize = captionFont(Face::Title).pointSizeF();
    for (const Caption& caption : kCaptions) {
        const std::optional<QFont> font = fittedFont(caption, textOf(caption));
        if (!font) {
            std::fprintf(stderr, "ks_make_splash_pictures: %s does not fit its place\n", caption.name.data());
            return 1;
        }
        fonts.push_back(*font);
        if (caption.face == Face::Title) titleSize = std::min(titleSize, font->pointSizeF());
    }
    for (std::size_t i = 0; i < fonts.size(); ++i) {
        const Caption& caption = kCaptions[i];
        if (caption.face == Face::Title) fonts[i].setPointSizeF(titleSize);
        if (!save(drawCaption(caption, textOf(caption), fonts[i]), outDir, caption.name)) return 1;
    }
    return writeResourceList(outDir) ? 0 : 1;
}
