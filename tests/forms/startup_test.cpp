#include "window_launcher.h"

#include "forms/flags_dialog.h"
#include "forms/launcher_start.h"
#include "forms/push_button.h"
#include "forms/splash_screen.h"

#include <QMenuBar>
#include <QPushButton>
#include <QScreen>

using namespace ks;
using namespace ks::test;

namespace {

// The launcher before its start: the core on the scripted platform, nothing found on the disk.
struct BeforeStart : Launcher {
    BeforeStart() : Launcher(PathStyle::Linux, false) { platform.home = ""; }
};

const std::string kStartSound = "/opt/kslaunch/ks4a.wav";

} // namespace

class StartupTest : public QObject {
    Q_OBJECT
private slots:
    // The splash stands first; the main window loads unseen behind it, its message over the splash. Continue
    // shows the first tab, the timer Team Play; the splash is gone with its first end, so nothing comes later.
    void theSplashStandsWhileTheMainWindowLoadsUnseenAndItsFirstEndChoosesTheTab() {
        for (const bool byContinue : {true, false}) {
            BeforeStart launcher;
            LauncherStart start(launcher.program, nullptr);
            QVERIFY(start.splash() && start.splash()->isVisible());
            QVERIFY(!start.window().isVisible());
            QCOMPARE(launcher.platform.sounds, std::vector<std::string>{kStartSound});
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
            QTest::qWait(20);
            QCOMPARE(launcher.program.mainTabs().current(), byContinue ? 0 : 2);
        }
        QCOMPARE(BeforeStart().program.mainTabs().captions()[2], std::string("Team Play"));
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
        whenModal([](QWidget* modal) {
            auto* splash = qobject_cast<SplashScreen*>(modal);
            QVERIFY(splash);
            fire(splash->continueTimer());
            splash->continueButton()->click();
        });
        about->trigger();
        QCOMPARE(launcher.program.mainTabs().current(), 0);
        QCOMPARE(launcher.platform.sounds,
                 (std::vector<std::string>{kStartSound, kStartSound, "/opt/kslaunch/tab.wav"}));
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

    // Closing the window plays the farewell once: the start sound, the fold to a bar that bounces and falls below
    // the screen. A second close request during the show changes nothing.
    void closingRunsTheFarewellOnceWhateverElseArrives() {
        WindowLauncher launcher;
        QWidget& window = *launcher.window;
        launcher.platform.onEnd = [&] { launcher.window->leaveProgram(); };
        launcher.platform.sounds.clear();
        std::vector<int> tops;
        QTimer sampler;
        sampler.callOnTimeout([&] { tops.push_back(window.frameGeometry().top()); });
        sampler.start(5);
        // During the show the operator closes the window again, then leaves by File, Exit without saving.
        QTimer::singleShot(200, [&] { window.close(); });
        QTimer::singleShot(300, [&] {
            launcher.platform.messageAnswers.push_back(MessageAnswer::No);
            exitLauncher(launcher.program);
        });
        window.close();
        // Closing saves nothing and asks nothing: the one question is File, Exit's.
        QCOMPARE(launcher.platform.endCalls, 2);
        QCOMPARE(launcher.platform.sounds, std::vector<std::string>{kStartSound});
        QVERIFY(launcher.platform.dialogs.empty() && launcher.platform.messages.size() == 1);
        QVERIFY(window.frameGeometry().top() > window.screen()->geometry().bottom());
        QVERIFY(window.width() <= 4000 / 15 + 1);
        // The window came down more than once on its way: it bounced.
        int turns = 0;
        for (std::size_t i = 2; i < tops.size(); ++i)
            turns += tops[i - 1] > tops[i - 2] && tops[i - 1] > tops[i];
        QVERIFY2(turns >= 2, qPrintable(QString::number(turns)));
    }
};

static RegisterTest<StartupTest> registerStartupTest("StartupTest");

#include "startup_test.moc"
