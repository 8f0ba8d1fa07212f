#include "launcher_fixture.h"

#include "config/writer.h"
#include "forms/flags_dialog.h"
#include "forms/look.h"
#include "forms/row_tabs.h"
#include "forms/views.h"
#include "forms/weapons_dialog.h"
#include "frame/catalogue.h"

#include <QCheckBox>
#include <QPushButton>

using namespace ks;
using namespace ks::test;

namespace {

void pressClose(QWidget* dialog) {
    QTest::mouseClick(dialog->findChild<QPushButton*>("Command1"), Qt::LeftButton);
}

QString textOf(QWidget* dialog, const char* name) {
    return dialog->findChild<QLineEdit*>(name)->text();
}

} // namespace

class DialogsTest : public QObject {
    Q_OBJECT
private slots:
    void theFlagsButtonOpensItModallyItsClicksReachTheFileAndReopeningShowsThemAgain() {
        Launcher launcher;
        FlagsDialog* flags = launcher.window->flagsDialog();
        int shown = 0;
        whenModal([&](QWidget* dialog) {
            QVERIFY(dialog == flags && dialog->isModal());
            ++shown;
            QCOMPARE(dialog->windowTitle(), qt(kFlagsCaption));
            QCOMPARE(flags->tabs()->currentIndex(), kFlagsFirstTab);
            QCOMPARE(textOf(dialog, "DMFLAGT"), QStringLiteral("80"));
            QCOMPARE(textOf(dialog, "BOTT"), QStringLiteral("31"));
            QTest::mouseClick(flags->tabs(), Qt::LeftButton, {}, flags->tabs()->tabRect(4).center());
            QTest::mouseClick(dialog->findChild<QCheckBox*>("Check57"), Qt::LeftButton);
            QCOMPARE(textOf(dialog, "DMFLAG11"), QStringLiteral("1024"));
            QCOMPARE(textOf(dialog, "DMFLAGT"), QStringLiteral("1104"));
            pressClose(dialog);
        });
        QTest::mouseClick(launcher.find<QPushButton>("Command1"), Qt::LeftButton);
        QVERIFY(!flags->isVisible());
        QCOMPARE(launcher.program.Form1.check("Check57").state(), 1);
        QVERIFY(contains(RenderConfig(launcher.program), "set dmflags 1104\r\n"));
        QCOMPARE(launcher.platform.sounds, (std::vector<std::string>{"/opt/kslaunch/rail.wav", "/opt/kslaunch/tab.wav",
                                                                     "/opt/kslaunch/button.wav"}));
        // Shut by its close box, it shows everything as left at the next opening, the tab included.
        whenModal([&](QWidget* dialog) {
            QVERIFY(dialog == flags);
            ++shown;
            QCOMPARE(flags->tabs()->currentIndex(), 4);
            QVERIFY(dialog->findChild<QCheckBox*>("Check57")->isChecked());
            dialog->close();
        });
        launcher.window->Command1_Click();
        QVERIFY(!flags->isVisible());
        QCOMPARE(shown, 2);
    }

    void everyFlagsTabHoldsItsGroupsUnderHeadingsWithTotalsAndOnlyTheTypedFieldsTakeTyping() {
        Launcher launcher;
        RowTabs* tabs = launcher.window->flagsDialog()->tabs();
        QCOMPARE(tabs->count(), 6);
        QCOMPARE(tabs->rows(), 2);
        for (int i = 0; i < tabs->count(); ++i)
            QCOMPARE(tabs->caption(i), qt(flagTabs()[std::size_t(i)]));
        for (const FlagGroup& group : flagGroups()) {
            QWidget* page = tabs->page(group.tab);
            auto* total = page->findChild<QLineEdit*>(qt(group.total));
            QVERIFY2(total, group.total.data());
            QVERIFY(labelOf(page, total) && labelOf(page, total)->text() == qt(group.totalLabel));
            QVERIFY(group.heading.empty() || inGroup(total, group.heading));
            QCOMPARE(total->isEnabled(), group.totalTyped);
            QCOMPARE(total->palette().color(QPalette::Disabled, QPalette::Base), toQColor(kPaleYellow));
            for (const FlagMember& member : group.members) {
                QCOMPARE(page->findChild<QLineEdit*>(qt(member.item))->isEnabled(), group.itemsTyped);
                QCOMPARE(page->findChild<QCheckBox*>(qt(member.check))->text(), qt(member.caption));
            }
        }
        for (const AmmoField& ammo : startAmmo())
            QVERIFY(inGroup(tabs->page(kStartAmmoTab)->findChild<QLineEdit*>(qt(ammo.name)), kStartAmmoHeading));
    }

