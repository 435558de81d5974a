#pragma once

#include <QString>

namespace pw {

class Platform;

// Where the association of the HTML file types lives for this user.
struct AssociationFiles {
    QString desktopFile; // <data>/applications/pagewright.desktop
    QString mimeApps;    // <config>/mimeapps.list
    QString mimePackage; // <data>/mime/packages/pagewright.xml
    QString icon;        // <data>/icons/hicolor/scalable/apps/pagewright.svg
};
AssociationFiles associationFiles();

// Makes this program open .htm, .html and .shtml for the user: a desktop entry that starts this very
// binary, the default for text/html, a glob for .shtml and the icon. Overwrites an earlier association
// and keeps the other defaults. Refreshes the desktop's caches when their tools are installed.
// Reports nothing; false when a file could not be written.
bool AssociateFiles(Platform &platform);

} // namespace pw
