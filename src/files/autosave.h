#pragma once

#include <QObject>
#include <QPointer>
#include <QString>

#include <map>

class QTextDocument;
class QTimer;

namespace pw {

class EditingSurface;
class Workspace;
class frmDoc;

// The folder "Auto Saved Files" in the per-user data folder.
QString AutoSaveFolder();
// "AutoSaved." and the slot number in at least three digits: AutoSaved.001 for slot 1.
QString AutoSaveFileName(int slot);
// Writes a surface's text to path as UTF-8 with CR LF line ends, atomically; false with *error
// set when it could not.
bool WriteAutoSaveFile(const QString &path, const EditingSurface &surface, QString *error = nullptr);
// At a normal end: deletes every file of the folder.
void EmptyAutoSaveFolder();

// Autosave: while the option is on, every tenth tick of tmrAutoSave writes each open document to
// its file in the folder. The files belong to open documents only: closing one removes its file.
class AutoSave : public QObject
{
    Q_OBJECT

public:
    AutoSave(Workspace &workspace, QTimer &timer);

    // From here on the timer runs exactly while the option is on, however it changes. The start
    // calls it after the recovery, so nothing of this run writes over a file not yet read.
    void start();
    // The tick. While a pass or a box is busy it waits; the count goes on after.
    void tmrAutoSave_Timer();
    // One pass: every open document changed since its last write goes to its file. A failed
    // write is said once a run and tried again at the next pass.
    void AutoSavePass();
    // mnuOptionAutosave: flips the option.
    void ToggleAutoSave();
    // Files left in the folder by a run that did not end normally come back as untitled, dirty
    // documents, and are deleted once read. Returns the last one back, or none.
    frmDoc *RecoverAutoSavedFiles();

private:
    void forget(int slot);
    void setTimerRunning(bool on);
    bool needsWriting(int slot, QTextDocument *document, const QString &path);
    void tellFailure(const QString &reason);

    struct Written {
        QPointer<QTextDocument> document;
        bool stale = true;
    };

    Workspace &m_workspace;
    QTimer &m_timer;
    qint16 m_ticks = 0;
    bool m_started = false;
    bool m_tickWaiting = false;
    bool m_failureTold = false;
    // What each slot's file was last written from. A document unchanged since then is not written
    // again: its file already holds exactly its text.
    std::map<int, Written> m_written;
};

} // namespace pw
