#pragma once

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

// A test main that points the home and the XDG homes into a temporary directory before the
// application starts, so nothing a test writes reaches the user's own settings or desktop.
#define PW_ISOLATED_TEST_MAIN(TestClass)                                                                  \
    int main(int argc, char **argv)                                                                       \
    {                                                                                                     \
        QTemporaryDir home;                                                                               \
        if (!home.isValid())                                                                              \
            return 1;                                                                                     \
        qputenv("HOME", home.path().toLocal8Bit());                                                       \
        qputenv("XDG_CONFIG_HOME", (home.path() + QStringLiteral("/config")).toLocal8Bit());              \
        qputenv("XDG_DATA_HOME", (home.path() + QStringLiteral("/data")).toLocal8Bit());                  \
        QApplication app(argc, argv);                                                                     \
        TestClass test;                                                                                   \
        return QTest::qExec(&test, argc, argv);                                                           \
    }
