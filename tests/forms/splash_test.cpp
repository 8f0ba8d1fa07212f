#include "window_launcher.h"

#include "forms/splash_screen.h"

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

// How much of the widget's pixel is covered, as its picture is painted on a transparent ground.
int coverAt(QWidget* widget, QPoint at) {
    QImage image(widget->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    widget->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return qAlpha(image.pixel(at));
}

} // namespace

class SplashTest : public QObject {
    Q_OBJECT
private slots:
    // The start sound plays as the splash loads; Continue comes after its first second. The timers are precise,
    // so that Continue and the end never come early.
    void playsTheSoundAtLoadAndOffersContinueOnlyOnceTheFirstSecondHasPassed() {
        int sounds = 0;
        SplashScreen splash([&sounds] { ++sounds; });
        QCOMPARE(sounds, 1);
        splash.show();
        QVERIFY(splash.continueButton()->isHidden());
        QList<int> intervals;
        for (QTimer* timer : {splash.imageTimer(), splash.endTimer(), splash.continueTimer()}) {
            intervals << (timer->isActive() ? timer->interval() : -1);
            QCOMPARE(timer->timerType(), Qt::PreciseTimer);
        }
        QCOMPARE(intervals, (QList<int>{2000, 15000, 1000}));
        fire(splash.continueTimer());
        QVERIFY(splash.continueButton()->isVisible());
        QCOMPARE(splash.continueButton()->text(), QStringLiteral("Continue"));
        fire(splash.continueTimer()); // it goes on ticking and changes nothing
        QVERIFY(splash.continueButton()->isVisible() && !splash.hasEnded());
    }

    void picturesTakeTurnsEveryTwoSecondsInACycleOfThree() {
        SplashScreen splash({});
        QCOMPARE(shownPictures(splash), (std::vector<bool>{true, true, true, true}));
        const std::vector<std::vector<bool>> cycle = {
            {true, false, false, true}, {false, true, false, false}, {false, false, true, true}};
        for (int shot = 0; shot < 7; ++shot) {
            fire(splash.imageTimer());
            QCOMPARE(shownPictures(splash), cycle[shot % 3]);
        }
    }

    void endsOnceByContinueOrByItsTimerWhicheverComesFirst() {
        SplashScreen byButton({});
        QSignalSpy buttonEnds(&byButton, &SplashScreen::finished);
        fire(byButton.continueTimer());
        QTest::mouseClick(byButton.continueButton(), Qt::LeftButton);
        fire(byButton.endTimer());
        QCOMPARE(buttonEnds.count(), 1);
        QCOMPARE(buttonEnds.at(0).at(0).toBool(), true);
        for (QTimer* timer : {byButton.imageTimer(), byButton.endTimer(), byButton.continueTimer()})
            QVERIFY(!timer->isActive());

        SplashScreen byTimer({});
        QSignalSpy timerEnds(&byTimer, &SplashScreen::finished);
        fire(byTimer.continueTimer());
        fire(byTimer.endTimer());
        QTest::mouseClick(byTimer.continueButton(), Qt::LeftButton);
        QCOMPARE(timerEnds.count(), 1);
        QCOMPARE(timerEnds.at(0).at(0).toBool(), false);

        // A close from the window manager does not end it before its time.
        SplashScreen closed({});
        closed.show();
        QVERIFY(!closed.close());
        QVERIFY(closed.isVisible() && !closed.hasEnded());
    }

    // Without a compositing window system the window itself is cut to the oval; the pictures drawn at build time
    // are cut to it as well, so that nothing of them stands outside it where the edge is drawn smooth.
    void isRoundAndNothingOfItStandsOutsideTheOval() {
        SplashScreen splash({});
        QVERIFY(!splash.hasSmoothEdge()); // the offscreen platform composes nothing
        const QRegion mask = splash.mask();
        const int w = splash.width(), h = splash.height();
        QCOMPARE(splash.size(), QSize(568, 428));
        QCOMPARE(mask.boundingRect(), splash.rect());
        for (const QPoint inside : {QPoint(w / 2, h / 2), QPoint(3, h / 2), QPoint(w / 2, h - 3)})
            QVERIFY(mask.contains(inside));
        for (const QPoint corner : {QPoint(4, 4), QPoint(w - 5, 4), QPoint(4, h - 5), QPoint(w - 5, h - 5),
                                    QPoint(w / 8, h / 8), QPoint(w - w / 8, h - h / 8)})
            QVERIFY2(!mask.contains(corner), qPrintable(QStringLiteral("%1, %2").arg(corner.x()).arg(corner.y())));

        // The large picture reaches above the window and past the oval's upper left, where its faded edge would
        // still show a little; there it is empty.
        auto* backdrop = splash.findChild<QLabel*>("Image4");
        QCOMPARE(backdrop->geometry(), QRect(64, -56, 450, 450));
        QCOMPARE(coverAt(backdrop, QPoint(5, 60)), 0);
        QCOMPARE(coverAt(backdrop, QPoint(225, 260)), 255);
        QCOMPARE(splash.findChild<QLabel*>("Image3")->geometry(), QRect(72, 288, 468, 60));
    }

    // The captions are pictures drawn with the project's own fonts; each label holds its text, in its place.
    void everyCaptionHoldsItsTextAndShowsItsLettersInItsPlace() {
        SplashScreen splash({});
        const std::vector<std::pair<const char*, QString>> captions = {
            {"Label5", QStringLiteral("]{estrand Server Launcher")},
            {"Label6", QStringLiteral("]{estrand Server Launcher")},
            {"Label7", QStringLiteral("Version")},
            {"VERS", QStringLiteral("3.11")},
            {"Label1", QStringLiteral("Designed and Programmed by:")},
            {"Label2", QStringLiteral("Orvalt")},
            {"Label4", QStringLiteral(" and ")},
            {"Label3", QStringLiteral("Tamsinder")},
        };
        for (const auto& [name, text] : captions) {
            auto* label = splash.findChild<QLabel*>(QLatin1String(name));
            QVERIFY2(label, name);
            QCOMPARE(label->text(), text);
            // Some of its pixels carry ink.
            QImage image(label->size(), QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            label->render(&image);
            int inked = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    inked += qAlpha(image.pixel(x, y)) > 128;
            QVERIFY2(inked > 20, name);
        }
        QCOMPARE(splash.findChild<QLabel*>("Label5")->geometry(), QRect(40, 48, 409, 89));
        QCOMPARE(splash.findChild<QLabel*>("VERS")->geometry(), QRect(384, 120, 49, 17));
    }
};

static RegisterTest<SplashTest> registerSplashTest("SplashTest");

#include "splash_test.moc"
