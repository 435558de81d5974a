#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

namespace pw {

// What stands on disk for a reference of a page, seen from the page's folder.
enum class LocalStatus {
    NotLocal,    // a URL with a scheme, or a page without a folder
    Found,
    Missing,
    CaseDiffers, // a file of that name in other letter case: found here, not on a case-sensitive server
};

// Resolves a scheme-less URL ("pics/a.gif#x", "../index.html?q") against the folder of documentPath
// and looks for it; *actual gets the path that stands on disk (or the one looked for when missing).
// listings, when given, keeps the folders read for case matches, for the next call.
using FolderListings = QHash<QString, QStringList>;
LocalStatus CheckLocalReference(const QString &documentPath, const QString &url, QString *actual = nullptr,
                                FolderListings *listings = nullptr);

} // namespace pw
