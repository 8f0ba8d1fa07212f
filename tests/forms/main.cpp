#include "window_launcher.h"

#include <cstring>

// Runs the test class named by the first argument, or every class when none is named; the rest of the
// arguments go to QtTest.
int main(int argc, char** argv) {
    QApplication app(argc, argv);
    const char* only = argc > 1 && argv[1][0] != '-' ? argv[1] : nullptr;
    if (only) {
        argv[1] = argv[0];
        ++argv;
        --argc;
    }
    int failures = 0, ran = 0;
    for (const auto& testClass : ks::test::testClasses()) {
        if (only && std::strcmp(only, testClass.name) != 0) continue;
        std::unique_ptr<QObject> tests(testClass.make());
        failures += QTest::qExec(tests.get(), argc, argv);
        ++ran;
    }
    return failures == 0 && ran > 0 ? 0 : 1;
}
