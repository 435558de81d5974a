#pragma once

#include <QString>

namespace pw {

// The folder "Auto Saved Files" in the per-user data folder.
QString AutoSaveFolder();
// The tick of tmrAutoSave: every tenth writes each open document to the folder.
void tmrAutoSave_Timer();
// mnuOptionAutosave: flips the option; the timer runs exactly while it is on.
void ToggleAutoSave();
// At the start: files left in the folder by a run that did not end normally come back as
// untitled, dirty documents.
void RecoverAutoSavedFiles();
// At a normal end: deletes every file of the folder.
void EmptyAutoSaveFolder();

} // namespace pw
