#include "platform/file_handles.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pw {

namespace {

// What a lock call ended in: taken, refused because another open file holds a lock in the
// way, or not supported where the file lives (then files are held unlocked).
enum class LockResult { Taken, Conflict, Unsupported };

LockResult setLock(int fd, short type)
{
    struct flock fl = {};
    fl.l_type = type;
    fl.l_whence = SEEK_SET; // start 0, length 0: the whole file, also past its end
    int rc;
    do
        rc = ::fcntl(fd, F_OFD_SETLK, &fl);
    while (rc == -1 && errno == EINTR);
    if (rc == 0)
        return LockResult::Taken;
    return (errno == EAGAIN || errno == EACCES) ? LockResult::Conflict : LockResult::Unsupported;
}

// Whether any other open file holds a lock that a write lock would run into. Our own lock on
// this open file doesn't count.
bool othersHoldLock(int fd)
{
    struct flock fl = {};
    fl.l_type = F_WRLCK;
    fl.l_whence = SEEK_SET;
    if (::fcntl(fd, F_OFD_GETLK, &fl) != 0)
        return false;
    return fl.l_type != F_UNLCK;
}

ErrorCode openErrorCode(int error)
{
    switch (error) {
    case ENOENT:
        return ErrorCode::FileNotFound;
    case EACCES:
    case EPERM:
        return ErrorCode::PermissionDenied;
    default:
        return ErrorCode::PathFileAccess;
    }
}

// Opens a regular file for reading, read-write when wanted and allowed. A folder, a device or
// a pipe is refused, and opening never blocks on one.
ErrorCode openRegular(const QString &path, bool wantWritable, int &fd, bool &writable)
{
    fd = -1;
    writable = false;
    if (path.isEmpty())
        return ErrorCode::PathFileAccess;
    const QByteArray name = QFile::encodeName(path);
    constexpr int common = O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
    if (wantWritable && !isReadOnlyPath(path)) {
        fd = ::open(name.constData(), O_RDWR | common);
        writable = fd >= 0;
    }
    if (fd < 0)
        fd = ::open(name.constData(), O_RDONLY | common);
    if (fd < 0)
        return openErrorCode(errno);
    struct stat st = {};
    if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
        ::close(fd);
        fd = -1;
        return ErrorCode::PathFileAccess;
    }
    ::fcntl(fd, F_SETFL, ::fcntl(fd, F_GETFL) & ~O_NONBLOCK);
    return ErrorCode::None;
}

// Takes the file exclusively: a write lock where the file is open for writing, else a shared
// lock plus the check that no one else holds one.
bool takeExclusive(int fd, bool writable)
{
    if (writable)
        return setLock(fd, F_WRLCK) != LockResult::Conflict;
    if (setLock(fd, F_RDLCK) == LockResult::Conflict)
        return false;
    return !othersHoldLock(fd);
}

ErrorCode readAll(int fd, QByteArray &bytes)
{
    struct stat st = {};
    if (::fstat(fd, &st) != 0)
        return ErrorCode::PathFileAccess;
    bytes.resize(qsizetype(st.st_size));
    qsizetype done = 0;
    for (;;) {
        if (done == bytes.size())
            bytes.resize(done + 65536); // the file grew while being read
        const ssize_t n = ::pread(fd, bytes.data() + done, size_t(bytes.size() - done), off_t(done));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            bytes.clear();
            return ErrorCode::PathFileAccess;
        }
        if (n == 0)
            break;
        done += n;
    }
    bytes.truncate(done);
    return ErrorCode::None;
}

bool sameFile(int fd, const QString &path)
{
    struct stat held = {}, now = {};
    return ::fstat(fd, &held) == 0 && ::stat(QFile::encodeName(path).constData(), &now) == 0
           && held.st_dev == now.st_dev && held.st_ino == now.st_ino;
}

} // namespace

FileHandles::~FileHandles()
{
    closeAll();
}

FileHandles &FileHandles::instance()
{
    static FileHandles handles;
    return handles;
}

ErrorCode FileHandles::bind(int slot, const QString &path, bool lock, QByteArray *bytes)
{
    close(slot);
    Handle h;
    // Read-write only so that a write lock can be taken; nothing is ever written through it.
    ErrorCode error = openRegular(path, true, h.fd, h.writable);
    if (error != ErrorCode::None)
        return error;
    if (bytes) {
        if (!takeExclusive(h.fd, h.writable)) {
            ::close(h.fd);
            return ErrorCode::PermissionDenied;
        }
        error = readAll(h.fd, *bytes);
        if (error != ErrorCode::None) {
            ::close(h.fd);
            return error;
        }
    }
    // From exclusive (or nothing) to what a held file carries; a conversion on the same open
    // file, so the file is never free in between.
    if (setLock(h.fd, F_RDLCK) == LockResult::Conflict) {
        ::close(h.fd);
        return ErrorCode::PermissionDenied;
    }
    h.path = path;
    const int fd = h.fd;
    m_handles[slot] = h;
    if (lock && (!m_handles[slot].writable || setLock(fd, F_WRLCK) == LockResult::Conflict))
        return ErrorCode::PermissionDenied;
    m_handles[slot].locked = lock;
    return ErrorCode::None;
}

