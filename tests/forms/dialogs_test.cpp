#include "window_launcher.h"

#include "config/writer.h"
#include "forms/flags_dialog.h"
#include "forms/look.h"
#include "forms/views.h"
#include "forms/weapons_dialog.h"
#include "frame/catalogue.h"

#include <QCheckBox>
#include <QPushButton>

using namespace ks;
using namespace ks::test;

namespace {

QString textOf(QWidget* dialog, const char* name) { return dialog->findChild<QLineEdit*>(name)->text(); }

} // namespace

class DialogsTest : public QObject {
    Q_OBJECT
private slots:
    void theFlagsDialogHoldsEveryGroupOpensModallyDrivesTheCoreAndShowsItAgainAsLeft() {
        WindowLauncher launcher;
        FlagsDialog* flags = launcher.window->flagsDialog();
        RowTabs* tabs = flags->tabs();
        // Totals stand labelled under their group's heading; only the typed fields take typing.
        for (const FlagGroup& group : flagGroups()) {
            QWidget* page = tabs->page(group.tab);
            auto* total = page->findChild<QLineEdit*>(qt(group.total));
            QVERIFY2(total && labelOf(page, total) && labelOf(page, total)->text() == qt(group.totalLabel),
                     group.total.data());
            QVERIFY(group.heading.empty() || inGroup(total, group.heading));
            QCOMPARE(total->isEnabled(), group.totalTyped);
            QCOMPARE(total->palette().color(QPalette::Disabled, QPalette::Base), toQColor(kPaleYellow));
            for (const FlagMember& member : group.members) {
                QCOMPARE(page->findChild<QLineEdit*>(qt(member.item))->isEnabled(), group.itemsTyped);
                QCOMPARE(page->findChild<QCheckBox*>(qt(member.check))->text(), qt(member.caption));
            }
        }
        whenModal([&](QWidget* dialog) {
            QVERIFY(dialog == flags && dialog->isModal());
            QCOMPARE(tabs->currentIndex(), 1);
            QCOMPARE(textOf(flags, "DMFLAGT"), QStringLiteral("80"));
            clickTab(tabs, 0);
            typeInto(flags->findChild<QLineEdit*>("AB1"), QStringLiteral("7"));
            QCOMPARE(launcher.flags("AB1").text(), std::string("7"));
            QCOMPARE(textOf(flags, "ABT"), QStringLiteral("0"));
            // The next click in the group adds the typed 7 in.
            QTest::mouseClick(flags->findChild<QCheckBox*>("Check80"), Qt::LeftButton);
            QCOMPARE(textOf(flags, "ABT"), QStringLiteral("9"));
            clickTab(tabs, 4);
            QTest::mouseClick(flags->findChild<QCheckBox*>("Check57"), Qt::LeftButton);
            QCOMPARE(textOf(flags, "DMFLAG11"), QStringLiteral("1024"));
            QTest::mouseClick(flags->findChild<QPushButton*>("Command1"), Qt::LeftButton);
        });
        QTest::mouseClick(launcher.find<QPushButton>("Command1"), Qt::LeftButton);
        QVERIFY(!flags->isVisible());
        QCOMPARE(launcher.flags("ABT").text(), std::string("9"));
        QVERIFY(renderConfig(launcher.program).find("set dmflags 1104\r\n") != std::string::npos);
        QCOMPARE(launcher.platform.sounds.front(), std::string("/opt/kslaunch/rail.wav"));
        QCOMPARE(launcher.platform.sounds.back(), std::string("/opt/kslaunch/button.wav"));
        // The hidden dialog follows the core; shut by its close box, it opens again as it was left.
        launcher.check("Check62").setState(1);
        QVERIFY(flags->findChild<QCheckBox*>("Check62")->isChecked());
        whenModal([](QWidget* dialog) { dialog->close(); });
        launcher.window->openFlagsDialog();
        QVERIFY(!flags->isVisible());
        QCOMPARE(tabs->currentIndex(), 4);
        QVERIFY(flags->findChild<QCheckBox*>("Check57")->isChecked());
        QCOMPARE(textOf(flags, "DMFLAGT"), QStringLiteral("33872"));
    }

    void theWeaponsButtonOpensItModallyWithEveryFieldAndReopeningKeepsThem() {
        WindowLauncher launcher;
        WeaponsDialog* weapons = launcher.window->weaponsDialog();
        whenModal([&](QWidget* dialog) {
            QVERIFY(dialog == weapons && dialog->isModal());
            for (const FieldRow& row : weaponFields()) {
                auto* edit = weapons->findChild<FieldEdit*>(qt(row.name));
                QVERIFY2(edit && edit->isEnabled() && labelOf(weapons, edit), row.name.data());
                QCOMPARE(labelOf(weapons, edit)->text(), qt(row.label));
                QCOMPARE(edit->toolTip(), qt(row.toolTip));
                QVERIFY2(row.group.empty() || inGroup(edit, row.group), row.name.data());
            }
            typeInto(weapons->findChild<QLineEdit*>("FWD1"), QStringLiteral("30"));
            typeInto(weapons->findChild<QLineEdit*>("DL1"), QStringLiteral("2")); // kept after its message
            dialog->close();
        });
        QTest::mouseClick(launcher.find<QPushButton>("Command2"), Qt::LeftButton);
        QCOMPARE(launcher.platform.sounds.front(), std::string("/opt/kslaunch/bfg.wav"));
        QCOMPARE(launcher.platform.messages.size(), std::size_t(1));
        QVERIFY(renderConfig(launcher.program).find("set b_damage 30\r\n") != std::string::npos);
        whenModal([](QWidget* dialog) { dialog->close(); });
        launcher.window->openWeaponsDialog();
        QVERIFY(!weapons->isVisible());
        QCOMPARE(textOf(weapons, "FWD1"), QStringLiteral("30"));
        QCOMPARE(textOf(weapons, "DL1"), QStringLiteral("2"));
        // The dialog's FGD is its own field, not the game directory of the main window.
        QCOMPARE(textOf(weapons, "FGD"), QStringLiteral("150"));
        QCOMPARE(launcher.find<QLineEdit>("FGD")->text(), QStringLiteral("NONE"));
    }
};

static RegisterTest<DialogsTest> registerDialogsTest("DialogsTest");

#include "dialogs_test.moc"
