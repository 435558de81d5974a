#pragma once

#include "app/application.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "platform/scripted_platform.h"

#include <QAction>
#include <QObject>

// The real program with a scripted platform, for tests that drive it as a user would.
struct TestProgram {
    TestProgram();
    ~TestProgram();

    pw::ScopedScriptedPlatform platform;
    pw::Application app;

    pw::frmMDIMain &main() { return app.main(); }
    pw::frmDoc *current() { return main().slots().current(); }
    pw::frmDoc *newDocument();
    // Triggers a document's menu item by objectName; fails the test if it is missing or disabled.
    bool trigger(pw::frmDoc *document, const QString &item);
    QStringList captions();
};

// Base of the test classes that drive the whole program: each test function gets a fresh one,
// without the page template, and all its windows are gone before the next one starts. A class
// with more to set up declares its own init() and cleanup() and calls these two from them.
class ProgramTest : public QObject
{
    Q_OBJECT

protected:
    TestProgram *program = nullptr;
    pw::frmMDIMain &main() { return program->main(); }
    void startProgram();
    void endProgram();

protected Q_SLOTS:
    void init() { startProgram(); }
    void cleanup() { endProgram(); }
};

// The class font of each character of a surface's text, as 't' text, 'h' tag, 'c' comment, '?'.
QString fontClasses(pw::EditingSurface &surface);
