#include "launcher_fixture.h"

#include "config/writer.h"
#include "forms/qt_platform.h"
#include "forms/row_tabs.h"
#include "forms/selector_views.h"
#include "frame/selectors.h"
#include "forms/views.h"

#include <QDir>
#include <QFileSystemModel>
#include <QLineEdit>

using namespace ks;
using namespace ks::test;

namespace {

// Puts the text in place of what the box holds, one keystroke at a time, as the operator would.
void typeInto(QLineEdit* edit, const QString& text) {
    edit->setFocus(Qt::MouseFocusReason);
    edit->selectAll();
    // Character by character with its text, so that letters beyond ASCII can be typed too.
    for (const QChar c : text) QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_A, QString(c), Qt::NoModifier);
}

} // namespace

class FieldViewTest : public QObject {
    Q_OBJECT
private slots:
    void typingChangesTheCoreFieldOnceAKeyAndReachesTheFile() {
        Launcher launcher;
        Field& field = launcher.program.frmMain.field("FMC");
        int changes = 0;
        field.onChange([&] { ++changes; });
        launcher.program.frmMain.tabs().setCurrent(0);
        typeInto(launcher.find<QLineEdit>("FMC"), QStringLiteral("24"));
        QCOMPARE(field.text(), std::string("24"));
        QCOMPARE(changes, 2);
        QVERIFY(RenderConfig(launcher.program).find("set maxclients 24\r\n") != std::string::npos);
    }

    void aCoreChangeShowsInTheBoxWithoutRunningTheHandlersAgain() {
        Launcher launcher;
        Field& field = launcher.program.frmMain.field("FTN1");
        int changes = 0;
        field.onChange([&] { ++changes; });
        auto* edit = launcher.find<QLineEdit>("FTN1");
        int edits = 0;
        QObject::connect(edit, &QLineEdit::textEdited, [&] { ++edits; });
        field.setText("\"Red_Team\"");
        QCOMPARE(edit->text(), QStringLiteral("\"Red_Team\""));
        QCOMPARE(changes, 1);
        QCOMPARE(edits, 0);
        // Bytes above 127 come back unchanged.
        field.setText("caf\xe9");
        QCOMPARE(edit->text(), QString::fromLatin1("caf\xe9"));
        typeInto(edit, QString::fromLatin1("\xe9t\xe9"));
        QCOMPARE(field.text(), std::string("\xe9t\xe9"));
    }

    void leavingAFieldValidatesItButTextSetByCodeStaysAsItIs() {
        Launcher launcher;
        launcher.program.frmMain.tabs().setCurrent(0);
        QVERIFY(QTest::qWaitForWindowActive(launcher.window.get()));
        Field& host = launcher.program.frmMain.field("FHOSTN");
        host.setText("by code");
        QCOMPARE(host.text(), std::string("by code"));
        auto* edit = launcher.find<QLineEdit>("FHOSTN");
        typeInto(edit, QStringLiteral("my server"));
        QCOMPARE(host.text(), std::string("my server"));
        launcher.find<QLineEdit>("FMC")->setFocus(Qt::TabFocusReason);
        QCOMPARE(host.text(), std::string("\"my server\""));
        QCOMPARE(edit->text(), QStringLiteral("\"my server\""));
    }

    void aRefusedValueEmptiesTheBoxAfterItsMessage() {
        Launcher launcher;
        launcher.program.frmMain.tabs().setCurrent(0);
        auto* edit = launcher.find<QLineEdit>("FDM");
        typeInto(edit, QStringLiteral("5"));
        QCOMPARE(launcher.platform.messages.size(), std::size_t(1));
        QCOMPARE(launcher.platform.messages[0].text, std::string("Must be 0 or 1"));
        QCOMPARE(edit->text(), QString());
        QCOMPARE(launcher.program.frmMain.field("FDM").text(), std::string());
    }
};

