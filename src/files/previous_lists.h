#pragma once

#include <QDir>
#include <QString>

namespace pw {

// The Files list lives in the main window's ten mnuFilePrevious items (1 is the newest): each
// item's entry is a full path, its caption the path shortened for the menu. Every document's menu
// copies them. PreviousEntries[PreviousKind::Files] always holds the entries of the visible items,
// so that the settings write what the menu shows.

// A path of at most limit characters as it is; a longer one as its head, "..." and its tail from
// a folder boundary.
QString ShortenPathForMenu(const QString &path, int limit, QChar separator = QDir::separator());

// Puts a path on top of the list; one that is already there moves up.
void AddPreviousFile(const QString &path);
// Drops entry index (1 to 10), the ones below moving up.
void RemovePreviousFile(int index);
// Copies the main menu's items to every open document's menu.
void SyncDocumentMenus();
// Fills the main menu's items from the list the settings loaded, then SyncDocumentMenus.
void LoadPreviousFileMenus();
// The path of entry index, empty when the item is hidden.
QString PreviousFile(int index);

} // namespace pw
