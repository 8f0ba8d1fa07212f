#include "forms/splash_screen.h"

#include "forms/look.h"
#include "forms/push_button.h"
#include "forms/splash_layout.h"
#include "forms/startup_trace.h"
#include "frame/program.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QEventLoop>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPointer>
#include <QRegion>
#include <QResource>
#include <QScreen>
#include <QTimer>

#ifdef Q_OS_WIN
#include <windows.h>
#endif

#ifdef KS_HAVE_XCB
#include <QtGui/qguiapplication_platform.h>
#include <xcb/xcb.h>

#include <cstdlib>
#endif

#include <iterator>
#include <utility>

namespace ks {

namespace {

constexpr int kPictureMs = 2000;
constexpr int kEndMs = 15000;
constexpr int kContinueMs = 1000;

QRect placeOf(int left, int top, int width, int height) {
    return QRect(splash::pixels(left), splash::pixels(top), splash::pixels(width), splash::pixels(height));
}

QString latin1(std::string_view text) { return QString::fromLatin1(text.data(), qsizetype(text.size())); }

// The picture of that name drawn at build time (tools/splash), in place in the program's resources: bare
// premultiplied pixels of the given size. A picture missing or of another size stays empty.
QImage drawnPicture(std::string_view name, QSize size) {
    const QResource resource(QStringLiteral(":/splash/") + latin1(name));
    const qsizetype rowBytes = qsizetype(size.width()) * 4;
    if (!resource.isValid() || resource.compressionAlgorithm() != QResource::NoCompression ||
        resource.size() != rowBytes * size.height())
        return {};
    return QImage(resource.data(), size.width(), size.height(), rowBytes, QImage::Format_ARGB32_Premultiplied);
}

// A label that paints a picture drawn at build time: one of the splash's pictures, or a caption, which holds its
// text like any label.
class DrawnLabel : public QLabel {
public:
    DrawnLabel(std::string_view name, const QString& text, QRect place, QWidget* parent)
        : QLabel(text, parent), picture_(drawnPicture(name, place.size())) {
        setObjectName(latin1(name));
        setGeometry(place);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        if (!picture_.isNull()) QPainter(this).drawImage(0, 0, picture_);
    }

private:
    QImage picture_;
};

// Whether the window system composes windows, so that a window's transparent pixels show what lies behind it.
bool windowSystemComposes() {
#if defined(Q_OS_WIN) || defined(Q_OS_MACOS)
    return true;
#else
    if (QGuiApplication::platformName().startsWith(QLatin1String("wayland"))) return true;
#ifdef KS_HAVE_XCB
    // On X11 a compositing manager owns the selection _NET_WM_CM_Sn of its screen.
    auto* x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    if (!x11 || !x11->connection()) return false;
    xcb_connection_t* connection = x11->connection();
    int screen = 0;
    char* host = nullptr;
    int display = 0;
    if (xcb_parse_display(nullptr, &host, &display, &screen)) std::free(host);
    const QByteArray name = "_NET_WM_CM_S" + QByteArray::number(screen);
    xcb_intern_atom_reply_t* atom = xcb_intern_atom_reply(
        connection, xcb_intern_atom(connection, 1, std::uint16_t(name.size()), name.constData()), nullptr);
    const xcb_atom_t selection = atom ? atom->atom : xcb_atom_t(XCB_NONE);
    std::free(atom);
    if (selection == XCB_NONE) return false;
    xcb_get_selection_owner_reply_t* owner =
        xcb_get_selection_owner_reply(connection, xcb_get_selection_owner(connection, selection), nullptr);
    const bool composes = owner && owner->owner != XCB_NONE;
    std::free(owner);
    return composes;
#else
    return false;
#endif
#endif
}

#ifdef Q_OS_WIN
// On the Windows 95 family the splash put the launcher's shortcut back on the desktop whenever it was missing: it
// looks for the short name and copies the shortcut template that lies beside the program to the long one. The NT
// family, the only one Qt 6 runs on, leaves the desktop alone, and so does a failed copy.
void restoreDesktopShortcut() {
    const bool windows95Family = (GetVersion() & 0x80000000u) != 0;
    if (!windows95Family || QFileInfo(QStringLiteral("c:/windows/desktop/kestra~1.lnk")).isFile()) return;
    QFile::copy(QCoreApplication::applicationDirPath() + QStringLiteral("/kslaunch.lnb"),
                QStringLiteral("c:/windows/desktop/Kestrand Launcher.lnk"));
}
#endif

} // namespace

SplashScreen::SplashScreen(std::function<void()> playStartSound, QWidget* owner)
    : QWidget(owner, Qt::Window | Qt::FramelessWindowHint) {
    setObjectName(QStringLiteral("frmSplash"));
    shape(owner);
    buildPictures();
    buildCaptions();
    buildContinueButton();
    if (playStartSound) playStartSound();
#ifdef Q_OS_WIN
    restoreDesktopShortcut();
#endif
    startTimers();
    traceStartupStep("splash-loaded");
}

bool SplashScreen::hasSmoothEdge() const { return testAttribute(Qt::WA_TranslucentBackground); }

void SplashScreen::shape(QWidget* owner) {
    const QSize size(splash::kWidthPixels, splash::kHeightPixels);
    setFixedSize(size);
    // The window is round: where the window system composes, an oval with a smooth edge on a transparent
    // window; elsewhere the window itself is cut to the oval, pixel by pixel.
    if (windowSystemComposes())
        setAttribute(Qt::WA_TranslucentBackground);
    else
        setMask(QRegion(0, 0, size.width(), size.height(), QRegion::Ellipse));

    QPoint centre;
    if (owner)
        centre = owner->window()->frameGeometry().center();
    else if (const QScreen* screen = QGuiApplication::primaryScreen())
        centre = screen->geometry().center();
    move(centre - QPoint(size.width() / 2, size.height() / 2));
}

void SplashScreen::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    if (!hasSmoothEdge()) {
        painter.fillRect(rect(), Qt::black);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::black);
    painter.drawEllipse(QRectF(rect()));
}

