#include "files/text_file.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pw {

namespace {

SaveResult failed(ErrorCode code, SaveFailure failure, const QString &message)
{
    return {code, failure, message};
}

SaveResult failedWithErrno(int error, const QString &path, const QString &folder)
{
    switch (error) {
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return failed(ErrorCode::PathFileAccess, SaveFailure::DiskFull, QStringLiteral("The disk is full."));
    case ENOENT:
    case ENOTDIR:
        return failed(ErrorCode::PathFileAccess, SaveFailure::FolderMissing,
                      QStringLiteral("The folder %1 doesn't exist.").arg(folder));
    case EACCES:
    case EPERM:
    case EROFS:
        return failed(ErrorCode::PermissionDenied, SaveFailure::ReadOnlyFolder,
                      QStringLiteral("The folder %1 can't be written to.").arg(folder));
    default:
        return failed(ErrorCode::PathFileAccess, SaveFailure::Other,
                      QStringLiteral("%1 could not be saved: %2.")
                          .arg(path, QString::fromLocal8Bit(std::strerror(error))));
    }
}

// Whether another copy of the program has the file locked (Lock Files).
bool lockedElsewhere(const QByteArray &name)
{
    const int fd = ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (fd < 0)
        return false;
    struct flock fl = {};
    fl.l_type = F_RDLCK;
    fl.l_whence = SEEK_SET;
    const bool locked = ::fcntl(fd, F_OFD_GETLK, &fl) == 0 && fl.l_type != F_UNLCK;
    ::close(fd);
    return locked;
}

bool writeAll(int fd, const QByteArray &bytes)
{
    const char *p = bytes.constData();
    qsizetype left = bytes.size();
    while (left > 0) {
        const ssize_t n = ::write(fd, p, size_t(left));
        if (n < 0) {
            if (errno == EINTR)
                continue;
            return false;
        }
        p += n;
        left -= n;
    }
    return true;
}

} // namespace

SaveResult saveTextFile(const QString &path, const QString &text, const FileFormat &format)
{
    qsizetype bad = -1;
    const QByteArray bytes = encodeText(text, format, &bad);
    if (bad >= 0) {
        const int line = int(QStringView(text).left(bad).count(QLatin1String("\r\n"))) + 1;
        const uint code = QStringView(text).mid(bad).toUcs4().value(0);
        return failed(ErrorCode::PathFileAccess, SaveFailure::Unencodable,
                      QStringLiteral("The text holds a character that %1 can't store "
                                     "(U+%2 on line %3). Save it as UTF-8 to keep it.")
                          .arg(encodingName(format.encoding))
                          .arg(QString::number(code, 16).toUpper().rightJustified(4, QLatin1Char('0')))
                          .arg(line));
    }

    // Through symlinks to the file they name; the links stay as they are.
    QFileInfo info(path);
    for (int depth = 0; info.isSymLink(); ++depth) {
        if (depth == 40)
            return failedWithErrno(ELOOP, path, info.absolutePath());
        info.setFile(info.symLinkTarget());
    }
    const QString target = info.absoluteFilePath();
    const QString folder = info.absolutePath();
    const QByteArray targetName = QFile::encodeName(target);
    const QByteArray folderName = QFile::encodeName(folder);

    struct stat dirStat = {};
    if (::stat(folderName.constData(), &dirStat) != 0)
        return failedWithErrno(errno == EACCES ? EACCES : ENOENT, path, folder);
    if (!S_ISDIR(dirStat.st_mode))
        return failedWithErrno(ENOTDIR, path, folder);

    struct stat old = {};
    const bool exists = ::stat(targetName.constData(), &old) == 0;
    if (exists) {
        if (!S_ISREG(old.st_mode))
            return failed(ErrorCode::PathFileAccess, SaveFailure::NotAFile,
                          QStringLiteral("%1 is not a file.").arg(path));
        if (isReadOnlyPath(target))
            return failed(ErrorCode::PermissionDenied, SaveFailure::ReadOnlyFile,
                          QStringLiteral("The file %1 is read-only.").arg(path));
        if (lockedElsewhere(targetName))
            return failed(ErrorCode::PermissionDenied, SaveFailure::LockedFile,
                          QStringLiteral("The file %1 is locked by another program.").arg(path));
    }
    if (isReadOnlyPath(folder))
        return failedWithErrno(EACCES, path, folder);

    // The temporary file is hidden, so that a site walk meanwhile skips it. Created 0666 less
    // the umask, as any new file; an old file's mode is put on before the rename.
    QByteArray tempName;
    int fd = -1;
    for (int attempt = 0; fd < 0 && attempt < 100; ++attempt) {
        tempName = folderName + "/." + QFile::encodeName(info.fileName()) + '.'
                   + QByteArray::number(QRandomGenerator::global()->generate(), 36);
        fd = ::open(tempName.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, exists ? 0600 : 0666);
        if (fd < 0 && errno != EEXIST)
            return failedWithErrno(errno, path, folder);
    }
    if (fd < 0)
        return failedWithErrno(EEXIST, path, folder);

    int error = writeAll(fd, bytes) ? 0 : errno;
    if (error == 0 && exists) {
        if (old.st_uid != ::geteuid() || old.st_gid != ::getegid()) {
            if (::fchown(fd, old.st_uid, old.st_gid) != 0) {
                // Not allowed to give it away: it keeps our owner, as with any editor.
            }
        }
        ::fchmod(fd, old.st_mode & 07777);
    }
    if (error == 0 && ::fsync(fd) != 0)
        error = errno;
    if (::close(fd) != 0 && error == 0)
        error = errno;
    if (error == 0 && ::rename(tempName.constData(), targetName.constData()) != 0)
        error = errno;
    if (error != 0) {
        ::unlink(tempName.constData());
        return failedWithErrno(error, path, folder);
    }
    // Make the rename itself durable.
    const int dirFd = ::open(folderName.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (dirFd >= 0) {
        ::fsync(dirFd);
        ::close(dirFd);
    }
    return {};
}

SaveResult saveDocumentFile(FileHandles &handles, int slot, const QString &path, const QString &text,
                            const FileFormat &format, bool lockNew)
{
    const bool held = handles.isOpen(slot);
    const bool wasLocked = handles.isLocked(slot);
    // Our own write lock would stop the save like anyone else's.
    if (wasLocked)
        handles.unlock(slot);
    const SaveResult result = saveTextFile(path, text, format);
    if (!result.ok()) {
        if (wasLocked)
            handles.lock(slot);
        return result;
    }
    if (held) {
        handles.rebind(slot, path);
        if (wasLocked)
            handles.lock(slot);
    } else {
        handles.hold(slot, path, lockNew);
    }
    return result;
}

ReadResult openDocumentFile(FileHandles &handles, int slot, const QString &path,
                            const DecodeProgress &progress)
{
    ReadResult result;
    QByteArray bytes;
    result.error = handles.open(slot, path, &bytes);
    if (result.error != ErrorCode::None)
        return result;
    result.decoded = decodeText(bytes, progress);
    if (result.decoded.cancelled)
        handles.close(slot);
    return result;
}

ReadResult readTextFile(const QString &path, FileShare share, const DecodeProgress &progress)
{
    ReadResult result;
    QByteArray bytes;
    result.error = readWholeFile(path, bytes, share);
    if (result.error == ErrorCode::None)
        result.decoded = decodeText(bytes, progress);
    return result;
}

} // namespace pw
