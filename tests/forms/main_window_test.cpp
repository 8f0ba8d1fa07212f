#include "launcher_fixture.h"

#include "forms/look.h"
#include "forms/qt_platform.h"
#include "forms/row_tabs.h"
#include "forms/views.h"
#include "frame/catalogue.h"
#include "frame/menu.h"

#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

using namespace ks;
using namespace ks::test;

namespace {

QString qt(std::string_view text) { return toQt(std::string(text)); }

QLabel* labelOf(QWidget* root, QWidget* field) {
    for (QLabel* label : root->findChildren<QLabel*>())
        if (label->buddy() == field) return label;
    return nullptr;
}

bool isInside(const QWidget* widget, const QWidget* ancestor) {
    for (const QWidget* up = widget; up; up = up->parentWidget())
        if (up == ancestor) return true;
    return false;
}

QRect placeOn(const QWidget* widget, const QWidget* page) {
    return QRect(widget->mapTo(page, QPoint(0, 0)), widget->size());
}

// The tab page that holds a widget, or -1.
int tabOf(RowTabs* tabs, const QWidget* widget) {
    for (int i = 0; i < tabs->count(); ++i)
        if (isInside(widget, tabs->page(i))) return i;
    return -1;
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void everyCatalogueFieldStandsOnItsTabWithLabelToolTipAndDefault() {
        Launcher launcher;
        RowTabs* tabs = launcher.window->tabs();
        QWidget* sharedLabelOwner = nullptr;
        for (const FieldSpec& entry : mainFields()) {
            const QByteArray name(entry.name.data(), qsizetype(entry.name.size()));
            auto* edit = launcher.find<FieldEdit>(name.constData());
            QVERIFY2(edit, name.constData());
            QCOMPARE(tabOf(tabs, edit), entry.tab == kAboveTabs ? -1 : entry.tab);
            QCOMPARE(edit->toolTip(), qt(entry.toolTip));
            if (entry.name != "IP") QCOMPARE(edit->text(), qt(entry.defaultText));

            // The label stands to the left, level with the field.
            launcher.program.frmMain.tabs().setCurrent(entry.tab == kAboveTabs ? 0 : entry.tab);
            QApplication::processEvents();
            QWidget* ground = launcher.window->centralWidget();
            QLabel* label = labelOf(launcher.window.get(), edit);
            if (!label && sharedLabelOwner) {
                // The second field beside the shared label.
                label = labelOf(launcher.window.get(), sharedLabelOwner);
                QVERIFY(label && label->text() == qt(kSharedRespawnLabel));
                QVERIFY(label->text().endsWith(qt(entry.label)));
            } else {
                QVERIFY2(label, name.constData());
                if (label->text() == qt(kSharedRespawnLabel)) {
                    sharedLabelOwner = edit;
                    QVERIFY(label->text().startsWith(qt(entry.label)));
                } else {
                    QCOMPARE(label->text(), qt(entry.label));
                }
            }
            if (entry.tab == kAboveTabs) continue; // FFile's label stands above it
            const QRect field = placeOn(edit, ground);
            const QRect caption = placeOn(label, ground);
            QVERIFY2(caption.right() < field.left(), name.constData());
            QVERIFY2(caption.top() <= field.center().y() && field.center().y() <= caption.bottom(), name.constData());
            if (qobject_cast<SpanLabel*>(label) == nullptr)
                QVERIFY2(qAbs(caption.center().y() - field.center().y()) <= 3, name.constData());
        }
        QVERIFY(sharedLabelOwner);
        QCOMPARE(labelOf(launcher.window.get(), launcher.find("FCD3"))->objectName(), qt(kCampDistanceLabelName));
    }

    void groupCaptionsAndHintsStandOnTheirTabs() {
        Launcher launcher;
        RowTabs* tabs = launcher.window->tabs();
        for (const GroupCaption& group : mainGroupCaptions()) {
            int found = 0;
            for (QGroupBox* box : tabs->page(group.tab)->findChildren<QGroupBox*>())
                found += box->title() == qt(group.caption);
            QVERIFY2(found == 1, group.caption.data());
            // Every field of the group stands inside its frame.
            for (const FieldSpec& entry : mainFields()) {
                if (entry.group != group.caption) continue;
                auto* box = qobject_cast<QGroupBox*>(launcher.find(entry.name.data())->parentWidget());
                QVERIFY(box && box->title() == qt(group.caption));
            }
        }
        for (const Hint& hint : mainHints()) {
            int found = 0;
            for (QLabel* label : tabs->page(hint.tab)->findChildren<QLabel*>()) found += label->text() == qt(hint.text);
            QVERIFY2(found == 1, hint.text.data());
        }
        auto* ipCheck = launcher.find<QCheckBox>("ipCheck", tabs->page(0));
        QVERIFY(ipCheck);
        QCOMPARE(ipCheck->text(), QStringLiteral("Use Default"));
        QCOMPARE(ipCheck->parentWidget(), launcher.find("IP")->parentWidget());
        QVERIFY(launcher.find("Drive2", tabs->page(0)) && launcher.find("Dir2", tabs->page(0)));
    }

    void atLoadIpIsEmptyDisabledGreyAndTheSentinelsYellow() {
        Launcher launcher;
        auto* ip = launcher.find<FieldEdit>("IP");
        QVERIFY(launcher.find<QCheckBox>("ipCheck")->isChecked());
        QCOMPARE(ip->text(), QString());
        QVERIFY(!ip->isEnabled());
        QCOMPARE(ip->palette().color(QPalette::Disabled, QPalette::Base), toQColor(kDisabledGrey));
        for (const char* name : {"QDIR", "FGD", "FFile"}) {
            auto* edit = launcher.find<FieldEdit>(name);
            QVERIFY(!edit->isEnabled());
            QCOMPARE(edit->text(), QStringLiteral("NONE"));
            QCOMPARE(edit->palette().color(QPalette::Disabled, QPalette::Base), toQColor(kPaleYellow));
        }
        // Turning Use Default off by a click gives the field back, white and enabled.
        launcher.program.frmMain.tabs().setCurrent(0);
        QTest::mouseClick(launcher.find<QCheckBox>("ipCheck"), Qt::LeftButton);
        QCOMPARE(launcher.program.frmMain.check("ipCheck").state(), 0);
        QVERIFY(ip->isEnabled());
        QCOMPARE(ip->palette().color(QPalette::Active, QPalette::Base), toQColor(kWhite));
    }

    void menusFollowTheMenuTableInOrder() {
        Launcher launcher;
        QMenuBar* bar = launcher.window->menuBar();
        std::vector<QAction*> shown;
        for (QAction* top : bar->actions()) {
            shown.push_back(top);
            for (QAction* entry : top->menu()->actions()) shown.push_back(entry);
        }
        const auto table = mainMenu();
        QCOMPARE(shown.size(), table.size());
        for (std::size_t i = 0; i < table.size(); ++i) {
            const MenuEntry& entry = table[i];
            QAction* action = shown[i];
            QCOMPARE(action->objectName(), qt(entry.name));
            QCOMPARE(action->isSeparator(), entry.caption.empty());
            if (!entry.caption.empty()) QCOMPARE(action->text(), qt(entry.caption));
            QVERIFY(action->shortcut().isEmpty());
            QCOMPARE(action->menu() != nullptr, entry.level == 0);
        }
        QCOMPARE(launcher.find<QAction>("mnuHelpAbout", bar)->text(), QStringLiteral("&About "));
    }

    void windowOpensOnTeamPlayAtItsDesignSize() {
        Launcher launcher;
        MainWindow& window = *launcher.window;
        QCOMPARE(window.windowTitle(), qt(kMainCaption));
        QCOMPARE(window.tabs()->currentIndex(), 2);
        QVERIFY(window.tabs()->page(2)->isVisible());
        QVERIFY(!window.tabs()->page(0)->isVisible());
        QCOMPARE(window.tabs()->objectName(), QStringLiteral("SSTab1"));
        // 8640 x 6015 twips: the controls' ground and the status bar below it.
        QCOMPARE(window.centralWidget()->size(), QSize(576, 383));
        QStatusBar* status = window.statusBar();
        QCOMPARE(status->objectName(), QStringLiteral("sbStatusBar"));
        QCOMPARE(status->height(), 18);
        QCOMPARE(launcher.find("Command1")->geometry(), QRect(16, 8, 153, 33));
        QCOMPARE(launcher.find("Command2")->geometry(), QRect(408, 8, 153, 33));
        QCOMPARE(window.tabs()->geometry(), QRect(8, 48, 561, 329));
        QVERIFY(!window.windowIcon().isNull());
        QVERIFY(!launcher.find("FFile")->isEnabled());
    }

    void statusBarShowsStatusThenDateAndTime() {
        Launcher launcher;
        QStatusBar* status = launcher.window->statusBar();
        auto* panel = launcher.find<QLabel>("statusPanel", status);
        auto* date = launcher.find<QLabel>("datePanel", status);
        auto* time = launcher.find<QLabel>("timePanel", status);
        QCOMPARE(panel->text(), QStringLiteral("Status"));
        QCOMPARE(date->text(), QLocale().toString(QDate::currentDate(), QLocale::ShortFormat));
        QVERIFY(!time->text().isEmpty());
        QVERIFY(date->width() >= 96 && time->width() >= 96);
        QVERIFY(panel->x() < date->x() && date->x() < time->x());
        QVERIFY(panel->width() > date->width());
    }

    void closingTheWindowEndsTheProgramWithoutSaving() {
        Launcher launcher;
        launcher.window->close();
        QCOMPARE(launcher.platform.quitCalls, 1);
        QVERIFY(launcher.platform.dialogs.empty());
        QVERIFY(launcher.platform.messages.empty());
    }
};

static RegisterTest<MainWindowTest> registerMainWindowTest;

#include "main_window_test.moc"
