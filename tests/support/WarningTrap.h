#pragma once

#include <QApplication>
#include <QStringList>
#include <QTest>
#include <QtGlobal>

/// While one lives, collects the warnings of Qt's and of the product's, each with the test function
/// in which it came. runTests() keeps one for the whole run of a test program.
class WarningTrap final
{
public:
    WarningTrap();
    ~WarningTrap();
    WarningTrap(const WarningTrap&) = delete;
    WarningTrap& operator=(const WarningTrap&) = delete;

    /// Returns the warnings of the running test function since the last time. They count as
    /// expected. Any thread.
    static QStringList take();

private:
    QtMessageHandler m_previous;
};

/// Runs the test functions of `test` like Qt Test's own qExec(). The run fails too when a warning
/// came that nobody took; the output names its test function.
int runTests(QObject& test, int argc, char** argv);

/// In the place of QTEST_MAIN, QTEST_GUILESS_MAIN and QTEST_APPLESS_MAIN.
#define TSA_TEST_MAIN(TestClass) TSA_TEST_MAIN_WITH(TestClass, QApplication application(argc, argv))
#define TSA_GUILESS_TEST_MAIN(TestClass) \
    TSA_TEST_MAIN_WITH(TestClass, QCoreApplication application(argc, argv))
#define TSA_APPLESS_TEST_MAIN(TestClass) TSA_TEST_MAIN_WITH(TestClass, static_cast<void>(0))

#define TSA_TEST_MAIN_WITH(TestClass, createApplication) \
    int main(int argc, char** argv) \
    { \
        createApplication; \
        QCoreApplication::setAttribute(Qt::AA_Use96Dpi); \
        QTEST_SET_MAIN_SOURCE_PATH \
        TestClass test; \
        return runTests(test, argc, argv); \
    }
