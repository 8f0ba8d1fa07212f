#include "forms/splash_picture_cache.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>

#include <array>
#include <functional>
#include <string_view>
#include <utility>

namespace ks {

namespace {

// The file starts with one line that names what wrote it: the digest of the drawing code (set by the build) and
// the version of Qt that painted. The fingerprint of the name band's letters follows, then the pixels of the four
// pictures, premultiplied ARGB32 row by row, and a check sum of them.
QByteArray headerLine() {
    return QByteArrayLiteral("kslaunch splash pictures " KS_SPLASH_ART_DIGEST " Qt ") + qVersion() + '\n';
}

std::array<QImage*, 4> imagesOf(SplashPictures& pictures) {
    return {&pictures.backdrop, &pictures.banners[0], &pictures.banners[1], &pictures.banners[2]};
}

QSize sizeOf(std::size_t index) {
    return index == 0 ? QSize(kBackdropSize, kBackdropSize) : QSize(kBannerWidth, kBannerHeight);
}

std::string_view bytesOf(const QImage& image) {
    return {reinterpret_cast<const char*>(image.constBits()), std::size_t(image.sizeInBytes())};
}

// The first frame's file: its own first line, the frame's label on the second, then its width and height,
// its pixels like the pictures' and their check sum.
QByteArray frameHeaderLine() {
    return QByteArrayLiteral("kslaunch splash frame " KS_SPLASH_ART_DIGEST " Qt ") + qVersion() + '\n';
}

QString frameFileBeside(const QString& picturesFile) {
    return QFileInfo(picturesFile).absolutePath() + QStringLiteral("/splash-frame");
}

// The largest frame read back, in pixels a side: far more than any screen gives the splash.
constexpr qint32 kLargestFrameSide = 16384;

// Replaces the file by what `writeBytes` writes, whole, or leaves it as it was.
void replaceFile(const QString& path, const std::function<void(QSaveFile&)>& writeBytes) {
    if (!QDir().mkpath(QFileInfo(path).absolutePath())) return;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) return;
    writeBytes(file);
    file.commit();
}

// Reads an image of `size`, premultiplied ARGB32 row by row, from where the file stands; a null image when the
// file holds fewer bytes.
QImage readPixels(QFile& file, QSize size) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull() || file.read(reinterpret_cast<char*>(image.bits()), image.sizeInBytes()) != image.sizeInBytes())
        return {};
    return image;
}

// True when what is left of the file is the check sum `sum`.
bool endsWithSum(QFile& file, quint64 sum) {
    quint64 read = 0;
    return file.read(reinterpret_cast<char*>(&read), sizeof read) == sizeof read && read == sum && file.atEnd();
}

quint64 checkSum(const std::array<QImage*, 4>& images) {
    quint64 sum = 0;
    for (const QImage* image : images)
        sum = sum * 1000003u ^ std::hash<std::string_view>{}(bytesOf(*image));
    return sum;
}

} // namespace

SplashPictureCache::SplashPictureCache(QString file) : file_(std::move(file)) {}

QString SplashPictureCache::defaultFile() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
           QStringLiteral("/kslaunch/splash-pictures");
}

quint64 SplashPictureCache::fingerprint(const QPainterPath& letters) {
    QByteArray elements;
    for (int i = 0; i < letters.elementCount(); ++i) {
        const QPainterPath::Element element = letters.elementAt(i);
        const double point[] = {element.x, element.y};
        elements.append(char(element.type));
        elements.append(reinterpret_cast<const char*>(point), sizeof point);
    }
    return std::hash<std::string_view>{}(std::string_view(elements.constData(), std::size_t(elements.size())));
}

bool SplashPictureCache::read(Kept& kept) const {
    QFile file(file_);
    if (!file.open(QIODevice::ReadOnly) || file.readLine(256) != headerLine()) return false;
    Kept read;
    if (file.read(reinterpret_cast<char*>(&read.letters), sizeof read.letters) != sizeof read.letters) return false;
    const std::array<QImage*, 4> images = imagesOf(read.pictures);
    for (std::size_t i = 0; i < images.size(); ++i) {
        *images[i] = readPixels(file, sizeOf(i));
        if (images[i]->isNull()) return false;
    }
    if (!endsWithSum(file, checkSum(images))) return false;
    kept = std::move(read);
    return true;
}

void SplashPictureCache::write(const SplashPictures& pictures, const QPainterPath& letters) const {
    SplashPictures copy = pictures; // shares the pixels
    const std::array<QImage*, 4> images = imagesOf(copy);
    for (std::size_t i = 0; i < images.size(); ++i) {
        if (images[i]->size() != sizeOf(i)) return;
        if (images[i]->format() != QImage::Format_ARGB32_Premultiplied)
            *images[i] = images[i]->convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }
    replaceFile(file_, [&](QSaveFile& file) {
        const quint64 lettersPrint = fingerprint(letters);
        file.write(headerLine());
        file.write(reinterpret_cast<const char*>(&lettersPrint), sizeof lettersPrint);
        for (const QImage* image : images) {
            const std::string_view bytes = bytesOf(*image);
            file.write(bytes.data(), qint64(bytes.size()));
        }
        const quint64 sum = checkSum(images);
        file.write(reinterpret_cast<const char*>(&sum), sizeof sum);
    });
}

bool SplashPictureCache::readFrame(KeptFrame& kept) const {
    QFile file(frameFileBeside(file_));
    if (!file.open(QIODevice::ReadOnly) || file.readLine(256) != frameHeaderLine()) return false;
    QByteArray label = file.readLine(256);
    if (!label.endsWith('\n')) return false;
    label.chop(1);
    qint32 size[2] = {};
    if (file.read(reinterpret_cast<char*>(size), sizeof size) != sizeof size) return false;
    if (size[0] <= 0 || size[1] <= 0 || size[0] > kLargestFrameSide || size[1] > kLargestFrameSide) return false;
    QImage image = readPixels(file, QSize(size[0], size[1]));
    if (image.isNull() || !endsWithSum(file, std::hash<std::string_view>{}(bytesOf(image)))) return false;
    kept = {std::move(label), std::move(image)};
    return true;
}

void SplashPictureCache::writeFrame(const KeptFrame& frame) const {
    if (frame.image.isNull() || frame.label.contains('\n')) return;
    const QImage image = frame.image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    replaceFile(frameFileBeside(file_), [&](QSaveFile& file) {
        const qint32 size[2] = {image.width(), image.height()};
        const std::string_view bytes = bytesOf(image);
        const quint64 sum = std::hash<std::string_view>{}(bytes);
        file.write(frameHeaderLine());
        file.write(frame.label + '\n');
        file.write(reinterpret_cast<const char*>(size), sizeof size);
        file.write(bytes.data(), qint64(bytes.size()));
        file.write(reinterpret_cast<const char*>(&sum), sizeof sum);
    });
}

} // namespace ks
