#pragma once

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

// mnuFileOpen, imgFileOpen: the open dialog; nothing happens when it is cancelled. A file held
// elsewhere gives "Permission denied!", any other failure the platform's reason.
frmDoc *OpenFromDialog(Workspace &workspace);
// The start with a file on the command line.
frmDoc *OpenFromCommandLine(Workspace &workspace, const QString &commandLine);
// A path handed over by a second start of the program.
frmDoc *OpenFromHandOver(Workspace &workspace, const QString &path);
// mnuFilePrevious(index): entry index of the previous-file list; a missing file drops it.
frmDoc *OpenPrevious(Workspace &workspace, int index);
// An autosaved file as a new, dirty document that holds no file, named untitledName.
frmDoc *RecoverFile(Workspace &workspace, const QString &path, const QString &untitledName);
// mnuFileImport: a file's text at the caret of a document, uncoloured; the document keeps its name
// and becomes dirty. Holds nothing: only a locked file is refused.
void ImportFile(Workspace &workspace, frmDoc &document);
// Collects the names of the anchors of a document into its LocalNames (at most 20).
void FindLocalNames(Workspace &workspace, frmDoc &document);

} // namespace pw
