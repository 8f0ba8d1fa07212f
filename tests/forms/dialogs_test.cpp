#include "launcher_fixture.h"

#include "config/writer.h"
#include "forms/flags_dialog.h"
#include "forms/look.h"
#include "forms/qt_platform.h"
#include "forms/row_tabs.h"
#include "forms/views.h"
#include "forms/weapons_dialog.h"
#include "frame/catalogue.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

using namespace ks;
using namespace ks::test;

namespace {

QString qt(std::string_view text) { return toQt(std::string(text)); }

bool contains(const std::string& text, const std::string& part) { return text.find(part) != std::string::npos; }

void pressClose(QWidget* dialog) { QTest::mouseClick(dialog->findChild<QPushButton*>("Command1"), Qt::LeftButton); }

} // namespace

class FlagsDialogTest : public QObject {
    Q_OBJECT
private slots:
    void theButtonOpensItModallyAndItsClicksReachTheFile() {
        Launcher launcher;
        bool ran = false;
        whenModal([&](QWidget* dialog) {
            ran = true;
            QVERIFY(dialog);
            QCOMPARE(dialog->objectName(), QStringLiteral("Form1"));
            QCOMPARE(dialog->windowTitle(), qt(kFlagsCaption));
            QVERIFY(dialog->isModal());
            auto* tabs = dialog->findChild<RowTabs*>("SSTab1");
            QCOMPARE(tabs->currentIndex(), kFlagsFirstTab);
            QCOMPARE(dialog->findChild<QLineEdit*>("DMFLAGT")->text(), QStringLiteral("80"));
            QCOMPARE(dialog->findChild<QLineEdit*>("BOTT")->text(), QStringLiteral("31"));
            QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(4).center());
            QTest::mouseClick(dialog->findChild<QCheckBox*>("Check57"), Qt::LeftButton);
            QCOMPARE(dialog->findChild<QLineEdit*>("DMFLAG11")->text(), QStringLiteral("1024"));
            QCOMPARE(dialog->findChild<QLineEdit*>("DMFLAGT")->text(), QStringLiteral("1104"));
            pressClose(dialog);
        });
        QTest::mouseClick(launcher.find<QPushButton>("Command1"), Qt::LeftButton);
        QVERIFY(ran);
        QVERIFY(!launcher.window->flagsDialog()->isVisible());
        QCOMPARE(launcher.program.Form1.check("Check57").state(), 1);
        QVERIFY(contains(RenderConfig(launcher.program), "set dmflags 1104\r\n"));
        QCOMPARE(launcher.platform.sounds, (std::vector<std::string>{"/opt/kslaunch/rail.wav", "/opt/kslaunch/tab.wav",
                                                                     "/opt/kslaunch/button.wav"}));
    }

    void reopeningShowsEverythingAsLeftTabIncluded() {
        Launcher launcher;
        FlagsDialog* dialog = launcher.window->flagsDialog();
        whenModal([&](QWidget*) {
            launcher.program.Form1.tabs().setCurrent(5);
            QTest::mouseClick(dialog->findChild<QCheckBox*>("Check71"), Qt::LeftButton);
            dialog->close(); // the window's close box
        });
        launcher.window->Command1_Click();
        QVERIFY(!dialog->isVisible());
        QCOMPARE(launcher.window->flagsDialog(), dialog);
        bool ran = false;
        whenModal([&](QWidget* shown) {
            ran = true;
            QCOMPARE(shown, dialog);
            QCOMPARE(dialog->tabs()->currentIndex(), 5);
            QVERIFY(dialog->findChild<QCheckBox*>("Check71")->isChecked());
            QCOMPARE(dialog->findChild<QLineEdit*>("TRB")->text(), QStringLiteral("1"));
            pressClose(dialog);
        });
        launcher.window->Command1_Click();
        QVERIFY(ran);
    }

    void theCheckBoxesAndFieldsShowTheCoreAndTypingReachesIt() {
        Launcher launcher;
        FlagsDialog* dialog = launcher.window->flagsDialog();
        // Set by code while the dialog is hidden: the boxes show it at the next opening.
        launcher.program.Form1.check("Check62").setState(1);
        QVERIFY(dialog->findChild<QCheckBox*>("Check62")->isChecked());
        QCOMPARE(dialog->findChild<QLineEdit*>("DMFLAGT")->text(), QStringLiteral("32848"));
        // Only the ammo and rune items, the ammo total and the start ammunition take typing.
        for (const FlagGroup& group : flagGroups()) {
            QCOMPARE(dialog->findChild<QLineEdit*>(qt(group.total))->isEnabled(), group.totalTyped);
            QCOMPARE(dialog->findChild<QLineEdit*>(qt(group.total))->palette().color(QPalette::Disabled,
                                                                                      QPalette::Base),
                     toQColor(kPaleYellow));
            for (const FlagMember& member : group.members) {
                QCOMPARE(dialog->findChild<QLineEdit*>(qt(member.item))->isEnabled(), group.itemsTyped);
                QCOMPARE(dialog->findChild<QCheckBox*>(qt(member.check))->text(), qt(member.caption));
            }
        }
        whenModal([&](QWidget*) {
            launcher.program.Form1.tabs().setCurrent(0);
            auto* ammo = dialog->findChild<QLineEdit*>("AB1");
            ammo->setFocus();
            ammo->selectAll();
            QTest::keyClicks(ammo, "7");
            QCOMPARE(launcher.program.Form1.field("AB1").text(), std::string("7"));
            QCOMPARE(dialog->findChild<QLineEdit*>("ABT")->text(), QStringLiteral("0"));
            // The next click in the group adds the typed 7 in.
            QTest::mouseClick(dialog->findChild<QCheckBox*>("Check80"), Qt::LeftButton);
            QCOMPARE(dialog->findChild<QLineEdit*>("ABT")->text(), QStringLiteral("9"));
            launcher.program.Form1.tabs().setCurrent(2);
            auto* shells = dialog->findChild<QLineEdit*>("SAS");
            shells->setFocus();
            shells->selectAll();
            QTest::keyClicks(shells, "50");
            pressClose(dialog);
        });
        launcher.window->Command1_Click();
        QCOMPARE(launcher.program.Form1.field("SAS").text(), std::string("50"));
    }

    void everyTabHoldsItsGroupsUnderTheirHeadingsWithTotals() {
        Launcher launcher;
        FlagsDialog* dialog = launcher.window->flagsDialog();
        RowTabs* tabs = dialog->tabs();
        QCOMPARE(tabs->count(), 6);
        QCOMPARE(tabs->rows(), 2);
        for (int i = 0; i < tabs->count(); ++i) QCOMPARE(tabs->caption(i), qt(flagTabs()[std::size_t(i)]));
        for (const FlagGroup& group : flagGroups()) {
            QWidget* page = tabs->page(group.tab);
            auto* total = page->findChild<QLineEdit*>(qt(group.total));
            QVERIFY2(total, group.total.data());
            QLabel* label = nullptr;
            for (QLabel* candidate : page->findChildren<QLabel*>())
                if (candidate->buddy() == total) label = candidate;
            QVERIFY(label && label->text() == qt(group.totalLabel));
            for (const FlagMember& member : group.members) QVERIFY(page->findChild<QCheckBox*>(qt(member.check)));
            if (!group.heading.empty()) {
                auto* box = qobject_cast<QGroupBox*>(total->parentWidget());
                QVERIFY(box && box->title() == qt(group.heading));
            }
        }
        QWidget* ammoPage = tabs->page(kStartAmmoTab);
        for (const AmmoField& ammo : startAmmo()) {
            auto* box = qobject_cast<QGroupBox*>(ammoPage->findChild<QLineEdit*>(qt(ammo.name))->parentWidget());
            QVERIFY(box && box->title() == qt(kStartAmmoHeading));
        }
    }
};

