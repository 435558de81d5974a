#pragma once

namespace pw {

class Workspace;
class frmDoc;

// mnuOptionLockFiles: flips the option and locks or unlocks every open document's file at once.
void ToggleLockFiles(Workspace &workspace);
// The file side of closing a document: unlock, the closing stamp pass where it applies, close
// the handle. Errors are ignored: the window is closing in any case.
void CloseDocumentFile(Workspace &workspace, frmDoc &document);

} // namespace pw