ErrorCode FileHandles::open(int slot, const QString &path, QByteArray *bytes)
{
    QByteArray scratch;
    return bind(slot, path, false, bytes ? bytes : &scratch);
}

ErrorCode FileHandles::hold(int slot, const QString &path, bool lock)
{
    return bind(slot, path, lock, nullptr);
}

ErrorCode FileHandles::rebind(int slot, const QString &newPath)
{
    const auto it = m_handles.find(slot);
    const QString target = newPath.isEmpty() && it != m_handles.end() ? it->second.path : newPath;
    if (target.isEmpty())
        return ErrorCode::PathFileAccess;
    if (it != m_handles.end() && sameFile(it->second.fd, target)) {
        it->second.path = target;
        return ErrorCode::None;
    }
    const bool wasLocked = it != m_handles.end() && it->second.locked;
    return bind(slot, target, wasLocked, nullptr);
}

ErrorCode FileHandles::lock(int slot)
{
    const auto it = m_handles.find(slot);
    if (it == m_handles.end())
        return ErrorCode::PathFileAccess;
    Handle &h = it->second;
    if (!h.writable || setLock(h.fd, F_WRLCK) == LockResult::Conflict)
        return ErrorCode::PermissionDenied;
    h.locked = true;
    return ErrorCode::None;
}

ErrorCode FileHandles::unlock(int slot)
{
    const auto it = m_handles.find(slot);
    if (it == m_handles.end())
        return ErrorCode::PathFileAccess;
    setLock(it->second.fd, F_RDLCK); // a downgrade of our own lock can't conflict
    it->second.locked = false;
    return ErrorCode::None;
}

ErrorCode FileHandles::lockAll(bool on)
{
    ErrorCode first = ErrorCode::None;
    for (const auto &[slot, handle] : m_handles) {
        const ErrorCode e = on ? lock(slot) : unlock(slot);
        if (first == ErrorCode::None)
            first = e;
    }
    return first;
}

void FileHandles::close(int slot)
{
    const auto it = m_handles.find(slot);
    if (it == m_handles.end())
        return;
    ::close(it->second.fd); // releases the open file's locks
    m_handles.erase(it);
}

void FileHandles::closeAll()
{
    for (const auto &[slot, handle] : m_handles)
        ::close(handle.fd);
    m_handles.clear();
}

bool FileHandles::isOpen(int slot) const
{
    return m_handles.count(slot) != 0;
}

bool FileHandles::isLocked(int slot) const
{
    const auto it = m_handles.find(slot);
    return it != m_handles.end() && it->second.locked;
}

QString FileHandles::path(int slot) const
{
    const auto it = m_handles.find(slot);
    return it == m_handles.end() ? QString() : it->second.path;
}

QList<int> FileHandles::heldSlots() const
{
    QList<int> held;
    for (const auto &[slot, handle] : m_handles)
        held.append(slot);
    return held;
}

ErrorCode readWholeFile(const QString &path, QByteArray &bytes, FileShare share)
{
    bytes.clear();
    int fd = -1;
    bool writable = false;
    ErrorCode error = openRegular(path, false, fd, writable);
    if (error != ErrorCode::None)
        return error;
    const bool free = share == FileShare::None
                      || (share == FileShare::Shared ? setLock(fd, F_RDLCK) != LockResult::Conflict
                                                     : takeExclusive(fd, writable));
    error = free ? readAll(fd, bytes) : ErrorCode::PermissionDenied;
    ::close(fd);
    return error;
}

ErrorCode tryExclusive(const QString &path)
{
    int fd = -1;
    bool writable = false;
    const ErrorCode error = openRegular(path, false, fd, writable);
    if (error != ErrorCode::None)
        return error;
    const bool free = takeExclusive(fd, writable);
    ::close(fd);
    return free ? ErrorCode::None : ErrorCode::PermissionDenied;
}

QString errorText(ErrorCode code)
{
    switch (code) {
    case ErrorCode::None:
        return QString();
    case ErrorCode::FileNotFound:
        return QStringLiteral("File not found");
    case ErrorCode::PermissionDenied:
        return QStringLiteral("Permission denied");
    case ErrorCode::PathFileAccess:
        return QStringLiteral("Path/File access error");
    case ErrorCode::InvalidPropertyValue:
        return QStringLiteral("Invalid property value");
    case ErrorCode::DuplicateKey:
        return QStringLiteral("Duplicate value in index, primary key, or relationship");
    case ErrorCode::Cancel:
        return QStringLiteral("Cancel was selected");
    }
    return QStringLiteral("Error %1").arg(int(code));
}

bool isReadOnlyPath(const QString &path)
{
    const QByteArray name = QFile::encodeName(path);
    struct stat st = {};
    if (::stat(name.constData(), &st) != 0)
        return false;
    if (!(st.st_mode & S_IWUSR))
        return true;
    return ::access(name.constData(), W_OK) != 0 && errno != ENOENT;
}

} // namespace pw
