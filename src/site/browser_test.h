#pragma once

#include <QString>

class QWidget;

namespace pw {

class Workspace;

// The name a browser goes by: its program file's name up to its last ".", the first letter in
// upper case ("/opt/web-2.1/bin/surfer" gives "Surfer", "navigate.exe" "Navigate").
QString BrowserDisplayName(const QString &path);

// mnuOptionSelectBrowser: the open dialog in /usr/bin; the file chosen becomes BrowserPath.
void SelectBrowser(Workspace &workspace);

// imgTest: the current document in the chosen browser. A dirty document is saved first; its file
// is let go while the browser reads it and taken back afterwards. A browser that is running (a
// process of this user runs its program) takes the file; otherwise it is started with it. What
// happens goes into a log, shown in the Error Log over logParent when something failed.
void TestInBrowser(Workspace &workspace, QWidget *logParent);

} // namespace pw
