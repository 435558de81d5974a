#pragma once

#include "platform/file_format.h"

#include <QString>

namespace pw {

class Workspace;
class frmDoc;

// The ways a file becomes a document. All share one load sequence: a slot and its window, the
// file read and held under the slot's number, the colouring pass, the anchor names, the
// previous-file list. After any failure no half-filled window stays and the slot is free. A file
// of a megabyte or more shows the progress strip while it is decoded, and Escape there drops it.

// The path as the platform writes it in full: absolute, relative to the starting folder, with
// symlinks kept.
QString LongPathOf(const QString &path);

// The open document that holds path's file (through any symbolic link), or none.
frmDoc *OpenDocumentOf(Workspace &workspace, const QString &path);

// mnuFileOpen, imgFileOpen: the open dialog; nothing happens when it is cancelled. A file held
// elsewhere gives "Permission denied!", any other failure the platform's reason.
// In every way in, a file that is open already comes to the front, a folder is refused and a file
// that doesn't look like text is opened only when the user says so.
frmDoc *OpenFromDialog(Workspace &workspace);
// The start with a file on the command line.
frmDoc *OpenFromCommandLine(Workspace &workspace, const QString &commandLine);
// A path handed over by a second start of the program.
frmDoc *OpenFromHandOver(Workspace &workspace, const QString &path);
// A file chosen in the site map (its Edit item, a double click).
frmDoc *OpenFromSiteMap(Workspace &workspace, const QString &path);
// mnuFilePrevious(index): entry index of the previous-file list; a missing file drops it.
frmDoc *OpenPrevious(Workspace &workspace, int index);
// An autosaved file as a new, dirty document that holds no file, named untitledName.
frmDoc *RecoverFile(Workspace &workspace, const QString &path, const QString &untitledName);
// mnuFileImport: a file's text at the caret of a document, uncoloured; the document keeps its name
// and becomes dirty. Holds nothing: only a locked file is refused.
void ImportFile(Workspace &workspace, frmDoc &document);
// mnuFileEncoding(index): the document's file read again in another encoding, which its saves then
// keep. Asks first when the document has changed; bytes not valid in the encoding change nothing.
void ReopenWithEncoding(Workspace &workspace, frmDoc &document, TextEncoding encoding);
// Collects the names of the anchors of a document into its LocalNames (at most 20). `walked` is
// the document's text when the caller holds it (a colouring pass just walked it), else null.
void FindLocalNames(Workspace &workspace, frmDoc &document, QString walked = {});

} // namespace pw