class SoundCueTest : public QObject {
    Q_OBJECT
private slots:
    void aTabClickPlaysTheTabCueFromTheProgramDirectory() {
        Launcher launcher;
        RowTabs* tabs = launcher.window->tabs();
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
        QCOMPARE(launcher.program.frmMain.tabs().current(), 0);
        QCOMPARE(tabs->currentIndex(), 0);
        QCOMPARE(launcher.platform.sounds, std::vector<std::string>{"/opt/kslaunch/tab.wav"});
        // Clicking the tab that is up changes nothing and plays nothing.
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(0).center());
        QCOMPARE(launcher.platform.sounds.size(), std::size_t(1));
    }

    void aTabChangeByCodeTurnsThePageAndPlaysTheCueOnce() {
        Launcher launcher;
        launcher.program.frmMain.tabs().setCurrent(3);
        QCOMPARE(launcher.window->tabs()->currentIndex(), 3);
        QVERIFY(launcher.window->tabs()->page(3)->isVisible());
        QCOMPARE(launcher.platform.sounds, std::vector<std::string>{"/opt/kslaunch/tab.wav"});
    }

    void withoutASoundDeviceNothingIsPlayed() {
        Launcher launcher;
        launcher.platform.soundDevices = 0;
        RowTabs* tabs = launcher.window->tabs();
        QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(1).center());
        QCOMPARE(launcher.program.frmMain.tabs().current(), 1);
        QVERIFY(launcher.platform.sounds.empty());
        QVERIFY(launcher.platform.messages.empty());
    }

    void theRowOfTheCurrentTabMovesNextToThePage() {
        Launcher launcher;
        RowTabs* tabs = launcher.window->tabs();
        // "Team Play" is up: its row (tabs 2 and 3) lies below the other.
        QVERIFY(tabs->tabRect(3).center().y() > tabs->tabRect(1).center().y());
        launcher.program.frmMain.tabs().setCurrent(1);
        QVERIFY(tabs->tabRect(1).center().y() > tabs->tabRect(3).center().y());
        QVERIFY(tabs->tabRect(0).center().y() > tabs->tabRect(2).center().y());
    }
};

class SelectorViewTest : public QObject {
    Q_OBJECT
private slots:
    void theDriveListShowsTheCoreAndANotReadyDriveLeavesItWhereItWas() {
        Launcher launcher;
        launcher.platform.driveList = {"/", "/mnt/cdrom"};
        launcher.platform.notReadyDrives = {"/mnt/cdrom"};
        DriveView drives(launcher.program);
        QCOMPARE(drives.count(), 2);
        QVERIFY(SelectDrive(launcher.program, "/"));
        QCOMPARE(drives.currentText(), QStringLiteral("/"));
        // The operator picks the drive that is not ready: the core refuses, the list goes back.
        drives.setCurrentIndex(1);
        emit drives.activated(1);
        QCOMPARE(launcher.program.Drive2.text(), std::string("/"));
        QCOMPARE(drives.currentText(), QStringLiteral("/"));
    }

    void theTreeMarksTheCoreDirectoryAndRefusesOneThatIsGone() {
        Launcher launcher;
        const QString here = QDir::tempPath();
        launcher.platform.directories = {fromQt(here)};
        DirectoryView tree(launcher.program);
        QVERIFY(SelectDirectory(launcher.program, fromQt(here)));
        auto* model = qobject_cast<QFileSystemModel*>(tree.model());
        QCOMPARE(model->filePath(tree.currentIndex()), here);
        // A directory the platform does not find leaves the selection on the core's directory.
        const QModelIndex other = model->index(QDir::rootPath());
        tree.setCurrentIndex(other);
        emit tree.activated(other);
        QCOMPARE(launcher.program.Dir2.text(), fromQt(here));
        QCOMPARE(model->filePath(tree.currentIndex()), here);
    }
};

static RegisterTest<SelectorViewTest> registerSelectorViewTest;
static RegisterTest<FieldViewTest> registerFieldViewTest;
static RegisterTest<SoundCueTest> registerSoundCueTest;

#include "field_view_test.moc"
