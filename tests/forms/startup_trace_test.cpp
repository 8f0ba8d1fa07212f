// The record of the start that the start-up benchmark reads: each window's first frame once, after the window was
// painted, and the named steps, in the order they happen. A program of its own, because the record's file is
// named by the environment when the program starts.

#include "forms/startup_trace.h"
#include "support/temp_dir.h"

#include <QApplication>
#include <QTest>
#include <QWidget>

#include <chrono>
#include <cstdio>
#include <sstream>
#include <string>
#include <vector>

namespace {

// A window that notes when it was painted, on the same clock as the record.
class Window : public QWidget {
public:
    explicit Window(const char* name) { setObjectName(QLatin1String(name)); }
    long long paintedAt = 0;

protected:
    void paintEvent(QPaintEvent*) override {
        if (!paintedAt)
            paintedAt = std::chrono::duration_cast<std::chrono::nanoseconds>(
                            std::chrono::steady_clock::now().time_since_epoch())
                            .count();
    }
};

struct Line {
    std::string step;
    long long at;
};

std::vector<Line> readRecord(const std::string& path) {
    std::vector<Line> lines;
    std::istringstream in(ks::test::readBytes(path));
    for (std::string text; std::getline(in, text);) {
        const auto blank = text.rfind(' ');
        lines.push_back({text.substr(0, blank), std::stoll(text.substr(blank + 1))});
    }
    return lines;
}

int failures = 0;

void expect(bool holds, const char* what) {
    if (holds) return;
    std::fprintf(stderr, "%s\n", what);
    ++failures;
}

} // namespace

int main(int argc, char** argv) {
    ks::test::TempDir temp;
    const std::string record = temp.file("record");
    qputenv("KS_STARTUP_TRACE", QByteArray::fromStdString(record));
    QApplication app(argc, argv);
    ks::traceStartup();

    Window first("first"), second("second");
    first.resize(100, 80);
    second.resize(100, 80);
    first.show();
    expect(QTest::qWaitForWindowExposed(&first), "the first window was not exposed");
    ks::traceStartupStep("between");
    second.show();
    expect(QTest::qWaitForWindowExposed(&second), "the second window was not exposed");
    // Later frames, and a window shown again, are not first frames.
    first.update();
    first.hide();
    first.show();
    expect(QTest::qWaitForWindowExposed(&first), "the first window was not exposed again");
    QTest::qWait(50);
    ks::traceStartupStep("ready");

    const std::vector<Line> lines = readRecord(record);
    expect(lines.size() == 4, "the record does not hold four lines");
    if (lines.size() == 4) {
        expect(lines[0].step == "frame first" && lines[1].step == "between" && lines[2].step == "frame second" &&
                   lines[3].step == "ready",
               "the record's lines are not the steps in the order they happened");
        expect(lines[0].at >= first.paintedAt && lines[2].at >= second.paintedAt,
               "a frame was recorded before its window was painted");
        expect(lines[0].at <= lines[1].at && lines[1].at <= lines[2].at && lines[2].at <= lines[3].at,
               "the record's times run backwards");
    }
    return failures == 0 ? 0 : 1;
}
