#include "forms/splash_screen.h"

#include "forms/look.h"
#include "forms/splash_art.h"

#include <QCloseEvent>
#include <QEventLoop>
#include <QFontMetricsF>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QPointer>
#include <QPushButton>
#include <QRegion>
#include <QScreen>
#include <QTextLayout>
#include <QTimer>

#include <utility>
#include <vector>

namespace ks {

namespace {

// The window's size and every place on it are in twips, 1/1440 inch, turned into pixels by the display's
// own resolution; the fonts are in points and follow the same resolution, so the two keep their proportion.
constexpr int kClientWidth = 8520;
constexpr int kClientHeight = 6420;

constexpr QRgb kBlue = qRgb(0, 0, 255);
constexpr QRgb kShadowGrey = qRgb(128, 128, 128);
constexpr QRgb kSilver = qRgb(192, 192, 192);
constexpr QRgb kLightGrey = qRgb(224, 224, 224);

constexpr int kPictureMs = 2000;
constexpr int kEndMs = 15000;
constexpr int kContinueMs = 1000;

// A text never shrinks below this to fit its place.
constexpr double kSmallestPointSize = 6;

QFont titleFont() {
    // A rounded face first; without one, a heavy plain sans serif reads closest to it.
    QFont font;
    font.setFamilies({QStringLiteral("Arial Rounded MT Bold"), QStringLiteral("Arial Rounded MT"),
                      QStringLiteral("VAG Rounded"), QStringLiteral("Nunito"), QStringLiteral("Varela Round"),
                      QStringLiteral("M PLUS Rounded 1c"), QStringLiteral("Arial"), QStringLiteral("Liberation Sans"),
                      QStringLiteral("DejaVu Sans")});
    font.setPointSizeF(24);
    font.setBold(true);
    return font;
}

QFont creditFont(double pointSize, bool underline) {
    QFont font = launcherFont(pointSize, true);
    font.setItalic(true);
    font.setUnderline(underline);
    return font;
}

// Where the lines of a label's text stand, wrapped at word boundaries as the label wraps them, in the
// coordinates of the label: from the top of the capitals to the bottom of the descenders.
std::vector<QRectF> textLines(const QString& text, const QFont& font, QLabel* label) {
    QTextLayout layout(text, font, label);
    QTextOption option(label->alignment() & Qt::AlignHorizontal_Mask);
    option.setWrapMode(QTextOption::WordWrap);
    layout.setTextOption(option);
    std::vector<QRectF> lines;
    double y = 0;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine()) {
        line.setLineWidth(label->width());
        line.setPosition(QPointF(0, y));
        y += line.height();
        lines.push_back(line.naturalTextRect());
    }
    layout.endLayout();

    const QFontMetricsF metrics(font, label);
    const double overhang = font.italic() ? metrics.ascent() * 0.12 : 0; // a slanted letter leans out
    const double shift = label->alignment() & Qt::AlignVCenter ? (label->height() - y) / 2 : 0;
    for (QRectF& line : lines) {
        const double baseline = line.top() + metrics.ascent();
        line = QRectF(QPointF(line.left(), baseline - metrics.capHeight() + shift),
                      QPointF(line.right() + overhang, baseline + metrics.descent() + shift));
    }
    return lines;
}

bool insideEllipse(QPointF point, QSizeF size) {
    const double dx = (point.x() - size.width() / 2) / (size.width() / 2);
    const double dy = (point.y() - size.height() / 2) / (size.height() / 2);
    return dx * dx + dy * dy <= 1;
}

// Makes the label's font smaller, a quarter point at a time, until its text stays inside the label and inside
// the round window of `size`, so that no letter is cut off on a machine whose fonts run wider.
void shrinkToFit(QLabel* label, QSizeF size) {
    const QRectF room(QPointF(0, 0), label->size());
    const auto fits = [&](const QFont& font) {
        for (const QRectF& line : textLines(label->text(), font, label)) {
            if (line.left() < room.left() || line.right() > room.right() || line.bottom() > room.bottom()) return false;
            const QRectF placed = line.translated(label->pos());
            for (const QPointF corner :
                 {placed.topLeft(), placed.topRight(), placed.bottomLeft(), placed.bottomRight()})
                if (!insideEllipse(corner, size)) return false;
        }
        return true;
    };
    QFont font = label->font();
    while (!fits(font) && font.pointSizeF() > kSmallestPointSize)
        font.setPointSizeF(font.pointSizeF() - 0.25);
    label->setFont(font);
}

} // namespace

