#include "window_launcher.h"

#include "forms/look.h"
#include "forms/views.h"
#include "frame/catalogue.h"
#include "support/temp_dir.h"

#include <QComboBox>
#include <QFileSystemModel>
#include <QMenuBar>
#include <QTreeView>

#include <filesystem>

using namespace ks;
using namespace ks::test;

class FieldViewTest : public QObject {
    Q_OBJECT
private slots:
    // A caption splits into phrases only where two blanks or more stand in a row.
    void aCaptionSplitsWhereTwoBlanksOrMoreStand() {
        QCOMPARE(captionPhrases(toQt(std::string(kSharedRespawnLabel))),
                 (QStringList{QStringLiteral("Health Respawn Time"), QStringLiteral("Laser HyperBlaster")}));
        QCOMPARE(captionPhrases(QStringLiteral("  a\t\tb \r\nc d  ")),
                 (QStringList{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c d")}));
        QCOMPARE(captionPhrases(QStringLiteral("one phrase")), QStringList{QStringLiteral("one phrase")});
        QCOMPARE(captionPhrases(QStringLiteral("   ")), QStringList());
        // A blank that is not a space, tab or line break belongs to the phrase.
        QCOMPARE(captionPhrases(QStringLiteral("a\u00a0\u00a0b")), QStringList{QStringLiteral("a\u00a0\u00a0b")});
    }

    void typingReachesTheCoreACoreChangeShowsWithoutRunningHandlersAgainAndLeavingValidates() {
        WindowLauncher launcher;
        launcher.program.mainTabs().setCurrent(0);
        auto* clients = launcher.find<QLineEdit>("FMC");
        int changes = 0;
        launcher.main("FMC").onChange([&] { ++changes; });
        typeInto(clients, QStringLiteral("24"));
        QCOMPARE(launcher.main("FMC").text(), std::string("24"));
        launcher.main("FMC").setText("16"); // as the reader does
        QCOMPARE(clients->text(), QStringLiteral("16"));
        QCOMPARE(changes, 3);
        // Bytes above 127 go both ways unchanged.
        auto* host = launcher.find<QLineEdit>("FHOSTN");
        launcher.main("FHOSTN").setText("caf\xe9");
        QCOMPARE(host->text(), QString::fromLatin1("caf\xe9"));
        typeInto(host, QString::fromLatin1("my \xe9t\xe9"));
        QCOMPARE(launcher.main("FHOSTN").text(), std::string("my \xe9t\xe9"));
        // The menu bar or a menu taking the keyboard does not leave the field.
        for (const Qt::FocusReason reason : {Qt::MenuBarFocusReason, Qt::PopupFocusReason}) {
            QFocusEvent toMenu(QEvent::FocusOut, reason);
            QApplication::sendEvent(host, &toMenu);
        }
        QCOMPARE(launcher.main("FHOSTN").text(), std::string("my \xe9t\xe9"));
        // Leaving a field quotes it; a refused value empties its box after the message.
        auto* deathmatch = launcher.find<QLineEdit>("FDM");
        typeInto(deathmatch, QStringLiteral("5"));
        QCOMPARE(launcher.main("FHOSTN").text(), std::string("\"my \xe9t\xe9\""));
        QCOMPARE(host->text(), QString::fromLatin1("\"my \xe9t\xe9\""));
        QCOMPARE(launcher.platform.messages.size(), std::size_t(1));
        QCOMPARE(launcher.platform.messages[0].text, std::string("Must be 0 or 1"));
        QCOMPARE(deathmatch->text(), QString());
    }

    void aTabChangeByClickOrCodePlaysTheCueOnceAndBringsItsRowNextToThePage() {
        WindowLauncher launcher;
        RowTabs* tabs = launcher.window->tabs();
        QVERIFY(tabs->tabRect(3).center().y() > tabs->tabRect(1).center().y());
        clickTab(tabs, 0);
        clickTab(tabs, 0); // the tab that is up: no change, no cue
        QCOMPARE(launcher.program.mainTabs().current(), 0);
        QVERIFY(tabs->tabRect(1).center().y() > tabs->tabRect(3).center().y());
        launcher.program.mainTabs().setCurrent(3);
        QVERIFY(tabs->page(3)->isVisible());
        QCOMPARE(launcher.platform.sounds, std::vector<std::string>(2, "/opt/kslaunch/tab.wav"));
        // Without a sound device the tab still changes, in silence.
        launcher.platform.soundDevices = 0;
        clickTab(tabs, 1);
        QCOMPARE(tabs->currentIndex(), 1);
        QCOMPARE(launcher.platform.sounds.size(), std::size_t(2));
        QVERIFY(launcher.platform.messages.empty());
    }

    void theTreeDerivesTheDirectoriesAndAnOpenedFileMovesBothSelectors() {
        TempDir temp;
        const std::string first = temp.file("a/quake2/kestrand"), second = temp.file("b/quake2/kestrand");
        std::filesystem::create_directories(first);
        std::filesystem::create_directories(second);
        WindowLauncher launcher([&](FakePlatform& platform) {
            platform.driveList = {"/", "/mnt/usb", "/mnt/cdrom"};
            platform.notReadyDrives = {"/mnt/cdrom"};
            platform.directories = {first, second};
        });
        auto* drives = launcher.find<QComboBox>("Drive2");
        auto* tree = launcher.find<QTreeView>("Dir2");
        auto* model = qobject_cast<QFileSystemModel*>(tree->model());
        const auto openInTree = [&](const std::string& path) {
            tree->setCurrentIndex(model->index(toQt(path)));
            emit tree->activated(tree->currentIndex());
        };
        openInTree(first);
        QCOMPARE(launcher.main("QDIR").text(), temp.file("a/quake2"));
        QCOMPARE(launcher.main("FGD").text(), std::string("kestrand"));
        // A directory or drive the platform does not find leaves its selector where it was.
        openInTree(temp.file("b"));
        QCOMPARE(model->filePath(tree->currentIndex()), toQt(first));
        for (int drive : {1, 2}) {
            drives->setCurrentIndex(drive);
            emit drives->activated(drive);
        }
        QCOMPARE(drives->currentText(), QStringLiteral("/mnt/usb"));

        const std::string file = temp.file("server.cfg");
        writeBytes(file, "// set qdir " + temp.file("b/quake2") + " // Added\r\nset game_dir kestrand\r\n");
        launcher.platform.dialogAnswers.push_back(file);
        launcher.find<QAction>("mnuFileOpen", launcher.window->menuBar())->trigger();
        QCOMPARE(drives->currentText(), QStringLiteral("/"));
        QCOMPARE(model->filePath(tree->currentIndex()), toQt(second));
    }
};

static RegisterTest<FieldViewTest> registerFieldViewTest("FieldViewTest");

#include "field_view_test.moc"
