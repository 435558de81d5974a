#include "files/autosave.h"

namespace pw {

QString AutoSaveFolder() { return {}; }
void tmrAutoSave_Timer() {}
void ToggleAutoSave() {}
void RecoverAutoSavedFiles() {}
void EmptyAutoSaveFolder() {}

} // namespace pw
