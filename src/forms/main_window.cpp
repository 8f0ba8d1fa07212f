#include "forms/main_window.h"

#include "config/reader.h"
#include "forms/exit_animation.h"
#include "forms/field_layout.h"
#include "forms/flags_dialog.h"
#include "forms/look.h"
#include "forms/push_button.h"
#include "forms/qt_platform.h"
#include "forms/row_tabs.h"
#include "forms/selector_views.h"
#include "forms/splash_screen.h"
#include "forms/views.h"
#include "forms/weapons_dialog.h"
#include "frame/catalogue.h"
#include "frame/program.h"
#include "session/menu.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDateTime>
#include <QLabel>
#include <QLayout>
#include <QLocale>
#include <QMenuBar>
#include <QPainter>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>
#include <QVBoxLayout>

namespace ks {

namespace {

// Client area of the window and the place of each control on it, in twips.
constexpr int kClientWidth = 8640;
constexpr int kClientHeight = 6015;
constexpr int kStatusTop = 5745;
constexpr int kPanelMinimum = 1440;

// Passes over what the operator does with mouse and keyboard while the farewell plays.
class IgnoreInput : public QObject {
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletRelease:
        case QEvent::Drop:
            return true;
        default:
            return false;
        }
    }
};

// The ground the controls stand on: black.
class Canvas : public QWidget {
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent*) override { QPainter(this).fillRect(rect(), Qt::black); }
};

// How the fields of each tab stand in columns, with the column widths in pixels.
constexpr ColumnPlan kMainPlans[] = {
    {{"QDIR"}, {166, 240, 0}, 3},
    {{"FP1", "Hook Settings"}, {172, 182, 0}, 3},
    {{"Team 2"}, {272, 0}, 2},
    {{"Other Settings", "Weapon/Item Respawn Times"}, {160, 200, 0}, 3},
};

constexpr int kSelectorsTab = 0;

} // namespace

MainWindow::MainWindow(Program& program, QWidget* parent) : QMainWindow(parent), program_(program) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(toQt(std::string(kMainCaption)));
    setWindowIcon(launcherIcon());
    setFont(launcherFont());
    buildControls();
    buildPages();
    buildMenus();
    buildStatusBar();
    // The window keeps its design size: a window manager cannot stretch it.
    layout()->setSizeConstraint(QLayout::SetFixedSize);
}

MainWindow::~MainWindow() = default;

void MainWindow::buildControls() {
    auto* canvas = new Canvas(this);
    canvas->setFixedSize(px(kClientWidth), px(kStatusTop));
    setCentralWidget(canvas);

    auto* command1 = new WrapButton(toQt(std::string(kFlagsButtonCaption)), canvas);
    command1->setObjectName(QStringLiteral("Command1"));
    command1->setGeometry(twipRect(240, 120, 2292, 492));
    command1->setFont(launcherFont(7.5, true));
    connect(command1, &QPushButton::clicked, this, &MainWindow::openFlagsDialog);

    auto* label1 = new QLabel(toQt(std::string(kFileLabel)), canvas);
    label1->setObjectName(QStringLiteral("Label1"));
    label1->setGeometry(twipRect(3480, 0, 1272, 192));
    label1->setAlignment(Qt::AlignCenter);
    QPalette white = label1->palette();
    white.setColor(QPalette::WindowText, Qt::white);
    label1->setPalette(white);

    auto* file = new FieldEdit(program_.field(id::FFile), canvas, FieldEdit::Holds::Path);
    file->setGeometry(twipRect(2760, 240, 3132, 300));
    label1->setBuddy(file);

    auto* command2 = new WrapButton(toQt(std::string(kWeaponsButtonCaption)), canvas);
    command2->setObjectName(QStringLiteral("Command2"));
    command2->setGeometry(twipRect(6120, 120, 2292, 492));
    command2->setFont(launcherFont(7.5, true));
    connect(command2, &QPushButton::clicked, this, &MainWindow::openWeaponsDialog);

    tabs_ = new RowTabs(program_.mainTabs(), 2, canvas);
    tabs_->setGeometry(twipRect(120, 720, 8412, 4932));
    // The tab control keeps the usual face colour on the black ground.
    tabs_->setPalette(QPalette(QColor(236, 233, 216)));
}

void MainWindow::buildPages() {
    const PageExtras extras{kHintRows, kMainCheckRows};
    for (int tab = 0; tab < tabs_->count(); ++tab) {
        const auto columns =
            layOutFields(tabs_->page(tab), program_.form(FormId::Main), mainFields(), tab, kMainPlans[tab], extras);
        if (tab != kSelectorsTab) continue;
        // The drive list and the directory tree stand in the last column, their hint below them.
        QVBoxLayout* column = columns.back();
        column->insertWidget(0, new DriveView(program_));
        column->insertWidget(1, new DirectoryView(program_), 1);
        for (const Hint& hint : kHintRows) {
            if (hint.tab != tab || !hint.nearField.empty()) continue;
            auto* note = new QLabel(toQt(std::string(hint.text)));
            note->setObjectName(QStringLiteral("hint_selectors"));
            note->setWordWrap(true);
            column->insertWidget(2, note);
        }
    }
}

