#pragma once

#include "forms/main_window.h"
#include "forms/qt_platform.h"
#include "forms/row_tabs.h"
#include "frame/program.h"
#include "frame/startup.h"
#include "support/fake_platform.h"

#include <QApplication>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace ks::test {

// The launcher as it stands after its start: the core with every handler, the main window shown.
struct Launcher {
    FakePlatform platform;
    Program program{platform, PathStyle::Linux};
    std::unique_ptr<MainWindow> window;

    // `prepare` sets up the platform before the window is built.
    explicit Launcher(const std::function<void(FakePlatform&)>& prepare = {}) {
        if (prepare) prepare(platform);
        ConnectHandlers(program);
        window = std::make_unique<MainWindow>(program);
        LoadMainForm(program);
        // Forget the start-up search and its message: the tests look at what came after.
        platform.messages.clear();
        window->show();
        (void)QTest::qWaitForWindowActive(window.get());
    }

    template <class T = QWidget> T* find(const char* name, QWidget* root = nullptr) const {
        return (root ? root : window->centralWidget())->findChild<T*>(QString::fromLatin1(name));
    }
};

inline QString qt(std::string_view text) { return toQt(std::string(text)); }

inline void clickTab(RowTabs* tabs, int tab) {
    QTest::mouseClick(tabs, Qt::LeftButton, {}, tabs->tabRect(tab).center());
}

inline QLabel* labelOf(const QWidget* root, const QWidget* field) {
    for (QLabel* label : root->findChildren<QLabel*>())
        if (label->buddy() == field) return label;
    return nullptr;
}

inline bool inGroup(const QWidget* widget, std::string_view caption) {
    auto* box = qobject_cast<QGroupBox*>(widget->parentWidget());
    return box && box->title() == qt(caption);
}

// Puts the text in place of what the box holds, one keystroke at a time (letters beyond ASCII included).
inline void typeInto(QLineEdit* edit, const QString& text) {
    edit->setFocus(Qt::MouseFocusReason);
    edit->selectAll();
    for (const QChar c : text)
        QTest::sendKeyEvent(QTest::Click, edit, Qt::Key_A, QString(c), Qt::NoModifier);
}

// Runs `step` once the next modal dialog is up, and shuts every modal dialog that is still open a few
// seconds later, so that a failing step cannot hang the run.
inline void whenModal(std::function<void(QWidget*)> step) {
    QTimer::singleShot(0, [step] { step(QApplication::activeModalWidget()); });
    QTimer::singleShot(5000, [] {
        while (QWidget* dialog = QApplication::activeModalWidget())
            dialog->hide();
    });
}

// The test classes of this program register themselves; main runs them all.
inline std::vector<std::function<QObject*()>>& testClasses() {
    static std::vector<std::function<QObject*()>> classes;
    return classes;
}

template <class T> struct RegisterTest {
    RegisterTest() {
        testClasses().push_back([] { return new T; });
    }
};

} // namespace ks::test
