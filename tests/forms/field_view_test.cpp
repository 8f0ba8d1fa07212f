#include "launcher_fixture.h"

#include "config/writer.h"
#include "forms/look.h"
#include "forms/row_tabs.h"
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
    void typingReachesTheCoreOnceAKeyAndACoreChangeShowsWithoutRunningHandlersAgain() {
        Launcher launcher;
        launcher.program.frmMain.tabs().setCurrent(0);
        Field& clients = launcher.program.frmMain.field("FMC");
        auto* edit = launcher.find<QLineEdit>("FMC");
        int changes = 0, edits = 0;
        clients.onChange([&] { ++changes; });
        QObject::connect(edit, &QLineEdit::textEdited, [&] { ++edits; });
        typeInto(edit, QStringLiteral("24"));
        QCOMPARE(clients.text(), std::string("24"));
        QVERIFY(contains(RenderConfig(launcher.program), "set maxclients 24\r\n"));
        clients.setText("16"); // as the reader does
        QCOMPARE(edit->text(), QStringLiteral("16"));
        QCOMPARE(changes, 3);
        QCOMPARE(edits, 2);
        // Bytes above 127 go both ways unchanged.
        launcher.program.frmMain.field("FTN1").setText("caf\xe9");
        QCOMPARE(launcher.find<QLineEdit>("FTN1")->text(), QString::fromLatin1("caf\xe9"));
        typeInto(launcher.find<QLineEdit>("FTN1"), QString::fromLatin1("\xe9t\xe9"));
        QCOMPARE(launcher.program.frmMain.field("FTN1").text(), std::string("\xe9t\xe9"));
    }

    void leavingAFieldQuotesItAndARefusedValueEmptiesTheBoxAfterItsMessage() {
        Launcher launcher;
        launcher.program.frmMain.tabs().setCurrent(0);
        QVERIFY(QTest::qWaitForWindowActive(launcher.window.get()));
        Field& host = launcher.program.frmMain.field("FHOSTN");
        auto* edit = launcher.find<QLineEdit>("FHOSTN");
        typeInto(edit, QStringLiteral("my server"));
        QCOMPARE(host.text(), std::string("my server"));
        auto* deathmatch = launcher.find<QLineEdit>("FDM");
        typeInto(deathmatch, QStringLiteral("5"));
        QCOMPARE(host.text(), std::string("\"my server\""));
        QCOMPARE(edit->text(), QStringLiteral("\"my server\""));
        QCOMPARE(launcher.platform.messages.size(), std::size_t(1));
        QCOMPARE(launcher.platform.messages[0].text, std::string("Must be 0 or 1"));
        QCOMPARE(deathmatch->text(), QString());
        QCOMPARE(launcher.program.frmMain.field("FDM").text(), std::string());
    }

    void aTabChangeByClickOrCodePlaysTheCueOnceAndBringsItsRowNextToThePage() {
        Launcher launcher;
        RowTabs* tabs = launcher.window->tabs();
        const auto click = [tabs](int tab) {
            QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
        };
        QVERIFY(tabs->tabRect(3).center().y() > tabs->tabRect(1).center().y());
        click(0);
        click(0); // the tab that is up: no change, no cue
        QCOMPARE(launcher.program.frmMain.tabs().current(), 0);
        QVERIFY(tabs->tabRect(1).center().y() > tabs->tabRect(3).center().y());
        launcher.program.frmMain.tabs().setCurrent(3);
        QVERIFY(tabs->page(3)->isVisible());
        QCOMPARE(launcher.platform.sounds, std::vector<std::string>(2, "/opt/kslaunch/tab.wav"));
        // Without a sound device the tab still changes, in silence.
        launcher.platform.soundDevices = 0;
        click(1);
        QCOMPARE(tabs->currentIndex(), 1);
        QCOMPARE(launcher.platform.sounds.size(), std::size_t(2));
        QVERIFY(launcher.platform.messages.empty());
    }

    void theTreeDerivesTheDirectoriesAndAnOpenedFileMovesBothSelectors() {
        TempDir temp;
        const std::string first = temp.file("a/quake2/kestrand"), second = temp.file("b/quake2/kestrand");
        std::filesystem::create_directories(first);
        std::filesystem::create_directories(second);
        Launcher launcher([&](FakePlatform& platform) {
            platform.driveList = {"/", "/mnt/usb", "/mnt/cdrom"};
            platform.notReadyDrives = {"/mnt/cdrom"};
            platform.directories = {first, second};
        });
        launcher.program.frmMain.tabs().setCurrent(0);
        auto* drives = launcher.find<QComboBox>("Drive2");
        auto* tree = launcher.find<QTreeView>("Dir2");
        auto* model = qobject_cast<QFileSystemModel*>(tree->model());
        const auto openInTree = [&](const std::string& path) {
            const QModelIndex index = model->index(toQt(path));
            tree->setCurrentIndex(index);
            emit tree->activated(index);
        };
        openInTree(first);
        QCOMPARE(launcher.program.frmMain.field("QDIR").text(), temp.file("a/quake2"));
        QCOMPARE(launcher.program.frmMain.field("FGD").text(), std::string("kestrand"));
        for (const char* name : {"QDIR", "FGD"})
            QCOMPARE(launcher.find(name)->palette().color(QPalette::Disabled, QPalette::Base), toQColor(kWhite));
        // A directory or drive the platform does not find leaves its selector where it was.
        openInTree(temp.file("b"));
        QCOMPARE(launcher.program.Dir2.text(), first);
        QCOMPARE(model->filePath(tree->currentIndex()), toQt(first));
        drives->setCurrentIndex(1);
        emit drives->activated(1);
        drives->setCurrentIndex(2);
        emit drives->activated(2);
        QCOMPARE(launcher.program.Drive2.text(), std::string("/mnt/usb"));
        QCOMPARE(drives->currentText(), QStringLiteral("/mnt/usb"));

        const std::string file = temp.file("server.cfg");
        writeBytes(file, "// set qdir " + temp.file("b/quake2") + " // Added\r\nset game_dir kestrand\r\n");
        launcher.platform.dialogAnswers.push_back(file);
        launcher.find<QAction>("mnuFileOpen", launcher.window->menuBar())->trigger();
        QCOMPARE(launcher.program.Drive2.text(), std::string("/"));
        QCOMPARE(drives->currentText(), QStringLiteral("/"));
        QCOMPARE(launcher.program.Dir2.text(), second);
        QCOMPARE(model->filePath(tree->currentIndex()), toQt(second));
    }
};

static RegisterTest<FieldViewTest> registerFieldViewTest;

#include "field_view_test.moc"