void SplashScreen::buildPictures() {
    // The large picture first, so that everything else lies on it; the pictures are cut to the oval already.
    for (std::size_t i = 0; i < pictures_.size(); ++i) {
        const splash::PicturePlace& place = splash::kPictures[i];
        const QRect where(placeOf(place.left, place.top, 0, 0).topLeft(), QSize(place.width, place.height));
        pictures_[i] = new DrawnLabel(place.name, {}, where, this);
    }
}

void SplashScreen::buildCaptions() {
    for (const splash::Caption& caption : splash::kCaptions) {
        const std::string_view text = caption.text.empty() ? kProgramVersionText : caption.text;
        new DrawnLabel(caption.name, latin1(text), placeOf(caption.left, caption.top, caption.width, caption.height),
                       this);
    }
}

void SplashScreen::buildContinueButton() {
    // Its font is given when it first shows: the first frame has no text to lay out.
    continueButton_ = new PushButton(QStringLiteral("Continue"), this);
    continueButton_->setObjectName(QStringLiteral("Command1"));
    continueButton_->setGeometry(placeOf(3840, 5280, 1455, 375));
    continueButton_->hide();
    connect(continueButton_, &QPushButton::clicked, this, [this] { end(true); });
}

void SplashScreen::startTimers() {
    // Precise timers: Continue comes no sooner than its second, the end no sooner than its fifteen seconds.
    const auto add = [this](const char* name, int interval, bool singleShot) {
        auto* timer = new QTimer(this);
        timer->setObjectName(QLatin1String(name));
        timer->setTimerType(Qt::PreciseTimer);
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
    // Which pictures show at each step of the cycle, in the order of kPictures: Image4, Image1, Image2, Image3.
    static constexpr bool kShown[3][std::size(splash::kPictures)] = {
        {true, true, false, false}, {false, false, true, false}, {true, false, false, true}};
    ++pictureStep_;
    for (std::size_t i = 0; i < pictures_.size(); ++i)
        pictures_[i]->setVisible(kShown[pictureStep_ - 1][i]);
    if (pictureStep_ == 3) pictureStep_ = 0;
}

void SplashScreen::offerContinue() {
    if (!continueButton_->isHidden()) return;
    continueButton_->setFont(launcherFont(8.25));
    continueButton_->show();
    continueButton_->setFocus();
    traceStartupStep("continue-offered");
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