SplashScreen::SplashScreen(const QString& versionText, std::function<void()> playStartSound, QWidget* owner,
                           std::function<SplashPictures()> pictures, const SplashPictureCache::KeptFrame* keptFrame)
    : QWidget(owner, Qt::Window | Qt::FramelessWindowHint), versionText_(versionText),
      picturesSource_(std::move(pictures)) {
    setObjectName(QStringLiteral("frmSplash"));
    if (const QScreen* screen = owner ? owner->screen() : QGuiApplication::primaryScreen()) {
        twipsPerPixelX_ = 1440.0 / screen->logicalDotsPerInchX();
        twipsPerPixelY_ = 1440.0 / screen->logicalDotsPerInchY();
    }
    QPalette palette = this->palette();
    palette.setColor(QPalette::Window, Qt::black);
    setPalette(palette);
    setAutoFillBackground(true);

    shape(owner);
    const qreal ratio = devicePixelRatioF();
    // A frame kept under other fonts still serves for the moment until the texts are built.
    if (keptFrame && keptFrame->label.startsWith(screenLabel() + ' ') && keptFrame->image.size() == size() * ratio) {
        keptFrame_ = keptFrame->image;
        keptFrame_.setDevicePixelRatio(ratio);
    } else {
        finishLoad();
    }
    if (playStartSound) playStartSound();
    startTimers();
}

void SplashScreen::finishLoad() {
    if (!picturesSource_) return;
    placePictures();
    buildLabels(versionText_);
    showPictures(std::exchange(picturesSource_, nullptr)());
    buildContinueButton();
    // Built on a screen that stands already, they show as they would have with it.
    if (isVisible())
        for (QWidget* child : findChildren<QWidget*>(Qt::FindDirectChildrenOnly))
            if (child != continueButton_) child->show();
    keptFrame_ = QImage();
}

QByteArray SplashScreen::screenLabel() const {
    const QScreen* shown = screen();
    return versionText_.toUtf8() + ' ' + QGuiApplication::platformName().toUtf8() + ' ' +
           QByteArray::number(devicePixelRatioF()) + ' ' +
           QByteArray::number(shown ? shown->logicalDotsPerInchX() : 0) + ' ' +
           QByteArray::number(shown ? shown->logicalDotsPerInchY() : 0);
}

QByteArray SplashScreen::frameLabel() const {
    if (picturesSource_) return screenLabel() + " unbuilt";
    QString fonts;
    for (const QLabel* label : findChildren<QLabel*>(Qt::FindDirectChildrenOnly)) {
        if (label->text().isEmpty()) continue;
        const QFontInfo face(label->font());
        fonts += face.family() + '/' + face.styleName() + '/' + QString::number(face.pointSizeF()) + '/' +
                 QString::number(face.weight()) + '/' + QString::number(face.italic()) + '/' +
                 QString::number(label->font().underline()) + ';';
    }
    return screenLabel() + ' ' + QByteArray::number(qHash(fonts), 16);
}

