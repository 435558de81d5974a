#pragma once

#include <QString>

namespace pw {

class frmDoc;

// Saves the current document to its file; an untitled one first gets a name from the save
// dialog. False when nothing was written (cancelled, refused, failed): Dirty then stays.
bool SaveDocument();
// mnuFileSaveAs: the current document under a name chosen in the save dialog.
bool SaveDocumentAs();
// A name with the extension a filter entry of the save dialog forces (1 html, 2 htm, 3 shtml,
// 4 txt; any other index keeps it); only the last path component is touched.
QString ForceExtension(const QString &fileName, int filterIndex, QChar separator);
// Enters a newly named file in the site map, when that option is on.
void AddToSiteMap(const QString &path);
// The question before a changed document closes. unloadMode 0 or 1 (the user or the program
// closes this window) offers Cancel; a shutdown offers Yes and No only.
void Form_QueryUnload(frmDoc &document, bool *cancel, int unloadMode);

} // namespace pw
