#include "launcher_fixture.h"

int main(int argc, char** argv) {
    QApplication app(argc, argv);
    int failures = 0;
    for (const auto& make : ks::test::testClasses()) {
        std::unique_ptr<QObject> tests(make());
        failures += QTest::qExec(tests.get(), argc, argv);
    }
    return failures == 0 ? 0 : 1;
}
