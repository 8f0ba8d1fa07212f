#include "window_launcher.h"

#include "forms/flags_dialog.h"
#include "forms/launcher_start.h"
#include "forms/splash_screen.h"

#include <QPushButton>
#include <QScreen>
#include <QSignalSpy>
#include <QWindow>

using namespace ks;
using namespace ks::test;

namespace {

// The launcher before its start: the core on the scripted platform, nothing found on the disk.
struct BeforeStart : Launcher {
    BeforeStart() : Launcher(PathStyle::Linux, false) { platform.home = ""; }
};

const std::string kStartSoundPath = "/opt/kslaunch/ks4a.wav";

// The control that has the keyboard in the window, by name, and whether it shows the keyboard's cue.
QString keyboardOn(const QWidget& window) {
    const QWidget* focus = window.focusWidget();
    if (!focus) return QStringLiteral("nothing");
    return focus->objectName() + (window.testAttribute(Qt::WA_KeyboardFocusChange) ? "" : " (no cue)");
}

// Notes the top of the window at each move, and runs `onFirstMove` from the event loop after the first.
class MoveWatch : public QObject {
public:
    std::vector<int> tops;
    std::function<void()> onFirstMove;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::Move) return false;
        tops.push_back(static_cast<QWidget*>(watched)->frameGeometry().top());
        if (tops.size() == 1) QTimer::singleShot(0, this, onFirstMove);
        return false;
    }
};

// The pictures that show, as "1234" with a dot for each hidden one.
QString shownPictures(const SplashScreen& splash) {
    QString shown;
    for (const char* name : {"Image1", "Image2", "Image3", "Image4"})
        shown += splash.findChild<QLabel*>(QLatin1String(name))->isHidden() ? '.' : name[5];
    return shown;
}

