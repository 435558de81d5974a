#pragma once

#include <QString>

namespace pw {

class EditingSurface;
class frmMDIMain;

// The folder "Auto Saved Files" in the per-user data folder.
QString AutoSaveFolder();
// "AutoSaved." and the slot number in at least three digits: AutoSaved.001 for slot 1.
QString AutoSaveFileName(int slot);
// The tick of tmrAutoSave: every tenth writes each open document to the folder.
void tmrAutoSave_Timer();
// One pass: every open document written to its file in the folder, errors ignored.
void AutoSavePass();
// Writes a surface's text to path as UTF-8 with CR LF line ends, atomically.
bool WriteAutoSaveFile(const QString &path, const EditingSurface &surface);
// mnuOptionAutosave: flips the option; the timer runs exactly while it is on.
void ToggleAutoSave();
// Connects the main window's timer to the tick and keeps it running exactly while the option
// is on, however the option changes (the settings read at the start included).
void BindAutoSaveTimer(frmMDIMain &main);
// At the start: files left in the folder by a run that did not end normally come back as
// untitled, dirty documents.
void RecoverAutoSavedFiles();
// At a normal end: deletes every file of the folder.
void EmptyAutoSaveFolder();

} // namespace pw
