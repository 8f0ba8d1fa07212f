#include "window_launcher.h"

#include "forms/splash_art.h"
#include "forms/splash_picture_cache.h"
#include "forms/splash_screen.h"
#include "forms/start_ahead.h"
#include "support/temp_dir.h"

#include <QPushButton>
#include <QSignalSpy>

using namespace ks;
using namespace ks::test;

namespace {

std::vector<bool> shownPictures(const SplashScreen& splash) {
    std::vector<bool> shown;
    for (const char* name : {"Image1", "Image2", "Image3", "Image4"})
        shown.push_back(!splash.findChild<QLabel*>(QLatin1String(name))->isHidden());
    return shown;
}

void comparePictures(const SplashPictures& actual, const SplashPictures& expected) {
    QCOMPARE(actual.backdrop, expected.backdrop);
    for (std::size_t i = 0; i < expected.banners.size(); ++i)
        QCOMPARE(actual.banners[i], expected.banners[i]);
}

} // namespace

class SplashTest : public QObject {
    Q_OBJECT
private slots:
    // The start sound plays as the splash loads; Continue comes after its first second.
    void playsTheSoundAtLoadAndOffersContinueOnlyOnceTheFirstSecondHasPassed() {
        int sounds = 0;
        SplashScreen splash(QStringLiteral("3.11"), [&sounds] { ++sounds; });
        QCOMPARE(sounds, 1);
        splash.show();
        QCOMPARE(splash.findChild<QLabel*>("VERS")->text(), QStringLiteral("3.11"));
        QVERIFY(splash.continueButton()->isHidden());
        QList<int> intervals;
        for (QTimer* timer : {splash.imageTimer(), splash.endTimer(), splash.continueTimer()})
            intervals << (timer->isActive() ? timer->interval() : -1);
        QCOMPARE(intervals, (QList<int>{2000, 15000, 1000}));
        fire(splash.continueTimer());
        QVERIFY(splash.continueButton()->isVisible());
        fire(splash.continueTimer()); // it goes on ticking and changes nothing
        QVERIFY(splash.continueButton()->isVisible() && !splash.hasEnded());
    }

    void picturesTakeTurnsEveryTwoSecondsInACycleOfThree() {
        SplashScreen splash(QStringLiteral("3.11"), {});
        QCOMPARE(shownPictures(splash), (std::vector<bool>{true, true, true, true}));
        const std::vector<std::vector<bool>> cycle = {
            {true, false, false, true}, {false, true, false, false}, {false, false, true, true}};
        for (int shot = 0; shot < 7; ++shot) {
            fire(splash.imageTimer());
            QCOMPARE(shownPictures(splash), cycle[shot % 3]);
        }
    }

    void endsOnceByContinueOrByItsTimerWhicheverComesFirst() {
        SplashScreen byButton(QStringLiteral("3.11"), {});
        QSignalSpy buttonEnds(&byButton, &SplashScreen::finished);
        fire(byButton.continueTimer());
        QTest::mouseClick(byButton.continueButton(), Qt::LeftButton);
        fire(byButton.endTimer());
        QCOMPARE(buttonEnds.count(), 1);
        QCOMPARE(buttonEnds.at(0).at(0).toBool(), true);
        for (QTimer* timer : {byButton.imageTimer(), byButton.endTimer(), byButton.continueTimer()})
            QVERIFY(!timer->isActive());

        SplashScreen byTimer(QStringLiteral("3.11"), {});
        QSignalSpy timerEnds(&byTimer, &SplashScreen::finished);
        fire(byTimer.continueTimer());
        fire(byTimer.endTimer());
        QTest::mouseClick(byTimer.continueButton(), Qt::LeftButton);
        QCOMPARE(timerEnds.count(), 1);
        QCOMPARE(timerEnds.at(0).at(0).toBool(), false);

        // A close from the window manager does not end it before its time.
        SplashScreen closed(QStringLiteral("3.11"), {});
        closed.show();
        QVERIFY(!closed.close());
        QVERIFY(closed.isVisible() && !closed.hasEnded());
    }

    void isCutToAnEllipseFillingTheWindow() {
        SplashScreen splash(QStringLiteral("3.11"), {});
        const QRegion mask = splash.mask();
        const int w = splash.width(), h = splash.height();
        QCOMPARE(mask.boundingRect(), splash.rect());
        for (const QPoint inside : {QPoint(w / 2, h / 2), QPoint(3, h / 2), QPoint(w / 2, h - 3)})
            QVERIFY(mask.contains(inside));
        for (const QPoint corner : {QPoint(4, 4), QPoint(w - 5, 4), QPoint(4, h - 5), QPoint(w - 5, h - 5),
                                    QPoint(w / 8, h / 8), QPoint(w - w / 8, h - h / 8)})
            QVERIFY2(!mask.contains(corner), qPrintable(QStringLiteral("%1, %2").arg(corner.x()).arg(corner.y())));
    }