// The alpha of each pixel of the widget, painted with its children on a transparent ground.
QImage paintedAlone(QWidget* widget) {
    QImage image(widget->size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    widget->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

} // namespace

class StartupTest : public QObject {
    Q_OBJECT
private slots:
    // The start sound plays as the splash loads; Continue comes after its first second, the end after fifteen, a new
    // banner every two. The timers are precise, so that Continue and the end never come early.
    void playsTheSoundAtLoadAndOffersContinueOnlyOnceTheFirstSecondHasPassed() {
        int sounds = 0;
        SplashScreen splash([&sounds] { ++sounds; });
        QCOMPARE(sounds, 1);
        splash.show();
        QVERIFY(splash.continueButton()->isHidden());
        QList<int> intervals;
        for (QTimer* timer : {splash.imageTimer(), splash.endTimer(), splash.continueTimer()}) {
            intervals << (timer->isActive() ? timer->interval() : -1) << timer->isSingleShot();
            QCOMPARE(timer->timerType(), Qt::PreciseTimer);
        }
        QCOMPARE(intervals, (QList<int>{2000, 0, 15000, 1, 1000, 0}));
        fire(splash.continueTimer());
        QVERIFY(splash.continueButton()->isVisible());
        QCOMPARE(splash.continueButton()->text(), QStringLiteral("Continue"));
        fire(splash.continueTimer()); // it goes on ticking and changes nothing
        QVERIFY(splash.continueButton()->isVisible() && !splash.hasEnded());

        QCOMPARE(shownPictures(splash), QStringLiteral("1234"));
        QStringList cycle;
        for (int shot = 0; shot < 7; ++shot) {
            fire(splash.imageTimer());
            cycle << shownPictures(splash);
        }
        QCOMPARE(cycle, (QStringList{"1..4", ".2..", "..34", "1..4", ".2..", "..34", "1..4"}));
    }

    // It ends once, by Continue or by its timer, whichever comes first; a close from the window manager does not end
    // it before its time.
    void endsOnceByContinueOrByItsTimerWhicheverComesFirst() {
        for (const bool byContinue : {true, false}) {
            SplashScreen splash({});
            QSignalSpy ends(&splash, &SplashScreen::finished);
            fire(splash.continueTimer());
            for (int i = 0; i < 2; ++i)
                if (byContinue == (i == 0))
                    QTest::mouseClick(splash.continueButton(), Qt::LeftButton);
                else
                    fire(splash.endTimer());
            QCOMPARE(ends.count(), 1);
            QCOMPARE(ends.at(0).at(0).toBool(), byContinue);
            for (QTimer* timer : {splash.imageTimer(), splash.endTimer(), splash.continueTimer()})
                QVERIFY(!timer->isActive());
        }
        SplashScreen closed({});
        closed.show();
        QVERIFY(!closed.close());
        QVERIFY(closed.isVisible() && !closed.hasEnded());
    }

    // Without a compositing window system the window itself is cut to the oval; the large picture, which reaches
    // above the window and past the oval's upper left, is empty there. The captions are pictures drawn with the
    // project's own fonts: each label holds its text and shows ink in its place.
    void isRoundAndEveryCaptionShowsItsTextInItsPlace() {
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
            QVERIFY(!mask.contains(corner));
        auto* backdrop = splash.findChild<QLabel*>("Image4");
        QCOMPARE(backdrop->geometry(), QRect(64, -56, 450, 450));
        QCOMPARE(qAlpha(paintedAlone(backdrop).pixel(5, 60)), 0);
        QCOMPARE(qAlpha(paintedAlone(backdrop).pixel(225, 260)), 255);
        QCOMPARE(splash.findChild<QLabel*>("Image3")->geometry(), QRect(72, 288, 468, 60));

        QStringList texts;
        for (const char* name : {"Label5", "Label6", "Label7", "VERS", "Label1", "Label2", "Label4", "Label3"}) {
            auto* label = splash.findChild<QLabel*>(QLatin1String(name));
            texts << label->text();
            const QImage image = paintedAlone(label);
            int inked = 0;
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    inked += qAlpha(image.pixel(x, y)) > 128;
            QVERIFY2(inked > 20, name);
        }
        QCOMPARE(texts.join('|'), QStringLiteral("]{estrand Server Launcher|]{estrand Server Launcher|Version|3.11|"
                                                 "Designed and Programmed by:|Orvalt| and |Tamsinder"));
        QCOMPARE(splash.findChild<QLabel*>("Label5")->geometry(), QRect(40, 48, 409, 89));
        QCOMPARE(splash.findChild<QLabel*>("VERS")->geometry(), QRect(384, 120, 49, 17));
    }
    // The splash stands first; the main window loads unseen behind it, its message over the splash. Continue
    // shows the first tab, the timer Team Play, each with the keyboard on its first field; the splash is gone with
    // its first end, so nothing comes later. Return then opens no dialog.
    void theSplashStandsWhileTheMainWindowLoadsUnseenAndItsFirstEndChoosesTheTab() {
        for (const bool byContinue : {true, false}) {
            BeforeStart launcher;
            LauncherStart start(launcher.program, nullptr);
            QVERIFY(start.splash() && start.splash()->isVisible());
            QVERIFY(!start.window().isVisible());
            QCOMPARE(launcher.platform.sounds, std::vector<std::string>{kStartSoundPath});
            QCOMPARE(launcher.shown().size(), std::size_t(1));
            QVERIFY(launcher.shown()[0].starts_with("No Kestrand Directory|"));
            QCOMPARE(launcher.check("ipCheck").state(), 1);

            SplashScreen* splash = start.splash();
            fire(splash->continueTimer());
            if (byContinue)
                QTest::mouseClick(splash->continueButton(), Qt::LeftButton);
            else
                fire(splash->endTimer());
            QVERIFY(start.splash() == nullptr);
            QVERIFY(QTest::qWaitForWindowActive(&start.window(), 60000));
            QCOMPARE(launcher.program.mainTabs().current(), byContinue ? 0 : 2);
            QCOMPARE(keyboardOn(start.window()), byContinue ? QStringLiteral("FHOSTN") : QStringLiteral("FTEAMS"));

            launcher.platform.sounds.clear();
            bool dialogOpened = false;
            whenModal([&](QWidget* dialog) {
                dialogOpened = dialog != nullptr;
                if (dialog) dialog->hide();
            });
            QTest::keyClick(start.window().focusWidget(), Qt::Key_Return);
            QCoreApplication::processEvents();
            QVERIFY(!dialogOpened && launcher.platform.sounds.empty());
        }
    }

    // A file named on the command line is opened once the main window shows, as File, Open opens it: the same
    // reading, the same message for a file that cannot be read.
    void aFileFromTheCommandLineOpensAfterTheSplashAsFileOpenDoes() {
        for (const bool readable : {true, false}) {
            BeforeStart launcher;
            const std::string file =
                readable ? launcher.file("set hostname \"Ours\"\r\nset maxclients 12\r\n") : "/nowhere/server.cfg";
            LauncherStart start(launcher.program, nullptr, file);
            launcher.platform.messages.clear();
            fire(start.splash()->endTimer());
            QTRY_VERIFY_WITH_TIMEOUT(!launcher.shown().empty(), 60000);
            QCOMPARE(launcher.shown(),
                     std::vector<std::string>{readable ? kForeignWarning
                                                       : kFileWarning + "There is no such existing file!"});
            QCOMPARE(launcher.main("FFile").text(), readable ? file : "NONE");
            QCOMPARE(launcher.main("FMC").text(), std::string(readable ? "12" : "16"));
            QCOMPARE(launcher.program.mainTabs().current(), readable ? 0 : 2);
        }
    }

    // About runs the splash's whole load step each time, modal over the main window; only Continue turns to the first
    // tab. Return on a focused button presses it.
    void aboutPlaysTheStartSoundEachTimeAndEnterPressesAFocusedButton() {
        WindowLauncher launcher;
        QAction* about = launcher.entry("&Help", "&About ");
        launcher.program.mainTabs().setCurrent(3);
        launcher.platform.sounds.clear();
        for (const bool byContinue : {false, true}) {
            whenModal([byContinue](QWidget* modal) {
                auto* splash = qobject_cast<SplashScreen*>(modal);
                QVERIFY(splash && splash->parentWidget());
                fire(splash->continueTimer());
                if (byContinue)
                    splash->continueButton()->click();
                else
                    fire(splash->endTimer());
            });
            about->trigger();
            QCOMPARE(launcher.program.mainTabs().current(), byContinue ? 0 : 3);
            QCOMPARE(keyboardOn(*launcher.window), byContinue ? QStringLiteral("FHOSTN") : QStringLiteral("FCC1"));
        }
        QCOMPARE(launcher.platform.sounds,
                 (std::vector<std::string>{kStartSoundPath, kStartSoundPath, "/opt/kslaunch/tab.wav"}));

        whenModal([](QWidget* dialog) {
            auto* close = dialog->findChild<QPushButton*>("Command1");
            close->setFocus();
            QTest::keyClick(close, Qt::Key_Return);
        });
        auto* flags = launcher.find<QPushButton>("Command1");
        flags->setFocus();
        QTest::keyClick(flags, Qt::Key_Return);
        QVERIFY(!launcher.window->flagsDialog()->isVisible());
        QCOMPARE(launcher.platform.sounds.back(), std::string("/opt/kslaunch/button.wav"));
    }

    // The farewell runs once to its end however the operator leaves, and nothing that arrives meanwhile disturbs
    // it: a second close, File, Exit through its menu entry, the File menu's key. It plays the start sound, folds
    // the window to a bar that comes down onto the screen's edge and falls below it; closing saves nothing and asks
    // nothing.
    void theFarewellRunsToItsEndWhateverArrivesMeanwhile_data() {
        QTest::addColumn<bool>("byFileExit");
        QTest::newRow("the close box") << false;
        QTest::newRow("File, Exit answered No") << true;
    }
    void theFarewellRunsToItsEndWhateverArrivesMeanwhile() {
        QFETCH(bool, byFileExit);
        WindowLauncher launcher;
        QWidget& window = *launcher.window;
        QAction* exit = launcher.entry("&File", "E&xit");
        launcher.platform.onEnd = [&] { launcher.window->leaveProgram(); };
        launcher.platform.sounds.clear();
        QSignalSpy played(launcher.window.get(), &MainWindow::farewellPlayed);
        // A close as the window manager asks for it, by the window's close box.
        const auto closeBox = [&] { QVERIFY(!window.windowHandle()->close()); };
        MoveWatch moves;
        moves.onFirstMove = [&] {
            closeBox();
            exit->trigger();
            QTest::keyClick(&window, Qt::Key_F, Qt::AltModifier);
        };
        window.installEventFilter(&moves);
        if (byFileExit) {
            launcher.platform.messageAnswers.push_back(MessageAnswer::No);
            exit->trigger();
        } else {
            closeBox();
        }
        QVERIFY(played.wait(60000));
        QCoreApplication::processEvents();
        QCOMPARE(played.count(), 1);
        QCOMPARE(launcher.platform.endCalls, 1);
        QCOMPARE(launcher.platform.messages.size(), std::size_t(byFileExit ? 1 : 0));
        QCOMPARE(launcher.platform.sounds, std::vector<std::string>{kStartSoundPath});
        QVERIFY(launcher.platform.dialogs.empty() && !QApplication::activePopupWidget());
        QVERIFY(window.isVisible() && window.windowHandle()->handle());
        const int bottom = window.screen()->geometry().bottom();
        QVERIFY(std::any_of(moves.tops.begin(), moves.tops.end(), [&](int top) { return qAbs(top - bottom) < 20; }));
        QVERIFY(window.frameGeometry().top() > bottom);
        QVERIFY(window.width() <= 4000 / 15 + 1);
    }
};

static RegisterTest<StartupTest> registerStartupTest("StartupTest");

#include "startup_test.moc"
