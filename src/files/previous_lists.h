#pragma once

#include <QDir>
#include <QString>

#include <functional>

class QAction;

namespace pw {

class Workspace;

// The Files list is the workspace's previousFiles(), newest first, at most ten full paths. Every
// File menu shows it in its ten mnuFilePrevious items, each captioned with the path shortened for
// the menu and holding the full path in its data(); the menus follow the list as it changes.

constexpr int PreviousFileCount = 10;
// All callers shorten to this many characters.
constexpr int PreviousCaptionLimit = 40;

// A path of at most limit characters stands as it is; a longer one shows as its head, "..." and
// its tail from the first separator at or after position length - (limit - 3 - head length),
// counted from 1; with no separator there, nothing follows the dots. The head is:
//  - with a drive letter ("C:\web\..."), the first three characters, so "C:\...\site\page.htm";
//  - otherwise the leading separators and the first folder with its separator: "/home/" for
//    "/home/ann/...", "\\server\" for "\\server\share\..."; when that would take more than half
//    of limit, only the leading separators ("/"). So "/home/.../site/page.html".
// The result is at most limit + 1 characters long, as the drive rule gives.
QString ShortenPathForMenu(const QString &path, int limit, QChar separator = QDir::separator());

// The list with path on top: one already there moves up, so nothing else falls off; two paths that
// shorten alike count as one.
QStringList WithPreviousFile(const QStringList &entries, const QString &path);
// The list without entry index (1 to 10), the ones below moving up.
QStringList WithoutPreviousFile(const QStringList &entries, int index);

// Puts a path on top of the workspace's list.
void AddPreviousFile(Workspace &workspace, const QString &path);
// Drops entry index (1 to 10).
void RemovePreviousFile(Workspace &workspace, int index);
// The path of entry index, empty when there is none.
QString PreviousFile(const Workspace &workspace, int index);

// Shows entries in one File menu: item(name) finds "mnuFilePrevious(1)" to "(10)" and the separator
// "mnuFileSep1" above them.
void ShowPreviousFiles(const std::function<QAction *(const QString &name)> &item, const QStringList &entries);

} // namespace pw
