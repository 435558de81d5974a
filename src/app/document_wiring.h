#pragma once

namespace pw {

class Workspace;
class frmDoc;

// Connects a new document window's events to the operations that handle them: the standard
// editing keys, its surface's key, change, mouse and focus events, its closing question and its
// unloading. The caret, selection and undo state reach the buttons and panels through
// ActionStates.
void WireDocument(Workspace &workspace, frmDoc &document);

} // namespace pw