class WeaponsDialogTest : public QObject {
    Q_OBJECT
private slots:
    void theButtonOpensItModallyWithEveryFieldAndReopeningKeepsThem() {
        Launcher launcher;
        bool ran = false;
        whenModal([&](QWidget* dialog) {
            ran = true;
            QVERIFY(dialog && dialog->isModal());
            QCOMPARE(dialog->objectName(), QStringLiteral("Form2"));
            QCOMPARE(dialog->windowTitle(), qt(kWeaponsCaption));
            for (const FieldSpec& entry : weaponFields()) {
                auto* edit = dialog->findChild<FieldEdit*>(qt(entry.name));
                QVERIFY2(edit, entry.name.data());
                QCOMPARE(edit->text(), qt(entry.defaultText));
                QCOMPARE(edit->toolTip(), qt(entry.toolTip));
                QVERIFY(edit->isEnabled());
                QLabel* label = nullptr;
                for (QLabel* candidate : dialog->findChildren<QLabel*>())
                    if (candidate->buddy() == edit) label = candidate;
                QVERIFY(label && label->text() == qt(entry.label));
                auto* box = qobject_cast<QGroupBox*>(edit->parentWidget());
                QCOMPARE(box ? box->title() : QString(), qt(entry.group));
            }
            auto* damage = dialog->findChild<QLineEdit*>("FWD1");
            damage->setFocus();
            damage->selectAll();
            QTest::keyClicks(damage, "30");
            // A switch out of range keeps its text after the message.
            auto* locate = dialog->findChild<QLineEdit*>("DL1");
            locate->setFocus();
            locate->selectAll();
            QTest::keyClicks(locate, "2");
            QCOMPARE(locate->text(), QStringLiteral("2"));
            dialog->close();
        });
        QTest::mouseClick(launcher.find<QPushButton>("Command2"), Qt::LeftButton);
        QVERIFY(ran);
        QCOMPARE(launcher.platform.sounds.front(), std::string("/opt/kslaunch/bfg.wav"));
        QCOMPARE(launcher.platform.messages.size(), std::size_t(1));
        QCOMPARE(launcher.program.Form2.field("FWD1").text(), std::string("30"));
        QVERIFY(contains(RenderConfig(launcher.program), "set b_damage 30\r\n"));

        whenModal([&](QWidget* dialog) {
            QCOMPARE(dialog->findChild<QLineEdit*>("FWD1")->text(), QStringLiteral("30"));
            QCOMPARE(dialog->findChild<QLineEdit*>("DL1")->text(), QStringLiteral("2"));
            pressClose(dialog);
        });
        launcher.window->Command2_Click();
        QVERIFY(!launcher.window->weaponsDialog()->isVisible());
        QCOMPARE(launcher.platform.sounds.back(), std::string("/opt/kslaunch/button.wav"));
        // The dialog's FGD is its own field, not the game directory of the main window.
        QCOMPARE(launcher.window->weaponsDialog()->findChild<QLineEdit*>("FGD")->text(), QStringLiteral("150"));
        QCOMPARE(launcher.find<QLineEdit>("FGD", launcher.window->centralWidget())->text(), QStringLiteral("NONE"));
    }
};

static RegisterTest<FlagsDialogTest> registerFlagsDialogTest;
static RegisterTest<WeaponsDialogTest> registerWeaponsDialogTest;

#include "dialogs_test.moc"
