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
// the version of Qt that painted. The pixels follow, premultiplied ARGB32 row by row, and a check sum of them.
QByteArray headerLine() {
    return QByteArrayLiteral("kslaunch splash pictures " KS_SPLASH_ART_DIGEST " Qt ") + qVersion() + '\n';
}

std::array<QImage*, 3> kept(SplashPictures& pictures) {
    return {&pictures.backdrop, &pictures.banners[std::size_t(Banner::RailTrail)],
            &pictures.banners[std::size_t(Banner::RocketStreak)]};
}

QSize keptSize(std::size_t index) {
    return index == 0 ? QSize(kBackdropSize, kBackdropSize) : QSize(kBannerWidth, kBannerHeight);
}

std::string_view bytesOf(const QImage& image) {
    return {reinterpret_cast<const char*>(image.constBits()), std::size_t(image.sizeInBytes())};
}

quint64 checkSum(const std::array<QImage*, 3>& images) {
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

bool SplashPictureCache::read(SplashPictures& pictures) const {
    QFile file(file_);
    if (!file.open(QIODevice::ReadOnly) || file.readLine(256) != headerLine()) return false;
    SplashPictures read;
    const std::array<QImage*, 3> images = kept(read);
    for (std::size_t i = 0; i < images.size(); ++i) {
        QImage image(keptSize(i), QImage::Format_ARGB32_Premultiplied);
        if (image.isNull() ||
            file.read(reinterpret_cast<char*>(image.bits()), image.sizeInBytes()) != image.sizeInBytes())
            return false;
        *images[i] = std::move(image);
    }
    quint64 sum = 0;
    if (file.read(reinterpret_cast<char*>(&sum), sizeof sum) != sizeof sum || sum != checkSum(images) || !file.atEnd())
        return false;
    for (std::size_t i = 0; i < images.size(); ++i)
        *kept(pictures)[i] = std::move(*images[i]);
    return true;
}

void SplashPictureCache::write(const SplashPictures& pictures) const {
    SplashPictures copy = pictures; // shares the pixels
    const std::array<QImage*, 3> images = kept(copy);
    for (std::size_t i = 0; i < images.size(); ++i) {
        if (images[i]->size() != keptSize(i)) return;
        if (images[i]->format() != QImage::Format_ARGB32_Premultiplied)
            *images[i] = images[i]->convertToFormat(QImage::Format_ARGB32_Premultiplied);
    }
    if (!QDir().mkpath(QFileInfo(file_).absolutePath())) return;
    QSaveFile file(file_);
    if (!file.open(QIODevice::WriteOnly)) return;
    file.write(headerLine());
    for (const QImage* image : images) {
        const std::string_view bytes = bytesOf(*image);
        file.write(bytes.data(), qint64(bytes.size()));
    }
    const quint64 sum = checkSum(images);
    file.write(reinterpret_cast<const char*>(&sum), sizeof sum);
    file.commit();
}

} // namespace ks