    void flagCheckBoxesShowTheCoreHiddenOrNotAndTypingReachesIt() {
        Launcher launcher;
        FlagsDialog* dialog = launcher.window->flagsDialog();
        launcher.program.Form1.check("Check62").setState(1);
        QVERIFY(dialog->findChild<QCheckBox*>("Check62")->isChecked());
        QCOMPARE(textOf(dialog, "DMFLAGT"), QStringLiteral("32848"));
        whenModal([&](QWidget*) {
            launcher.program.Form1.tabs().setCurrent(0);
            typeInto(dialog->findChild<QLineEdit*>("AB1"), QStringLiteral("7"));
            QCOMPARE(launcher.program.Form1.field("AB1").text(), std::string("7"));
            QCOMPARE(textOf(dialog, "ABT"), QStringLiteral("0"));
            // The next click in the group adds the typed 7 in.
            QTest::mouseClick(dialog->findChild<QCheckBox*>("Check80"), Qt::LeftButton);
            QCOMPARE(textOf(dialog, "ABT"), QStringLiteral("9"));
            pressClose(dialog);
        });
        launcher.window->Command1_Click();
        QCOMPARE(launcher.program.Form1.field("ABT").text(), std::string("9"));
    }

    void theWeaponsButtonOpensItModallyWithEveryFieldAndReopeningKeepsThem() {
        Launcher launcher;
        WeaponsDialog* weapons = launcher.window->weaponsDialog();
        int shown = 0;
        whenModal([&](QWidget* dialog) {
            QVERIFY(dialog == weapons && dialog->isModal());
            ++shown;
            QCOMPARE(dialog->windowTitle(), qt(kWeaponsCaption));
            for (const FieldRow& entry : weaponFields()) {
                auto* edit = dialog->findChild<FieldEdit*>(qt(entry.name));
                QVERIFY2(edit && edit->isEnabled(), entry.name.data());
                QCOMPARE(edit->text(), qt(entry.defaultText));
                QCOMPARE(edit->toolTip(), qt(entry.toolTip));
                QVERIFY(labelOf(dialog, edit) && labelOf(dialog, edit)->text() == qt(entry.label));
                QVERIFY2(entry.group.empty() || inGroup(edit, entry.group), entry.name.data());
            }
            typeInto(dialog->findChild<QLineEdit*>("FWD1"), QStringLiteral("30"));
            // A switch out of range keeps its text after the message.
            typeInto(dialog->findChild<QLineEdit*>("DL1"), QStringLiteral("2"));
            QCOMPARE(textOf(dialog, "DL1"), QStringLiteral("2"));
            dialog->close();
        });
        QTest::mouseClick(launcher.find<QPushButton>("Command2"), Qt::LeftButton);
        QCOMPARE(launcher.platform.sounds.front(), std::string("/opt/kslaunch/bfg.wav"));
        QCOMPARE(launcher.platform.messages.size(), std::size_t(1));
        QVERIFY(contains(RenderConfig(launcher.program), "set b_damage 30\r\n"));

        whenModal([&](QWidget* dialog) {
            ++shown;
            QCOMPARE(textOf(dialog, "FWD1"), QStringLiteral("30"));
            QCOMPARE(textOf(dialog, "DL1"), QStringLiteral("2"));
            pressClose(dialog);
        });
        launcher.window->Command2_Click();
        QCOMPARE(shown, 2);
        QVERIFY(!weapons->isVisible());
        QCOMPARE(launcher.platform.sounds.back(), std::string("/opt/kslaunch/button.wav"));
        // The dialog's FGD is its own field, not the game directory of the main window.
        QCOMPARE(textOf(weapons, "FGD"), QStringLiteral("150"));
        QCOMPARE(launcher.find<QLineEdit>("FGD")->text(), QStringLiteral("NONE"));
    }
};

static RegisterTest<DialogsTest> registerDialogsTest;

#include "dialogs_test.moc"
