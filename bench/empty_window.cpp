// The yardstick of the start-up benchmark: an empty window with the client area of the launcher's main window,
// built like the launcher and recording its first frame the same way.

#include "forms/startup_trace.h"

#include <QApplication>
#include <QWidget>

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    ks::traceStartup();
    QWidget window;
    window.setObjectName(QStringLiteral("emptyWindow"));
    window.setFixedSize(576, 401);
    window.show();
    return app.exec();
}