QImage SplashScreen::renderFrame() {
    if (picturesSource_ || changedSinceLoad_) return {};
    return grab().toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

void SplashScreen::paintEvent(QPaintEvent*) {
    if (keptFrame_.isNull()) return;
    QPainter painter(this);
    painter.drawImage(0, 0, keptFrame_);
}

QRect SplashScreen::toPixels(int left, int top, int width, int height) const {
    return QRect(qRound(left / twipsPerPixelX_), qRound(top / twipsPerPixelY_), qRound(width / twipsPerPixelX_),
                 qRound(height / twipsPerPixelY_));
}

void SplashScreen::placePictures() {
    struct Place {
        const char* name;
        int left, top;
    };
    // The large picture first, so that everything else lies on it.
    static constexpr Place kBackdrop{"Image4", 960, -840};
    static constexpr Place kBanners[] = {{"Image1", 960, 4320}, {"Image2", 960, 4320}, {"Image3", 1080, 4320}};
    const auto add = [this](const Place& place, QSize size) {
        auto* picture = new QLabel(this);
        picture->setObjectName(QLatin1String(place.name));
        picture->setGeometry(QRect(toPixels(place.left, place.top, 0, 0).topLeft(), size));
        return picture;
    };
    pictures_[3] = add(kBackdrop, QSize(kBackdropSize, kBackdropSize));
    for (int i = 0; i < 3; ++i)
        pictures_[i] = add(kBanners[i], QSize(kBannerWidth, kBannerHeight));
}

void SplashScreen::showPictures(SplashPictures pictures) {
    pictures_[3]->setPixmap(QPixmap::fromImage(std::move(pictures.backdrop)));
    for (int i = 0; i < 3; ++i)
        pictures_[i]->setPixmap(QPixmap::fromImage(std::move(pictures.banners[i])));
}

QLabel* SplashScreen::addLabel(const char* name, const QString& text, QRgb colour, QRect twips, const QFont& font,
                               Qt::Alignment alignment) {
    auto* label = new QLabel(text, this);
    label->setObjectName(QLatin1String(name));
    label->setGeometry(toPixels(twips.x(), twips.y(), twips.width(), twips.height()));
    label->setFont(font);
    label->setWordWrap(true);
    label->setAlignment(alignment);
    QPalette palette = label->palette();
    palette.setColor(QPalette::WindowText, QColor(colour));
    label->setPalette(palette);
    shrinkToFit(label, size());
    return label;
}

void SplashScreen::buildLabels(const QString& versionText) {
    const QString title = QStringLiteral("]{estrand Server Launcher");
    // The grey shadow first, so that the blue title lies on it. Both stand centred in their places, where the
    // round edge leaves the most room.
    const Qt::Alignment centred = Qt::AlignCenter;
    QLabel* shadow = addLabel("Label6", title, kShadowGrey, QRect(640, 750, 6132, 1332), titleFont(), centred);
    QLabel* front = addLabel("Label5", title, kBlue, QRect(600, 720, 6132, 1332), titleFont(), centred);
    // The shadow keeps the size of its title, whichever of the two had to shrink more.
    const QFont smaller = shadow->font().pointSizeF() < front->font().pointSizeF() ? shadow->font() : front->font();
    shadow->setFont(smaller);
    front->setFont(smaller);
    addLabel("Label7", QStringLiteral("Version"), kSilver, QRect(5040, 1800, 732, 372), launcherFont());
    addLabel("VERS", versionText, kSilver, QRect(5760, 1800, 732, 252), launcherFont());
    addLabel("Label1", QStringLiteral("Designed and Programmed by:"), kLightGrey, QRect(1560, 2400, 4572, 492),
             creditFont(13.5, true));
    const QFont names = creditFont(15.75, false);
    addLabel("Label2", QStringLiteral("Orvalt"), kBlue, QRect(1560, 3120, 1332, 492), names);
    addLabel("Label4", QStringLiteral(" and "), kBlue, QRect(3360, 3480, 972, 492), names);
    addLabel("Label3", QStringLiteral("Tamsinder"), kBlue, QRect(4440, 3720, 1812, 492), names);
}

void SplashScreen::buildContinueButton() {
    continueButton_ = new QPushButton(QStringLiteral("Continue"), this);
    continueButton_->setObjectName(QStringLiteral("Command1"));
    continueButton_->setFont(launcherFont(8.25));
    continueButton_->setGeometry(toPixels(3840, 5280, 1455, 375));
    continueButton_->setAutoDefault(true); // Enter presses it as well as Space
    continueButton_->hide();
    connect(continueButton_, &QPushButton::clicked, this, [this] { end(true); });
}

void SplashScreen::shape(QWidget* owner) {
    const int width = qRound(kClientWidth / twipsPerPixelX_);
    const int height = qRound(kClientHeight / twipsPerPixelY_);
    setFixedSize(width, height);
    setMask(QRegion(0, 0, width, height, QRegion::Ellipse));

    QPoint centre;
    if (owner)
        centre = owner->window()->frameGeometry().center();
    else if (const QScreen* screen = QGuiApplication::primaryScreen())
        centre = screen->geometry().center();
    move(centre - QPoint(width / 2, height / 2));
}

void SplashScreen::startTimers() {
    const auto add = [this](const char* name, int interval, bool singleShot) {
        auto* timer = new QTimer(this);
        timer->setObjectName(QLatin1String(name));
        timer->setInterval(interval);
        timer->setSingleShot(singleShot);
        return timer;
    };
    imageTimer_ = add("Timer1", kPictureMs, false);
    endTimer_ = add("Timer2", kEndMs, true);
    continueTimer_ = add("Timer3", kContinueMs, false);
    connect(imageTimer_, &QTimer::timeout, this, &SplashScreen::showNextPicture);
    connect(endTimer_, &QTimer::timeout, this, [this] { end(false); });
    connect(continueTimer_, &QTimer::timeout, this, &SplashScreen::offerContinue);
    for (QTimer* timer : {imageTimer_, endTimer_, continueTimer_})
        timer->start();
}

void SplashScreen::showNextPicture() {
    // Which of the three banners and the large picture show at each step of the cycle.
    static constexpr bool kShown[3][4] = {
        {true, false, false, true}, {false, true, false, false}, {false, false, true, true}};
    finishLoad(); // in case the kept frame still stood in
    changedSinceLoad_ = true;
    ++pictureStep_;
    for (int i = 0; i < 4; ++i)
        pictures_[i]->setVisible(kShown[pictureStep_ - 1][i]);
    if (pictureStep_ == 3) pictureStep_ = 0;
}

void SplashScreen::offerContinue() {
    finishLoad(); // in case the kept frame still stood in
    changedSinceLoad_ = true;
    if (!continueButton_->isHidden()) return;
    continueButton_->show();
    continueButton_->setFocus();
}

void SplashScreen::end(bool byContinue) {
    if (ended_) return;
    ended_ = true;
    endedByContinue_ = byContinue;
    imageTimer_->stop();
    endTimer_->stop();
    continueTimer_->stop();
    emit finished(byContinue); // the owner may close or delete the screen here
}

bool SplashScreen::exec() {
    if (ended_) return endedByContinue_;
    const QPointer<SplashScreen> alive(this);
    bool byContinue = false;
    QEventLoop loop;
    connect(this, &SplashScreen::finished, &loop, [&](bool how) {
        byContinue = how;
        loop.quit();
    });
    if (isVisible()) hide();
    setWindowModality(Qt::ApplicationModal);
    show();
    raise();
    activateWindow();
    loop.exec(QEventLoop::DialogExec);
    if (alive) hide();
    return byContinue;
}

void SplashScreen::closeEvent(QCloseEvent* event) {
    // The screen goes by Continue or by its timer, not by the window manager's close.
    if (ended_)
        event->accept();
    else
        event->ignore();
}

} // namespace ks
