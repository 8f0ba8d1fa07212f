#include "window_launcher.h"

#include "forms/flags_dialog.h"
#include "forms/launcher_start.h"
#include "forms/push_button.h"
#include "forms/splash_screen.h"

#include <QMenuBar>
#include <QMessageBox>
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

// The window comes down more than once on its way: it bounces.
int turnsDown(const std::vector<int>& tops) {
    int turns = 0;
    for (std::size_t i = 2; i < tops.size(); ++i)
        turns += tops[i - 1] > tops[i - 2] && tops[i - 1] > tops[i];
    return turns;
}

} // namespace

class StartupTest : public QObject {
    Q_OBJECT
private slots:
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
            QVERIFY(start.window().isVisible());
            QVERIFY(QTest::qWaitForWindowActive(&start.window()));
            QCOMPARE(launcher.program.mainTabs().current(), byContinue ? 0 : 2);
            QCOMPARE(keyboardOn(start.window()), byContinue ? QStringLiteral("FHOSTN") : QStringLiteral("FTEAMS"));

            launcher.platform.sounds.clear();
            QTest::keyClick(start.window().focusWidget(), Qt::Key_Return);
            QTest::qWait(20);
            QVERIFY(!QApplication::activeModalWidget());
            QVERIFY(launcher.platform.sounds.empty());
        }
        QCOMPARE(BeforeStart().program.mainTabs().captions()[2], std::string("Team Play"));
    }

    // The start-up message belongs to the splash. When the splash's time is up while the message is still open,
    // the hand-over waits for the answer: the splash, the message's owner, is not torn down under its open box.
    void theSplashsEndWaitsWhileTheStartUpMessageIsOpen() {
        TempDir home;
        const QByteArray oldHome = qgetenv("HOME");
        qputenv("HOME", QByteArray::fromStdString(home.path().string()));
        QtPlatform platform;
        Program program(platform, PathStyle::Linux);
        connectHandlers(program);
        bool boxSeen = false;
        QPointer<SplashScreen> splash;
        QTimer watch; // looks for the message once the start has shown it
        watch.callOnTimeout([&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (!box) return;
            watch.stop();
            splash = qobject_cast<SplashScreen*>(box->parentWidget());
            boxSeen = splash && box->windowTitle() == QStringLiteral("No Kestrand Directory");
            if (splash) fire(splash->endTimer());
            QTest::qWait(100); // time for anything the end may have left to the event loop
            QVERIFY(splash && splash->isVisible());
            box->button(QMessageBox::Ok)->click();
        });
        watch.start(10);
        LauncherStart start(program, &platform);
        watch.stop();
        qputenv("HOME", oldHome);
        if (!boxSeen) QSKIP("this machine has a Kestrand directory where the search looks, so no message came");
        QVERIFY(start.splash() == nullptr);
        QTRY_VERIFY(splash.isNull());
        QVERIFY(start.window().isVisible());
        QCOMPARE(program.mainTabs().current(), 2);
    }

    // A file named on the command line is opened once the main window shows, as File, Open opens it: the same
    // reading, the same message for a file that cannot be read.
    void aFileFromTheCommandLineOpensAfterTheSplashAsFileOpenDoes() {
        BeforeStart launcher;
        const std::string file = launcher.file("set hostname \"Ours\"\r\nset maxclients 12\r\n");
        launcher.program.field(id::FFile).setText("NONE");
        {
            LauncherStart start(launcher.program, nullptr, file);
            launcher.platform.messages.clear();
            fire(start.splash()->endTimer());
            QTRY_COMPARE(launcher.program.field(id::FFile).text(), file);
            QCOMPARE(launcher.main("FMC").text(), std::string("12"));
            QCOMPARE(launcher.program.mainTabs().current(), 0);
            QCOMPARE(launcher.shown(), std::vector<std::string>{kForeignWarning});
        }
        BeforeStart missing;
        LauncherStart start(missing.program, nullptr, "/nowhere/server.cfg");
        missing.platform.messages.clear();
        fire(start.splash()->endTimer());
        QTRY_COMPARE(missing.shown(), std::vector<std::string>{kFileWarning + "There is no such existing file!"});
        QCOMPARE(missing.program.field(id::FFile).text(), std::string("NONE"));
    }

    // About runs the splash's whole load step each time, modal over the main window.
    void aboutPlaysTheStartSoundEachTimeAndOnlyContinueTurnsToTheFirstTab() {
        WindowLauncher launcher;
        QAction* about = launcher.find<QAction>("mnuHelpAbout", launcher.window->menuBar());
        launcher.program.mainTabs().setCurrent(3);
        launcher.platform.sounds.clear();
        whenModal([](QWidget* modal) {
            auto* splash = qobject_cast<SplashScreen*>(modal);
            QVERIFY(splash && splash->parentWidget());
            fire(splash->endTimer());
        });
        about->trigger();
        QCOMPARE(launcher.program.mainTabs().current(), 3);
        QCOMPARE(keyboardOn(*launcher.window), QStringLiteral("FCC1"));
        whenModal([](QWidget* modal) {
            auto* splash = qobject_cast<SplashScreen*>(modal);
            QVERIFY(splash);
            fire(splash->continueTimer());
            splash->continueButton()->click();
        });
        about->trigger();
        QCOMPARE(launcher.program.mainTabs().current(), 0);
        QCOMPARE(keyboardOn(*launcher.window), QStringLiteral("FHOSTN"));
        QCOMPARE(launcher.platform.sounds,
                 (std::vector<std::string>{kStartSoundPath, kStartSoundPath, "/opt/kslaunch/tab.wav"}));
    }

    void theMainWindowHasOneSizeAndEnterPressesAFocusedButton() {
        WindowLauncher launcher;
        QCOMPARE(launcher.window->minimumSize(), launcher.window->maximumSize());
        auto* flags = launcher.find<QPushButton>("Command1");
        QVERIFY(qobject_cast<PushButton*>(flags));
        whenModal([](QWidget* dialog) {
            auto* close = dialog->findChild<QPushButton*>("Command1");
            close->setFocus();
            QTest::keyClick(close, Qt::Key_Return);
        });
        flags->setFocus();
        QTest::keyClick(flags, Qt::Key_Return);
        QVERIFY(!launcher.window->flagsDialog()->isVisible());
        QCOMPARE(launcher.platform.sounds,
                 (std::vector<std::string>{"/opt/kslaunch/rail.wav", "/opt/kslaunch/button.wav"}));
    }

    // The farewell runs once to its end however the operator leaves, and nothing that arrives meanwhile disturbs
    // it: a second close, File, Exit through its menu entry, the File menu's key. It plays the start sound, folds
    // the window to a bar that bounces and falls below the screen; closing saves nothing and asks nothing.
    void theFarewellRunsToItsEndWhateverArrivesMeanwhile_data() {
        QTest::addColumn<bool>("byFileExit");
        QTest::newRow("the close box") << false;
        QTest::newRow("File, Exit answered No") << true;
    }
    void theFarewellRunsToItsEndWhateverArrivesMeanwhile() {
        QFETCH(bool, byFileExit);
        WindowLauncher launcher;
        QWidget& window = *launcher.window;
        QAction* exit = launcher.find<QAction>("mnuFileExit", launcher.window->menuBar());
        launcher.platform.onEnd = [&] { launcher.window->leaveProgram(); };
        launcher.platform.sounds.clear();
        QSignalSpy played(launcher.window.get(), &MainWindow::farewellPlayed);
        std::vector<int> tops;
        QTimer sampler;
        sampler.callOnTimeout([&] { tops.push_back(window.frameGeometry().top()); });
        sampler.start(5);
        // A close as the window manager asks for it, by the window's close box.
        const auto closeBox = [&] { QVERIFY(!window.windowHandle()->close()); };
        QTimer::singleShot(200, &window, closeBox);
        QTimer::singleShot(300, &window, [&] { exit->trigger(); });
        QTimer::singleShot(400, &window, [&] { QTest::keyClick(&window, Qt::Key_F, Qt::AltModifier); });
        if (byFileExit) {
            launcher.platform.messageAnswers.push_back(MessageAnswer::No);
            exit->trigger();
        } else {
            closeBox();
        }
        QVERIFY(played.wait(60000));
        QTest::qWait(50);
        QCOMPARE(played.count(), 1);
        QCOMPARE(launcher.platform.endCalls, 1);
        QCOMPARE(launcher.platform.messages.size(), std::size_t(byFileExit ? 1 : 0));
        QCOMPARE(launcher.platform.sounds, std::vector<std::string>{kStartSoundPath});
        QVERIFY(launcher.platform.dialogs.empty() && !QApplication::activePopupWidget());
        QVERIFY(window.isVisible() && window.windowHandle()->handle());
        QVERIFY(window.frameGeometry().top() > window.screen()->geometry().bottom());
        QVERIFY(window.width() <= 4000 / 15 + 1);
        QVERIFY2(turnsDown(tops) >= 2, qPrintable(QString::number(turnsDown(tops))));
    }
};

static RegisterTest<StartupTest> registerStartupTest("StartupTest");

#include "startup_test.moc"
