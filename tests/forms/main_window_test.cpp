#include "window_launcher.h"

#include "config/writer.h"
#include "forms/flags_dialog.h"
#include "forms/weapons_dialog.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileSystemModel>
#include <QPushButton>
#include <QStatusBar>
#include <QTreeView>

#include <filesystem>

using namespace ks;
using namespace ks::test;

namespace {

QString textOf(QWidget* dialog, const char* name) { return dialog->findChild<QLineEdit*>(name)->text(); }

// The field that stands to the right of the box on its row, nearest to it.
QLineEdit* fieldBeside(QWidget* page, const QCheckBox* box) {
    const auto place = [page](const QWidget* w) { return QRect(w->mapTo(page, QPoint(0, 0)), w->size()); };
    const QRect at = place(box);
    QLineEdit* nearest = nullptr;
    for (QLineEdit* edit : page->findChildren<QLineEdit*>()) {
        const QRect field = place(edit);
        if (field.left() > at.right() && qAbs(field.center().y() - at.center().y()) <= 3 &&
            (!nearest || field.left() < place(nearest).left()))
            nearest = edit;
    }
    return nearest;
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void atLoadTheWindowHasItsTitleAndSizeTeamPlayIsUpIpGreyAndTheSentinelsYellow() {
        WindowLauncher launcher;
        MainWindow& window = *launcher.window;
        QCOMPARE(window.windowTitle(), QStringLiteral("]{estrand Launcher"));
        QCOMPARE(window.centralWidget()->size() + QSize(0, window.statusBar()->height()), QSize(576, 401));
        QCOMPARE(window.minimumSize(), window.maximumSize());
        QVERIFY(window.tabs()->page(2)->isVisible() && !window.tabs()->page(0)->isVisible());
        // Each field as "NAME TEXT ENABLED GROUND": the address grey under Use Default, the sentinels pale yellow.
        QStringList fields;
        for (const char* name : {"IP", "QDIR", "FGD", "FFile"}) {
            auto* edit = launcher.find<FieldEdit>(name);
            fields << QStringLiteral("%1 '%2' %3 %4")
                          .arg(name, edit->text(), edit->isEnabled() ? "on" : "off",
                               edit->palette().color(QPalette::Disabled, QPalette::Base).name());
        }
        QCOMPARE(fields, (QStringList{"IP '' off #e0e0e0", "QDIR 'NONE' off #ffffc0", "FGD 'NONE' off #ffffc0",
                                      "FFile 'NONE' off #ffffc0"}));
        QVERIFY(launcher.find<QCheckBox>("ipCheck")->isChecked());
        // The status bar shows the date and then the time.
        QLabel* date = launcher.find<QLabel>("datePanel", window.statusBar());
        QCOMPARE(date->text(), QLocale().toString(QDate::currentDate(), QLocale::ShortFormat));
        QVERIFY(date->x() < launcher.find<QLabel>("timePanel", window.statusBar())->x());
    }

    // Each menu as "MENU: ENTRY | ENTRY", a separator as "-"; no entry has a shortcut key. Each command runs from
    // its entry and does what the entry says.
    void theMenusHoldTheirEntriesInOrderAndEachRunsItsCommand() {
        WindowLauncher launcher;
        QStringList shown;
        for (QAction* top : launcher.window->menuBar()->actions()) {
            QStringList entries;
            for (const QAction* entry : top->menu()->actions())
                entries << (entry->isSeparator() ? QStringLiteral("-") : entry->text()) + entry->shortcut().toString();
            shown << top->text() + ": " + entries.join(" | ");
        }
        QCOMPARE(shown, (QStringList{"&File: &Open... | &Run this Server | - | &Save | Save &As... | - | E&xit",
                                     "&View: bot_detected.txt | textfilter.cfg | help.txt | ip_banned.txt | "
                                     "maps_ctf.txt | maps_dm.txt | motd.txt | server.txt | user_v.txt | user_m.txt | "
                                     "user_o.txt | - | &Web Site",
                                     "&Help: &Contents | - | Kestrand Docs | - | &Report Bug | &About "}));

        // Save As asks for the name; Save writes the file in hand again without asking for one.
        FakePlatform& platform = launcher.platform;
        const std::string path = launcher.dir.file("server.cfg");
        platform.dialogAnswers.push_back(path);
        launcher.entry("&File", "Save &As...")->trigger();
        QCOMPARE(platform.dialogs.size(), std::size_t(1));
        QCOMPARE(platform.dialogs[0].kind, FileDialogKind::Save);
        QCOMPARE(readBytes(path), renderConfig(launcher.program));
        launcher.main("FHOSTN").setText("\"Saved again\"");
        launcher.entry("&File", "&Save")->trigger();
        QCOMPARE(platform.dialogs.size(), std::size_t(1));
        QCOMPARE(readBytes(path), renderConfig(launcher.program));
        launcher.main("FFile").setText("NONE");
        platform.dialogAnswers.push_back(path);
        launcher.entry("&File", "&Open...")->trigger();
        QCOMPARE(platform.dialogs.at(1).kind, FileDialogKind::Open);
        QCOMPARE(launcher.main("FFile").text(), path);

        const std::vector<std::tuple<const char*, const char*, std::string>> commands = {
            {"&File", "&Run this Server", "changeDirectory NONE"},
            {"&View", "motd.txt", "isVisiblePlainFile " + launcher.dir.file("cfg/motd.txt")},
            {"&View", "&Web Site", "openLink http://kestrand.example.org/kestrand"},
            {"&Help", "&Contents", "openLink /opt/kslaunch/ks.html"},
            {"&Help", "Kestrand Docs", "openLink http://kestrand.example.org/kestrand/ksdocs.htm"},
            {"&Help", "&Report Bug", "openLink mailto:bugs@kestrand.example.org"},
            {"&File", "E&xit", "endProgram"},
        };
        for (const auto& [menu, caption, call] : commands) {
            platform.calls.clear();
            launcher.entry(menu, caption)->trigger();
            QVERIFY2(std::find(platform.calls.begin(), platform.calls.end(), call) != platform.calls.end(), caption);
        }
    }

    // Spot checks of the tabs, then the rule for every field: its label stands to its left, level with it. FLHB
    // shares the label of FHRT, which spans both.
    void everyFieldStandsOnItsTabWithItsLabelToItsLeft() {
        WindowLauncher launcher;
        RowTabs* tabs = launcher.window->tabs();
        const std::vector<std::tuple<const char*, int, const char*>> spots = {
            {"FHOSTN", 0, "Hostname"}, {"FAV", 1, "Allow Voting"}, {"FTN1", 2, "Team Name"}, {"VM", 3, "Voosh Mode"}};
        for (const auto& [name, tab, label] : spots) {
            auto* edit = launcher.find<FieldEdit>(name);
            QVERIFY2(tabs->page(tab)->isAncestorOf(edit), name);
            QCOMPARE(labelOf(tabs->page(tab), edit)->text(), QString::fromLatin1(label));
        }
        QStringList without;
        for (int tab = 0; tab < tabs->count(); ++tab) {
            launcher.program.mainTabs().setCurrent(tab);
            without << fieldsWithoutLabel(tabs->page(tab));
        }
        QCOMPARE(without, QStringList{"FLHB"});
        QCOMPARE(launcher.find("ipCheck")->parentWidget(), launcher.find("IP")->parentWidget());
        QVERIFY(launcher.find("Drive2", tabs->page(0)) && launcher.find("Dir2", tabs->page(0)));
        // A label that spans two fields paints its caption's phrases, cut where two blanks or more stand.
        QCOMPARE(captionPhrases("  a\t\tb \r\nc d  "), (QStringList{"a", "b", "c d"}));
        QCOMPARE(captionPhrases(QStringLiteral("a\u00a0\u00a0b")), QStringList{QStringLiteral("a\u00a0\u00a0b")});
    }

    // Typing reaches the field and a change from the core shows, each running the field's handlers once; bytes above
    // 127 go both ways unchanged.
    void typingReachesTheCoreACoreChangeShowsAndLeavingQuotes() {
        WindowLauncher launcher;
        launcher.program.mainTabs().setCurrent(0);
        auto* clients = launcher.find<QLineEdit>("FMC");
        int changes = 0;
        launcher.main("FMC").onChange([&] { ++changes; });
        typeInto(clients, QStringLiteral("24"));
        QCOMPARE(launcher.main("FMC").text(), std::string("24"));
        launcher.main("FMC").setText("16");
        QCOMPARE(clients->text(), QStringLiteral("16"));
        QCOMPARE(changes, 3);
        auto* host = launcher.find<QLineEdit>("FHOSTN");
        launcher.main("FHOSTN").setText("caf\xe9");
        QCOMPARE(host->text(), QString::fromLatin1("caf\xe9"));
        typeInto(host, QString::fromLatin1("my \xe9t\xe9"));
        QCOMPARE(launcher.main("FHOSTN").text(), std::string("my \xe9t\xe9"));
        // Leaving the field quotes it.
        typeInto(launcher.find<QLineEdit>("FDM"), QStringLiteral("0"));
        QCOMPARE(host->text(), QString::fromLatin1("\"my \xe9t\xe9\""));
    }

    // A menu that pops up over the address field does not leave it, nor does the window handing the keyboard on and
    // getting it back; the move to another control afterwards does, and runs the address check.
    void theAddressIsCheckedWhenTheFocusLeavesItAfterAMenuWasOpen() {
        WindowLauncher launcher;
        launcher.program.mainTabs().setCurrent(0);
        QTest::mouseClick(launcher.find<QCheckBox>("ipCheck"), Qt::LeftButton);
        auto* ip = launcher.find<QLineEdit>("IP");
        typeInto(ip, QStringLiteral("1.2.3.4"));
        QMenuBar* bar = launcher.window->menuBar();
        QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(bar->actions().at(0)).center());
        QTRY_VERIFY_WITH_TIMEOUT(QApplication::activePopupWidget(), 60000);
        QApplication::activePopupWidget()->close();
        launcher.window->activateWindow();
        QTRY_VERIFY_WITH_TIMEOUT(ip->hasFocus(), 60000);
        QVERIFY(launcher.platform.messages.empty());
        QTest::keyClick(ip, Qt::Key_Tab);
        QVERIFY(!ip->hasFocus());
        QCOMPARE(launcher.shown(), std::vector<std::string>{"IP Validator|1.2.3.4 is Invalid"});
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
    }

