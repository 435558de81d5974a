#pragma once

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

// The main of every test: the home, the XDG homes and the runtime folder point into a temporary
// directory before the application starts, so nothing a test writes reaches the user's own
// settings, desktop or running program.
#define PW_TEST_MAIN(TestClass)                                                                           \
    int main(int argc, char **argv)                                                                       \
    {                                                                                                     \
        QTemporaryDir home;                                                                               \
        if (!home.isValid())                                                                              \
            return 1;                                                                                     \
        const QString root = home.path();                                                                 \
        for (const char *dir : {"config", "data", "cache", "runtime"})                                    \
            QDir(root).mkpath(QLatin1String(dir));                                                        \
        QFile::setPermissions(root + QStringLiteral("/runtime"),                                          \
                              QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);  \
        qputenv("HOME", root.toLocal8Bit());                                                              \
        qputenv("XDG_CONFIG_HOME", (root + QStringLiteral("/config")).toLocal8Bit());                     \
        qputenv("XDG_DATA_HOME", (root + QStringLiteral("/data")).toLocal8Bit());                         \
        qputenv("XDG_CACHE_HOME", (root + QStringLiteral("/cache")).toLocal8Bit());                       \
        qputenv("XDG_RUNTIME_DIR", (root + QStringLiteral("/runtime")).toLocal8Bit());                    \
        QApplication app(argc, argv);                                                                     \
        TestClass test;                                                                                   \
        return QTest::qExec(&test, argc, argv);                                                           \
    }
