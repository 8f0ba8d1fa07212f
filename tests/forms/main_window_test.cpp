#include "launcher_fixture.h"

#include "forms/look.h"
#include "forms/row_tabs.h"
#include "forms/views.h"
#include "frame/catalogue.h"
#include "frame/menu.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

using namespace ks;
using namespace ks::test;

namespace {

QRect placeOn(const QWidget* widget, const QWidget* ground) {
    return QRect(widget->mapTo(ground, QPoint(0, 0)), widget->size());
}

// The tab page that holds a widget, or -1.
int tabOf(RowTabs* tabs, const QWidget* widget) {
    for (int i = 0; i < tabs->count(); ++i)
        if (tabs->page(i)->isAncestorOf(widget)) return i;
    return -1;
}

} // namespace

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void everyCatalogueFieldStandsOnItsTabInItsFrameWithLabelToolTipAndDefault() {
        Launcher launcher;
        QWidget* window = launcher.window.get();
        QWidget* ground = launcher.window->centralWidget();
        for (const FieldRow& entry : mainFields()) {
            const QByteArray name = qt(entry.name).toLatin1();
            auto* edit = launcher.find<FieldEdit>(name.constData());
            QVERIFY2(edit, name.constData());
            QCOMPARE(tabOf(launcher.window->tabs(), edit), entry.tab);
            QCOMPARE(edit->toolTip(), qt(entry.toolTip));
            if (entry.name != "IP") QCOMPARE(edit->text(), qt(entry.defaultText));
            if (!entry.group.empty()) QVERIFY2(inGroup(edit, entry.group), name.constData());

            // The label stands to the left, level with the field; FLHB shares the label of FHRT.
            QLabel* label = labelOf(window, entry.name == "FLHB" ? launcher.find("FHRT") : edit);
            QVERIFY2(label, name.constData());
            const bool span = qobject_cast<SpanLabel*>(label) != nullptr;
            QVERIFY2(span ? label->text().contains(qt(entry.label)) : label->text() == qt(entry.label),
                     name.constData());
            if (entry.tab == kAboveTabs) continue; // FFile's label stands above it
            launcher.program.frmMain.tabs().setCurrent(entry.tab);
            QApplication::processEvents();
            const QRect field = placeOn(edit, ground);
            const QRect caption = placeOn(label, ground);
            QVERIFY2(caption.right() < field.left(), name.constData());
            QVERIFY2(caption.top() <= field.center().y() && field.center().y() <= caption.bottom(), name.constData());
            if (!span) QVERIFY2(qAbs(caption.center().y() - field.center().y()) <= 3, name.constData());
        }
        QCOMPARE(labelOf(window, launcher.find("FCD3"))->objectName(), qt(kCampDistanceLabelName));
    }

    void groupCaptionsHintsAndSelectorsStandOnTheirTabs() {
        Launcher launcher;
        RowTabs* tabs = launcher.window->tabs();
        for (const GroupCaption& group : mainGroupCaptions()) {
            int found = 0;
            for (QGroupBox* box : tabs->page(group.tab)->findChildren<QGroupBox*>())
                found += box->title() == qt(group.caption);
            QVERIFY2(found == 1, group.caption.data());
        }
        for (const Hint& hint : mainHints()) {
            int found = 0;
            for (QLabel* label : tabs->page(hint.tab)->findChildren<QLabel*>())
                found += label->text() == qt(hint.text);
            QVERIFY2(found == 1, hint.text.data());
        }
        auto* ipCheck = launcher.find<QCheckBox>("ipCheck", tabs->page(0));
        QCOMPARE(ipCheck->text(), QStringLiteral("Use Default"));
        QCOMPARE(ipCheck->parentWidget(), launcher.find("IP")->parentWidget());
        QVERIFY(launcher.find("Drive2", tabs->page(0)) && launcher.find("Dir2", tabs->page(0)));
    }

    void atLoadTeamPlayIsUpAtDesignSizeIpGreyAndTheSentinelsYellow() {
        Launcher launcher;
        MainWindow& window = *launcher.window;
        QCOMPARE(window.windowTitle(), qt(kMainCaption));
        QVERIFY(!window.windowIcon().isNull());
        QCOMPARE(window.centralWidget()->size(), QSize(576, 383)); // 8640 x 6015 twips
        QVERIFY(window.tabs()->page(2)->isVisible() && !window.tabs()->page(0)->isVisible());
        auto* ip = launcher.find<FieldEdit>("IP");
        QVERIFY(launcher.find<QCheckBox>("ipCheck")->isChecked());
        QVERIFY(ip->text().isEmpty() && !ip->isEnabled());
        QCOMPARE(ip->palette().color(QPalette::Disabled, QPalette::Base), toQColor(kDisabledGrey));
        for (const char* name : {"QDIR", "FGD", "FFile"}) {
            auto* edit = launcher.find<FieldEdit>(name);
            QVERIFY(!edit->isEnabled() && edit->text() == QStringLiteral("NONE"));
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
        std::vector<QAction*> shown;
        for (QAction* top : launcher.window->menuBar()->actions()) {
            shown.push_back(top);
            for (QAction* entry : top->menu()->actions())
                shown.push_back(entry);
        }
        const auto table = mainMenu();
        QCOMPARE(shown.size(), table.size());
        for (std::size_t i = 0; i < table.size(); ++i) {
            QCOMPARE(shown[i]->objectName(), qt(table[i].name));
            QCOMPARE(shown[i]->isSeparator(), table[i].caption.empty());
            if (!table[i].caption.empty()) QCOMPARE(shown[i]->text(), qt(table[i].caption));
            QVERIFY(shown[i]->shortcut().isEmpty());
            QCOMPARE(shown[i]->menu() != nullptr, table[i].level == 0);
        }
    }

    void statusBarShowsStatusThenDateAndTime() {
        Launcher launcher;
        QStatusBar* status = launcher.window->statusBar();
        QCOMPARE(status->objectName(), QStringLiteral("sbStatusBar"));
        auto* panel = launcher.find<QLabel>("statusPanel", status);
        auto* date = launcher.find<QLabel>("datePanel", status);
        auto* time = launcher.find<QLabel>("timePanel", status);
        QCOMPARE(panel->text(), QStringLiteral("Status"));
        QCOMPARE(date->text(), QLocale().toString(QDate::currentDate(), QLocale::ShortFormat));
        QVERIFY(!time->text().isEmpty());
        QVERIFY(date->width() >= 96 && time->width() >= 96);
        QVERIFY(panel->x() < date->x() && date->x() < time->x() && panel->width() > date->width());
    }

    void closingTheWindowEndsTheProgramWithoutSaving() {
        Launcher launcher;
        launcher.window->close();
        QCOMPARE(launcher.platform.quitCalls, 1);
        QVERIFY(launcher.platform.dialogs.empty() && launcher.platform.messages.empty());
    }
};

static RegisterTest<MainWindowTest> registerMainWindowTest;

#include "main_window_test.moc"
