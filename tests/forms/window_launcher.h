#pragma once

#include "forms/main_window.h"
#include "forms/qt_platform.h"
#include "forms/row_tabs.h"
#include "forms/views.h"
#include "support/launcher.h"

#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace ks::test {

// The launcher of the core tests with its main window built and shown, as it stands after its start.
struct WindowLauncher : Launcher {
    std::unique_ptr<MainWindow> window;

    // `prepare` sets up the platform before the window is built.
    explicit WindowLauncher(const std::function<void(FakePlatform&)>& prepare = {})
        : Launcher(PathStyle::Linux, false) {
        if (prepare) prepare(platform);
        window = std::make_unique<MainWindow>(program);
        loadMainForm(program);
        // Forget the start-up search and its message: the tests look at what came after.
        platform.messages.clear();
        window->show();
        (void)QTest::qWaitForWindowActive(window.get(), 60000);
    }

    template <class T = QWidget> T* find(const char* name, QWidget* root = nullptr) const {
        return (root ? root : window->centralWidget())->findChild<T*>(QString::fromLatin1(name));
    }
    // A menu entry as the operator finds it: by the captions of its menu and of itself.
    QAction* entry(const QString& menu, const QString& caption) const {
        for (QAction* top : window->menuBar()->actions())
            for (QAction* action : top->text() == menu ? top->menu()->actions() : QList<QAction*>())
                if (action->text() == caption) return action;
        return nullptr;
    }
};

inline QString qt(std::string_view text) { return toQt(std::string(text)); }

// Lets a timer go off now instead of waiting for it.
inline void fire(QTimer* timer) { QVERIFY(QMetaObject::invokeMethod(timer, "timeout", Qt::DirectConnection)); }

inline void clickTab(RowTabs* tabs, int tab) {
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
}

inline QLabel* labelOf(const QWidget* root, const QWidget* field) {
    for (QLabel* label : root->findChildren<QLabel*>())
        if (label->buddy() == field) return label;
    return nullptr;
}

// Every field of the page has its label to its left, level with it; gives the names of the fields without one.
inline QStringList fieldsWithoutLabel(QWidget* page) {
    QStringList without;
    const auto place = [page](const QWidget* w) { return QRect(w->mapTo(page, QPoint(0, 0)), w->size()); };
    for (const FieldEdit* edit : page->findChildren<FieldEdit*>()) {
        const QLabel* label = labelOf(page, edit);
        if (!label) {
            without << edit->objectName();
            continue;
        }
        const QRect field = place(edit), caption = place(label);
        const QByteArray name = edit->objectName().toLatin1();
        [&] {
            QVERIFY2(caption.right() < field.left(), name.constData());
            QVERIFY2(caption.top() <= field.center().y() && field.center().y() <= caption.bottom(), name.constData());
        }();
    }
    return without;
}

// Puts the text in place of what the box holds, one keystroke at a time (letters beyond ASCII included).
inline void typeInto(QLineEdit* edit, const QString& text) {
    edit->setFocus(Qt::MouseFocusReason);
    edit->selectAll();
    for (const QChar c : text)
        QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_A, QString(c), Qt::NoModifier);
}

// Runs `step` once the next modal dialog is up. Should the step fail, every modal dialog is shut, so that a failing
// step cannot hang the run.
inline void whenModal(std::function<void(QWidget*)> step) {
    QTimer::singleShot(0, [step] {
        step(QApplication::activeModalWidget());
        if (QTest::currentTestFailed())
            while (QWidget* dialog = QApplication::activeModalWidget())
                dialog->hide();
    });
}

// The test classes of this program register themselves by name; main runs one of them or all.
struct TestClass {
    const char* name;
    std::function<QObject*()> make;
};
inline std::vector<TestClass>& testClasses() {
    static std::vector<TestClass> classes;
    return classes;
}

template <class T> struct RegisterTest {
    explicit RegisterTest(const char* name) {
        testClasses().push_back({name, [] { return new T; }});
    }
};

} // namespace ks::test
