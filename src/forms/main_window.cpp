#include "forms/main_window.h"

#include "forms/qt_platform.h"
#include "frame/catalogue.h"
#include "frame/program.h"
#include "frame/startup.h"

#include <QCloseEvent>

namespace ks {

MainWindow::MainWindow(Program& program, QWidget* parent) : QMainWindow(parent), program_(program) {
    setObjectName(QStringLiteral("frmMain"));
    setWindowTitle(toQt(std::string(kMainCaption)));
    resize(8640 / 15, 6015 / 15);
}

void MainWindow::closeEvent(QCloseEvent* event) {
    // The program ends in one place; nothing is saved on the way.
    event->accept();
    Exit_Animation(program_);
}

} // namespace ks