    void everyTextFitsItsPlaceWithTheFontsOfThisMachine() {
        SplashScreen splash(QStringLiteral("3.11"), {});
        for (const QLabel* label : splash.findChildren<QLabel*>()) {
            if (label->text().isEmpty()) continue; // a picture
            QVERIFY2(label->heightForWidth(label->width()) <= label->height(), qPrintable(label->objectName()));
            QVERIFY2(QFontMetrics(label->font()).horizontalAdvance(label->text().trimmed().section(' ', 0, 0)) <=
                         label->width(),
                     qPrintable(label->objectName()));
        }
        // The shadow stays the shape of its title.
        QCOMPARE(splash.findChild<QLabel*>("Label6")->font(), splash.findChild<QLabel*>("Label5")->font());
    }

    // What the thread beside the start hands over is what the splash would draw itself: on the first run, which
    // keeps the pictures, on the next, which finds them kept, and after the fonts came to shape the name band's
    // letters otherwise, which draws the band again. A kept file cut short, damaged, grown or written by another
    // build is passed over.
    void picturesDrawnAheadAreThoseTheSplashWouldDrawWhateverWasKept() {
        TempDir temp;
        const std::string file = temp.file("cache/kslaunch/splash-pictures");
        const SplashPictureCache cache(QString::fromStdString(file));
        const SplashPictures drawn = drawSplashPictures();
        QVERIFY(drawn.banners[0] != drawn.banners[1] && drawn.banners[1] != drawn.banners[2]);
        const quint64 letters = SplashPictureCache::fingerprint(nameBandLetters());
        QVERIFY(SplashPictureCache::fingerprint(nameBandLetters().translated(0.5, 0)) != letters);
        const auto startOnce = [&] {
            {
                StartAhead ahead(cache);
                ahead.applicationReady();
                comparePictures(ahead.takeSplashPictures(), drawn);
            }
            SplashPictureCache::Kept kept;
            QVERIFY(cache.read(kept));
            comparePictures(kept.pictures, drawn);
            QCOMPARE(kept.letters, letters);
        };
        startOnce();
        startOnce();
        SplashPictures otherFonts = drawn;
        otherFonts.banners[std::size_t(Banner::NameBand)] = drawn.banners[std::size_t(Banner::RailTrail)];
        cache.write(otherFonts, nameBandLetters().translated(1, 0));
        startOnce();

        const std::string whole = readBytes(file);
        std::string damaged = whole;
        damaged[damaged.size() / 2] ^= 0x10;
        std::string otherBuild = whole;
        otherBuild.replace(otherBuild.find("pictures ") + 9, 4, "0000");
        for (const std::string& bytes : {whole.substr(0, whole.size() - 1), damaged, otherBuild, whole + "x"}) {
            writeBytes(file, bytes);
            SplashPictureCache::Kept nothing;
            QVERIFY(!cache.read(nothing));
            QVERIFY(nothing.pictures.backdrop.isNull() && nothing.pictures.banners[2].isNull());
        }
    }

    // A first frame kept from a splash stands in for the texts and pictures of the next until they are built, with
    // the same pixels before and after. A frame kept for another version or screen, or a frame file cut short or
    // damaged, is passed over and the texts are built at once.
    void aKeptFrameLooksLikeTheSplashItStandsInFor() {
        SplashScreen built(QStringLiteral("3.11"), {});
        built.show();
        const SplashPictureCache::KeptFrame kept{built.frameLabel(), built.renderFrame()};
        QVERIFY(!kept.image.isNull());
        TempDir temp;
        const SplashPictureCache cache(QString::fromStdString(temp.file("splash-pictures")));
        cache.writeFrame(kept);
        SplashPictureCache::KeptFrame read;
        QVERIFY(cache.readFrame(read));
        QCOMPARE(read.label, kept.label);

        SplashScreen standIn(QStringLiteral("3.11"), {}, nullptr, drawSplashPictures, &read);
        QVERIFY(!standIn.findChild<QLabel*>("VERS"));
        QCOMPARE(standIn.grab().toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied), kept.image);
        standIn.show();
        standIn.finishLoad();
        QVERIFY(standIn.findChild<QLabel*>("VERS")->isVisible() && standIn.continueButton()->isHidden());
        QCOMPARE(standIn.renderFrame(), kept.image);
        QCOMPARE(standIn.frameLabel(), kept.label);
        fire(standIn.imageTimer()); // a banner turns: no longer the frame of the load
        QVERIFY(standIn.renderFrame().isNull());

        SplashPictureCache::KeptFrame otherVersion = kept;
        otherVersion.label.replace("3.11", "3.10");
        SplashScreen passedOver(QStringLiteral("3.11"), {}, nullptr, drawSplashPictures, &otherVersion);
        QVERIFY(passedOver.findChild<QLabel*>("VERS"));

        const std::string file = temp.file("splash-frame");
        const std::string whole = readBytes(file);
        std::string damaged = whole;
        damaged[damaged.size() / 2] ^= 0x10;
        for (const std::string& bytes : {whole.substr(0, whole.size() - 1), damaged, whole + "x"}) {
            writeBytes(file, bytes);
            SplashPictureCache::KeptFrame nothing;
            QVERIFY(!cache.readFrame(nothing));
            QVERIFY(nothing.image.isNull());
        }
    }
};

static RegisterTest<SplashTest> registerSplashTest("SplashTest");

#include "splash_test.moc"
