#pragma once

#include "platform/error_codes.h"

#include <QByteArray>
#include <QList>
#include <QString>

#include <map>

namespace pw {

// How a one-off read of a file shares it with the handles that hold it.
enum class FileShare {
    Exclusive, // fails while any handle holds the file, here or in another copy of the program
    Shared,    // fails only while a handle has the file locked (Lock Files)
    None,      // asks no lock at all
};

// Document files held open by slot number: the file of slot n is file number n.
//
// Holding rests on open-file-description locks (fcntl F_OFD_SETLK), which belong to the open
// file, not to the process, so two handles of this process conflict just as two processes do.
// A held file carries a shared lock; a first read asks for the file exclusively, so a file held
// by another document here or by another copy of the program can't be opened twice; Lock Files
// turns the shared lock into a write lock on the whole file. The locks are advisory, as all locks
// on Linux: every copy of this program honours them, other programs may not. On a file system
// without lock support files are held unlocked.
//
// Handles are opened close-on-exec, so a program started from here (the browser test) never
// inherits a lock and keeps a file held after its document has closed.
class FileHandles
{
public:
    FileHandles() = default;
    ~FileHandles();
    FileHandles(const FileHandles &) = delete;
    FileHandles &operator=(const FileHandles &) = delete;

    // Opens a document's file: reads it whole into *bytes (when given) with the file taken
    // exclusively, then the slot holds it with a shared lock, without a moment in which it is
    // free. A handle the slot held before is closed first. FileNotFound for a missing file,
    // PermissionDenied for a file held elsewhere or not readable, PathFileAccess for a folder,
    // a device or a broken path.
    ErrorCode open(int slot, const QString &path, QByteArray *bytes = nullptr);

    // Takes a handle on a file without reading it (a document's first save under a name).
    // The slot's old handle, if any, is closed first; lock puts the write lock on at once (when
    // that fails the file is still held, shared, and PermissionDenied comes back).
    ErrorCode hold(int slot, const QString &path, bool lock = false);

    // After a save replaced the file by a rename, the handle still holds the old, unlinked
    // file: binds the slot to what now stands at its path (or at newPath) and locks it as
    // before. Nothing happens when the file is still the one held.
    ErrorCode rebind(int slot, const QString &newPath = QString());

    // Lock Files: a write lock on the whole file, and back to the shared lock. Locking a file
    // this program may not write (or a read-only one) gives PermissionDenied and keeps the
    // shared lock.
    ErrorCode lock(int slot);
    ErrorCode unlock(int slot);
    // ToggleLockFiles: every held handle at once. Returns the first failure, none stops it.
    ErrorCode lockAll(bool on);

    void close(int slot);
    void closeAll();

    bool isOpen(int slot) const;
    bool isLocked(int slot) const;
    QString path(int slot) const; // empty when the slot holds nothing
    QList<int> heldSlots() const;

    // The table the program's documents use.
    static FileHandles &instance();

private:
    struct Handle {
        int fd = -1;
        QString path;
        bool writable = false; // opened read-write, so a write lock can be taken
        bool locked = false;
    };

    ErrorCode bind(int slot, const QString &path, bool lock, QByteArray *bytes);

    std::map<int, Handle> m_handles;
};

// Reads a whole file once, without holding it (an import, a recovered autosave file).
ErrorCode readWholeFile(const QString &path, QByteArray &bytes, FileShare share);
// Opens a file for exclusive use and closes it again, reading nothing: PermissionDenied while a
// handle holds it, here or in another copy of the program.
ErrorCode tryExclusive(const QString &path);

// The platform's text for an error code, for messages that show it.
QString errorText(ErrorCode code);

// A file or folder whose mode has no write bit for its owner counts as read-only, even for
// root, as in other careful editors; otherwise access(2) decides.
bool isReadOnlyPath(const QString &path);

} // namespace pw
