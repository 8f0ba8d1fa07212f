#include "window_launcher.h"

#include "forms/look.h"
#include "forms/views.h"
#include "frame/catalogue.h"
#include "session/menu.h"

#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>

using namespace ks;
using namespace ks::test;

class MainWindowTest : public QObject {
    Q_OBJECT
private slots:
    void everyCatalogueFieldStandsOnItsTabInItsFrameWithLabelAndToolTip() {
        WindowLauncher launcher;
        QWidget* ground = launcher.window->centralWidget();
        RowTabs* tabs = launcher.window->tabs();
        const auto place = [ground](const QWidget* w) { return QRect(w->mapTo(ground, QPoint(0, 0)), w->size()); };
        for (const FieldRow& row : mainFields()) {
            const QByteArray name = qt(row.name).toLatin1();
            auto* edit = launcher.find<FieldEdit>(name.constData());
            QVERIFY2(edit, name.constData());
            int tab = kAboveTabs;
            for (int i = 0; i < tabs->count(); ++i)
                if (tabs->page(i)->isAncestorOf(edit)) tab = i;
            QCOMPARE(tab, row.tab);
            QCOMPARE(edit->toolTip(), qt(row.toolTip));
            QVERIFY2(row.group.empty() || inGroup(edit, row.group), name.constData());

            // The label stands to the left, level with the field; FLHB shares the label of FHRT.
            QLabel* label = labelOf(ground, row.name == "FLHB" ? launcher.find("FHRT") : edit);
            QVERIFY2(label, name.constData());
            const bool span = qobject_cast<SpanLabel*>(label) != nullptr;
            QVERIFY2(span ? label->text().contains(qt(row.label)) : label->text() == qt(row.label), name.constData());
            if (row.tab == kAboveTabs) continue; // FFile's label stands above it
            launcher.program.mainTabs().setCurrent(row.tab);
            QApplication::processEvents();
            const QRect field = place(edit), caption = place(label);
            QVERIFY2(caption.right() < field.left(), name.constData());
            QVERIFY2(caption.top() <= field.center().y() && field.center().y() <= caption.bottom(), name.constData());
            if (!span) QVERIFY2(qAbs(caption.center().y() - field.center().y()) <= 3, name.constData());
        }

        // Hints and the directory selectors.
        for (const Hint& hint : kHintRows) {
            int found = 0;
            for (QLabel* label : tabs->page(hint.tab)->findChildren<QLabel*>())
                found += label->text() == qt(hint.text);
            QVERIFY2(found == 1, hint.text.data());
        }
        QCOMPARE(launcher.find("ipCheck", tabs->page(0))->parentWidget(), launcher.find("IP")->parentWidget());
        QVERIFY(launcher.find("Drive2", tabs->page(0)) && launcher.find("Dir2", tabs->page(0)));
    }

    void atLoadTeamPlayIsUpIpGreyAndTheSentinelsYellowAndUseDefaultGivesTheAddressBackWhenUnticked() {
        WindowLauncher launcher;
        MainWindow& window = *launcher.window;
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
        // The status bar shows the date and then the time.
        QLabel* date = launcher.find<QLabel>("datePanel", window.statusBar());
        QCOMPARE(date->text(), QLocale().toString(QDate::currentDate(), QLocale::ShortFormat));
        QVERIFY(date->x() < launcher.find<QLabel>("timePanel", window.statusBar())->x());

        // Turning Use Default off by a click gives the field back, white and enabled.
        launcher.program.mainTabs().setCurrent(0);
        QTest::mouseClick(launcher.find<QCheckBox>("ipCheck"), Qt::LeftButton);
        QCOMPARE(launcher.check("ipCheck").state(), 0);
        QVERIFY(ip->isEnabled());
        QCOMPARE(ip->palette().color(QPalette::Active, QPalette::Base), toQColor(kWhite));
    }

    // Each entry as "NAME|CAPTION|LEVEL", a separator without a caption, a menu at level 0; none has a shortcut.
    void menusFollowTheMenuTableInOrder() {
        WindowLauncher launcher;
        QStringList shown, listed;
        for (QAction* top : launcher.window->menuBar()->actions())
            for (QAction* entry : QList<QAction*>{top} + top->menu()->actions())
                shown << entry->objectName() + "|" + (entry->isSeparator() ? QString() : entry->text()) + "|" +
                             (entry->menu() ? "0" : "1") + entry->shortcut().toString();
        for (const MenuEntry& entry : mainMenu())
            listed << qt(entry.name) + "|" + qt(entry.caption) + "|" + (entry.level == 0 ? "0" : "1");
        QCOMPARE(shown, listed);
    }
};

static RegisterTest<MainWindowTest> registerMainWindowTest("MainWindowTest");

#include "main_window_test.moc"
