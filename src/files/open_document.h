#pragma once

#include <QString>

#include <functional>

namespace pw {

class frmDoc;

// The ways a file becomes a document. All share one load sequence: a slot and its window, the
// file read and held under the slot's number, the colouring pass, the anchor names, the
// previous-file list. After any failure no half-filled window stays and the slot is free. A file
// of a megabyte or more shows the progress strip while it is decoded, and Escape there drops it.

// The path as the platform writes it in full: absolute, relative to the starting folder, with
// symlinks kept.
QString LongPathOf(const QString &path);

// mnuFileOpen, imgFileOpen: the open dialog; nothing happens when it is cancelled. A file held
// elsewhere gives "Permission denied!", any other failure the platform's reason.
frmDoc *OpenFromDialog();
// The start with a file on the command line: the file goes into slot 1, which must be free.
// beforeMessage runs before an error is shown (the start hides its splash there).
frmDoc *OpenFromCommandLine(const QString &commandLine, const std::function<void()> &beforeMessage = {});
// A path handed over by a second start of the program.
frmDoc *OpenFromHandOver(const QString &path);
// A file chosen in the site map.
frmDoc *OpenFromSiteMap(const QString &path);
// mnuFilePrevious(index): entry index of the previous-file list; a missing file drops it.
frmDoc *OpenPrevious(int index);
// An autosaved file as a new, dirty document that holds no file; the caller sets its caption.
frmDoc *RecoverFile(const QString &path);
// mnuFileImport: a file's text at the caret of the current document, uncoloured; the document
// keeps its name and becomes dirty. Holds nothing: only a locked file is refused.
void ImportFile();
// Collects the names of the anchors of slot's document into LocalNames (at most 20).
void FindLocalNames(int slot);

} // namespace pw
