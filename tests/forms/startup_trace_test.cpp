// The record of the start: each window's first frame once, after its paint, and the named steps in order. A
// program of its own, because the record's file is named by the environment before the application exists.

#include "forms/startup_trace.h"
#include "support/temp_dir.h"

#include <QApplication>
#include <QTest>
#include <QWidget>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <sstream>
#include <vector>

namespace {

// A window that notes when it was first painted, on the clock of the record.
class Window : public QWidget {
public:
    explicit Window(const char* name) { setObjectName(QLatin1String(name)); }
    long long paintedAt = 0;

protected:
    void paintEvent(QPaintEvent*) override {
        if (!paintedAt) paintedAt = std::chrono::steady_clock::now().time_since_epoch() / std::chrono::nanoseconds(1);
    }
};

} // namespace

int main(int argc, char** argv) {
    ks::test::TempDir temp;
    qputenv("KS_STARTUP_TRACE", QByteArray::fromStdString(temp.file("record")));
    QApplication app(argc, argv);
    ks::traceStartup();
    Window first("first"), second("second");
    first.show();
    bool exposed = QTest::qWaitForWindowExposed(&first, 60000);
    ks::traceStartupStep("between");
    second.show();
    exposed = QTest::qWaitForWindowExposed(&second, 60000) && exposed;
    // Later frames, and a window shown again, are not first frames.
    first.update();
    first.hide();
    first.show();
    exposed = QTest::qWaitForWindowExposed(&first, 60000) && exposed;
    QCoreApplication::processEvents();
    ks::traceStartupStep("ready");

    // "frame first T0", "between T1", "frame second T2", "ready T3", with T0 <= T1 <= T2 <= T3.
    std::istringstream in(ks::test::readBytes(temp.file("record")));
    std::string steps;
    std::vector<long long> times;
    for (std::string line; std::getline(in, line);) {
        steps += line.substr(0, line.rfind(' ')) + "|";
        times.push_back(std::stoll(line.substr(line.rfind(' ') + 1)));
    }
    const bool inOrder = steps == "frame first|between|frame second|ready|" && times[0] >= first.paintedAt &&
                         times[2] >= second.paintedAt && std::is_sorted(times.begin(), times.end());
    if (exposed && inOrder) return 0;
    std::fprintf(stderr, "exposed: %d, steps: %s\n", exposed, steps.c_str());
    return 1;
}
