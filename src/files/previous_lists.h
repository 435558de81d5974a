#pragma once

#include <QDir>
#include <QString>

namespace pw {

// The Files list lives in the main window's ten mnuFilePrevious items (1 is the newest): each
// item's entry (its data()) is a full path, its caption the path shortened for the menu. Every
// document's menu copies them. PreviousEntries[PreviousKind::Files] always holds the entries of
// the visible items, so that the settings write what the menu shows.

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

// Puts a path on top of the list; one that is already there moves up.
void AddPreviousFile(const QString &path);
// Drops entry index (1 to 10), the ones below moving up.
void RemovePreviousFile(int index);
// Copies the main menu's items to every open document's menu.
void SyncDocumentMenus();
// Fills the main menu's items from the list the settings loaded, then SyncDocumentMenus. The
// list operations above load it first themselves when it has not been loaded yet, so a file
// opened at the start goes on top of the stored list.
void LoadPreviousFileMenus();
// The path of entry index, empty when the item is hidden.
QString PreviousFile(int index);

} // namespace pw