void MainWindow::buildMenus() {
    QMenuBar* bar = menuBar();
    bar->setObjectName(QStringLiteral("menuBar"));
    QMenu* current = nullptr;
    for (const MenuEntry& entry : mainMenu()) {
        const QString name = toQt(std::string(entry.name));
        const QString caption = toQt(std::string(entry.caption));
        if (entry.level == 0) {
            current = bar->addMenu(caption);
            current->setObjectName(name);
            current->menuAction()->setObjectName(name);
            continue;
        }
        if (!current) continue;
        QAction* action = entry.caption.empty() ? current->addSeparator() : current->addAction(caption);
        action->setObjectName(name);
        if (entry.caption.empty()) continue;
        if (entry.name == kAboutEntry)
            connect(action, &QAction::triggered, this, &MainWindow::showAbout);
        else
            connect(action, &QAction::triggered, this, [this, &entry] { runCommand(entry); });
    }
}

void MainWindow::buildStatusBar() {
    QStatusBar* bar = statusBar();
    bar->setObjectName(QStringLiteral("sbStatusBar"));
    bar->setFixedHeight(px(kClientHeight - kStatusTop));
    bar->setSizeGripEnabled(false);
    auto* status = new QLabel(QStringLiteral("Status"));
    status->setObjectName(QStringLiteral("statusPanel"));
    date_ = new QLabel;
    date_->setObjectName(QStringLiteral("datePanel"));
    time_ = new QLabel;
    time_->setObjectName(QStringLiteral("timePanel"));
    for (QLabel* panel : {date_, time_}) {
        panel->setMinimumWidth(px(kPanelMinimum));
        panel->setAlignment(Qt::AlignCenter);
    }
    bar->addWidget(status, 1);
    bar->addPermanentWidget(date_);
    bar->addPermanentWidget(time_);
    clock_ = new QTimer(this);
    connect(clock_, &QTimer::timeout, this, &MainWindow::updateClock);
    clock_->start(1000);
    updateClock();
}

void MainWindow::updateClock() {
    const QDateTime now = QDateTime::currentDateTime();
    date_->setText(QLocale().toString(now.date(), QLocale::ShortFormat));
    time_->setText(QLocale().toString(now.time(), QLocale::ShortFormat));
}

FlagsDialog* MainWindow::flagsDialog() {
    if (!flags_) flags_ = new FlagsDialog(program_, this);
    return flags_;
}

WeaponsDialog* MainWindow::weaponsDialog() {
    if (!weapons_) weapons_ = new WeaponsDialog(program_, this);
    return weapons_;
}

void MainWindow::openFlagsDialog() {
    if (leaving_) return;
    program_.playCue(kFlagsButtonSound);
    flagsDialog()->exec();
}

void MainWindow::openWeaponsDialog() {
    if (leaving_) return;
    program_.playCue(kWeaponsButtonSound);
    weaponsDialog()->exec();
}

void MainWindow::runCommand(const MenuEntry& entry) {
    if (leaving_) return;
    runWithinMemory([&] { runMenuCommand(program_, entry); });
}

void MainWindow::runWithinMemory(const std::function<void()>& command) {
    try {
        command();
    } catch (const std::bad_alloc&) {
        // A file too large for the machine's memory ends the command, not the launcher.
        program_.platform().messageBox({"There is not enough memory to finish this command.", std::string(kMainCaption),
                                        MessageButtons::Ok, MessageIcon::Critical, 0});
    }
}

void MainWindow::openConfig(const std::string& path) {
    if (leaving_) return;
    runWithinMemory([&] { openConfigFile(program_, path); });
    takeKeyboard();
}

void MainWindow::showAbout() {
    if (leaving_) return;
    {
        // The splash again, owned by this window and modal, with its whole load step: the start sound too.
        SplashScreen about([this] { program_.playCue(kStartSound); }, this);
        // Continue brings up the first tab; the timer leaves the tab as it was.
        if (about.exec()) program_.mainTabs().setCurrent(0);
    }
    // The window takes the keyboard back from the splash, also where no window manager hands it on.
    activateWindow();
    takeKeyboard();
}

void MainWindow::takeKeyboard() {
    QWidget* page = tabs_->page(tabs_->currentIndex());
    if (!page) return;
    // The page's first control in the order of the Tab key that takes the keyboard. The chain runs round the
    // whole window, so it comes back to the page.
    for (QWidget* widget = page->nextInFocusChain(); widget && widget != page; widget = widget->nextInFocusChain()) {
        if (!page->isAncestorOf(widget) || !(widget->focusPolicy() & Qt::TabFocus) || !widget->isEnabled() ||
            !widget->isVisibleTo(this))
            continue;
        // As the Tab key gives it: a text box's text selected, the focus frame drawn on any control.
        setAttribute(Qt::WA_KeyboardFocusChange);
        widget->setFocus(Qt::TabFocusReason);
        return;
    }
}

void MainWindow::leaveProgram() {
    // Only the first request counts.
    if (leaving_) return;
    leaving_ = true;
    qApp->installEventFilter(new IgnoreInput(this));
    for (int open = 0; open < 8 && QApplication::activePopupWidget(); ++open)
        QApplication::activePopupWidget()->close();
    // The show runs from the event loop once the close or the command that asked for it has been handled: a
    // close still in hand would let a second close destroy the window.
    QTimer::singleShot(0, this, &MainWindow::playFarewell);
}

void MainWindow::playFarewell() {
    playExitAnimation(*this, [this] { program_.playCue(kStartSound); });
    emit farewellPlayed();
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (event->spontaneous()) return;
    // Every run opens at the design size in the middle of the screen.
    if (QScreen* screen = this->screen()) {
        QRect frame = frameGeometry();
        frame.moveCenter(screen->availableGeometry().center());
        move(frame.topLeft());
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // The program ends in one place, the platform's end with its show; nothing is saved on the way. The window
    // stays until then, and a close during the show changes nothing.
    event->ignore();
    if (!leaving_) program_.platform().endProgram();
}

} // namespace ks
