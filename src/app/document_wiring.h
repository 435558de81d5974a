#pragma once

namespace pw {

class frmDoc;
class frmMDIMain;

// Connects a new document window's events to the operations that handle them: its surface's
// change, key, selection, mouse and focus events, its closing questions and its unloading.
void WireDocument(frmMDIMain &main, frmDoc &document);

} // namespace pw