    void theTreeFillsTheDirectoriesAndAnOpenedFileMovesBothSelectors() {
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

        launcher.open(launcher.file("// set qdir " + temp.file("b/quake2") + " // Added\r\nset game_dir kestrand\r\n"));
        QCOMPARE(drives->currentText(), QStringLiteral("/"));
        QCOMPARE(model->filePath(tree->currentIndex()), toQt(second));
    }
    // The flags dialog opens modally on Item Bans. A click on each of its 85 boxes changes the field beside it, on its
    // row, and its group's total; the clicks reach the core, and the hidden dialog follows the core. Shut by its close
    // box, it opens again as it was left.
    void theFlagsDialogOpensModallyAndEachBoxFillsTheFieldBesideIt() {
        WindowLauncher launcher;
        FlagsDialog* flags = launcher.window->flagsDialog();
        RowTabs* tabs = flags->tabs();
        int boxes = 0;
        whenModal([&](QWidget* dialog) {
            QVERIFY(dialog == flags && dialog->isModal());
            QCOMPARE(dialog->windowTitle(), QStringLiteral("Weapons Flags/Item Flags"));
            QCOMPARE(tabs->currentIndex(), 1);
            for (int tab = 0; tab < tabs->count(); ++tab) {
                clickTab(tabs, tab);
                QWidget* page = tabs->page(tab);
                for (QCheckBox* box : page->findChildren<QCheckBox*>()) {
                    QLineEdit* beside = fieldBeside(page, box);
                    QVERIFY2(beside, qPrintable(box->objectName()));
                    const QString before = beside->text();
                    QTest::mouseClick(box, Qt::LeftButton, {}, QPoint(box->height() / 2, box->height() / 2));
                    QVERIFY2(beside->text() != before, qPrintable(box->objectName()));
                    ++boxes;
                }
            }
            QTest::mouseClick(flags->findChild<QPushButton*>("Command1"), Qt::LeftButton);
        });
        QTest::mouseClick(launcher.find<QPushButton>("Command1"), Qt::LeftButton);
        QCOMPARE(boxes, 85);
        QVERIFY(!flags->isVisible());
        // Every box has turned: each group's full mask but for the DM flags and bot detection that were on.
        QStringList totals;
        for (const char* total : {"WBT", "ABT", "WIBT", "WSWT", "WSIT", "DMFLAGT", "BOTT", "TRB"})
            totals << qt(launcher.flags(total).text());
        QCOMPARE(totals.join(' '), QStringLiteral("511 63 16383 511 16383 982959 0 511"));
        QVERIFY(renderConfig(launcher.program).find("set dmflags 982959\r\n") != std::string::npos);
        QCOMPARE(launcher.platform.sounds.front(), std::string("/opt/kslaunch/rail.wav"));
        QCOMPARE(launcher.platform.sounds.back(), std::string("/opt/kslaunch/button.wav"));
        QCOMPARE(launcher.platform.sounds.size(), std::size_t(2 + 6));

        launcher.check("Check62").setState(0);
        QVERIFY(!flags->findChild<QCheckBox*>("Check62")->isChecked());
        whenModal([](QWidget* dialog) { dialog->close(); });
        launcher.window->openFlagsDialog();
        QVERIFY(!flags->isVisible());
        QCOMPARE(tabs->currentIndex(), 5);
        QCOMPARE(textOf(flags, "DMFLAGT"), QStringLiteral("950191"));
    }

