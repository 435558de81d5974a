#pragma once

#include "app/application.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/workspace.h"
#include "isolated_main.h"
#include "platform/scripted_platform.h"

#include <QAction>
#include <QObject>

#include <memory>

// The real program with a scripted platform, for tests that drive it as a user would. The class
// fonts are told apart by colour: text black, tags dark red, comments green and italic.
struct TestProgram {
    TestProgram();
    ~TestProgram();

    pw::ScriptedPlatform platform;
    pw::Application app{platform};

    pw::frmMDIMain &main() { return app.main(); }
    pw::Workspace &ws() { return app.workspace(); }
    pw::frmDoc *current() { return ws().current(); }
    pw::frmDoc *newDocument();
    // A document's menu item (or, without a document, the main window's) by objectName, and
    // triggering it: false if it is missing or disabled.
    QAction *item(pw::frmDoc *document, const QString &name);
    bool trigger(pw::frmDoc *document, const QString &name);
    QAction *button(const QString &key) { return main().button(key); }
    QStringList captions();
};

// Base of the test classes that drive the whole program: each test function gets a fresh one,
// without the page template, and a fresh folder for its files; all its windows are gone before the
// next one starts. A class with more to set up declares its own init() and cleanup() and calls
// these two from them.
class ProgramTest : public QObject
{
    Q_OBJECT

protected:
    TestProgram *program = nullptr;
    std::unique_ptr<QTemporaryDir> temp;
    pw::frmMDIMain &main() { return program->main(); }
    pw::Workspace &ws() { return program->ws(); }
    pw::ScriptedPlatform &platform() { return program->platform; }
    void startProgram();
    void endProgram();
    QString path(const QString &name) const { return temp->filePath(name); }
    // A file of the test's folder with these bytes: its path (empty when it can't be written), or
    // the document it opens as.
    QString write(const QString &name, const QByteArray &bytes);
    pw::frmDoc *opened(const QString &name, const QByteArray &bytes);
    // The boxes shown are count, the last with this text and style, titled with the program's name.
    void verifyMessage(const QString &text, int style, int count = 1);

protected Q_SLOTS:
    void init() { startProgram(); }
    void cleanup() { endProgram(); }
};

// The class font of each character of a surface's text, as 't' text, 'h' tag, 'c' comment, '?';
// a line end is '/'.
QString fontClasses(pw::EditingSurface &surface);

// A file's bytes ("<unreadable>" when it can't be read); writing a file whole.
QByteArray fileBytes(const QString &path);
bool writeFile(const QString &path, const QByteArray &bytes);

// What a long pass left behind when it ended: a status text, the wait cursor, the progress strip.
// Empty when it ended cleanly.
QString passLeftovers(pw::frmMDIMain &main);
