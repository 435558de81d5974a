#pragma once

#include <QChar>
#include <QString>

#include <functional>

namespace pw {

class Workspace;
class frmDoc;

// Saves a document to its file; an untitled one first gets a name from the save dialog. False when nothing was written (cancelled, refused, failed): Dirty then stays, and so
// do the text and the caption.
//
// A failed write says "Permission Denied!" and why (read-only file or folder, full disk, folder
// gone). A Windows-1252 document that gained characters that code page can't hold is offered a
// save as UTF-8 instead; on No nothing is written.
bool SaveDocument(Workspace &workspace, frmDoc &document);
// mnuFileSaveAs: a document under a name chosen in the save dialog. To its own name it
// is a plain save; to another name the document follows the new file and the old one stays as
// it was. A name that another open document holds is refused, so two windows never share a file.
bool SaveDocumentAs(Workspace &workspace, frmDoc &document);

// The filter of the save dialog; entries 1 to 4 force an extension.
inline const QString SaveDialogFilter = QStringLiteral(
    "HTML (*.html)|*.html|HTM (*.htm)|*.htm|SHTML (*.shtml)|*.shtml|Text (*.txt)|*.txt|Any (*.*)|*.*");
// A name with the extension a filter entry of the save dialog forces (1 html, 2 htm, 3 shtml,
// 4 txt; any other index keeps it); only the last path component is touched. A name without an
// extension gets one; a leading dot (".page") is part of the name, not an extension.
QString ForceExtension(const QString &fileName, int filterIndex, QChar separator);
// The folder the save dialog starts in: a path less its last component, the separator kept
// ("C:\site\page.html" gives "C:\site\"); empty when there is no separator.
QString PathLessLastComponent(const QString &path, QChar separator);
// The filter entry that keeps a name's own extension (page.htm gives 2); 5 (Any) for others.
int FilterIndexForName(const QString &fileName);

// Enters a newly named file in the site map, when that option is on. Files can't reach the site
// map, so the site map installs what does the entering; until it does, nothing happens.
void AddToSiteMap(Workspace &workspace, const QString &path);
using SiteMapEntry = std::function<void(const QString &path)>;
void SetSiteMapEntry(SiteMapEntry entry);

// The question before a changed document closes. unloadMode 0 or 1 (the user or the program
// closes this window) offers Yes, No and Cancel; a shutdown offers Yes and No only.
//
// Yes makes the document current and saves it. When Yes was answered but nothing got saved (the
// save dialog cancelled, a refused replace, a failed write), the window never closes silently:
// with Cancel on offer the close is cancelled and the document stays open; at a shutdown, where
// nothing may keep the window, the question comes again until the document is saved or the user
// answers No.
void Form_QueryUnload(Workspace &workspace, frmDoc &document, bool *cancel, int unloadMode);

} // namespace pw