    // The weapons dialog opens modally with every field labelled; a refused switch keeps its text after the message,
    // and reopening shows the fields as they were left. Its FGD is a field of its own.
    void theWeaponsButtonOpensItModallyAndReopeningKeepsTheFields() {
        WindowLauncher launcher;
        WeaponsDialog* weapons = launcher.window->weaponsDialog();
        whenModal([&](QWidget* dialog) {
            QVERIFY(dialog == weapons && dialog->isModal());
            QCOMPARE(dialog->windowTitle(),
                     QStringLiteral("Location Damage / Weapons Firing Rates / Weapons Damage / Weapon Kickback"));
            QCOMPARE(fieldsWithoutLabel(weapons), QStringList());
            QCOMPARE(labelOf(weapons, weapons->findChild<QLineEdit*>("DL1"))->text(), QStringLiteral("Damage Locate"));
            typeInto(weapons->findChild<QLineEdit*>("FWD1"), QStringLiteral("30"));
            typeInto(weapons->findChild<QLineEdit*>("DL1"), QStringLiteral("2"));
            dialog->close();
        });
        QTest::mouseClick(launcher.find<QPushButton>("Command2"), Qt::LeftButton);
        QCOMPARE(launcher.platform.sounds, std::vector<std::string>{"/opt/kslaunch/bfg.wav"});
        QCOMPARE(launcher.shown(), std::vector<std::string>{"Damage Location, Off or On|Must be 0 or 1"});
        QVERIFY(renderConfig(launcher.program).find("set b_damage 30\r\n") != std::string::npos);
        whenModal([](QWidget* dialog) { dialog->close(); });
        launcher.window->openWeaponsDialog();
        QVERIFY(!weapons->isVisible());
        QCOMPARE(textOf(weapons, "FWD1"), QStringLiteral("30"));
        QCOMPARE(textOf(weapons, "DL1"), QStringLiteral("2"));
        QCOMPARE(textOf(weapons, "FGD"), QStringLiteral("150"));
        QCOMPARE(launcher.find<QLineEdit>("FGD")->text(), QStringLiteral("NONE"));
    }
};

static RegisterTest<MainWindowTest> registerMainWindowTest("MainWindowTest");

#include "main_window_test.moc"
