#include "files/text_file.h"

#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace pw {

namespace {

constexpr qsizetype kChunk = 1 << 20;

// 0x80 to 0x9F of Windows-1252; the five unassigned bytes stand for the C1 control of the same
// number, so that any byte string survives decoding and encoding.
constexpr char16_t kHigh1252[32] = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178,
};

// The byte for a character in Windows-1252, or -1.
int to1252(char16_t c)
{
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF))
        return c;
    for (int i = 0; i < 32; ++i) {
        if (kHigh1252[i] == c)
            return 0x80 + i;
    }
    return -1;
}

// Turns every line end into CR LF while counting the kinds; a CR at the end of one chunk and an
// LF at the start of the next are one CR LF.
class LineEndNormalizer
{
public:
    explicit LineEndNormalizer(QString &out) : m_out(out) {}

    void append(const QChar *p, qsizetype n)
    {
        const QChar *end = p + n;
        while (p < end) {
            if (m_pendingCr) {
                m_pendingCr = false;
                if (*p == u'\n') {
                    --m_cr;
                    ++m_crlf;
                    ++p;
                    continue;
                }
            }
            const QChar *q = p;
            while (q < end && *q != u'\r' && *q != u'\n')
                ++q;
            m_out.append(p, q - p);
            if (q == end)
                break;
            m_out.append(u"\r\n");
            if (*q == u'\r') {
                ++m_cr;
                m_pendingCr = true;
            } else {
                ++m_lf;
            }
            p = q + 1;
        }
    }

    LineEndStyle style() const
    {
        if (m_crlf >= m_lf && m_crlf >= m_cr)
            return LineEndStyle::CrLf;
        return m_lf >= m_cr ? LineEndStyle::Lf : LineEndStyle::Cr;
    }
    bool mixed() const { return (m_crlf > 0) + (m_lf > 0) + (m_cr > 0) > 1; }

private:
    QString &m_out;
    qsizetype m_crlf = 0, m_lf = 0, m_cr = 0;
    bool m_pendingCr = false;
};

// Decodes from start as UTF-8, chunk by chunk, each cut before a sequence that would run past
// it. False at the first invalid byte, or when cancelled.
bool decodeUtf8(const QByteArray &bytes, qsizetype start, LineEndNormalizer &out,
                const DecodeProgress &progress, bool &cancelled)
{
    QStringDecoder decoder(QStringConverter::Utf8,
                           QStringConverter::Flag::Stateless | QStringConverter::Flag::ConvertInitialBom);
    const auto *data = reinterpret_cast<const uchar *>(bytes.constData());
    const qsizetype size = bytes.size();
    QString piece(qMin(kChunk, size), Qt::Uninitialized); // a byte gives at most one QChar
    qsizetype pos = start;
    while (pos < size) {
        qsizetype end = qMin(pos + kChunk, size);
        for (int back = 0; end < size && back < 3 && end > pos && (data[end] & 0xC0) == 0x80; ++back)
            --end;
        // One buffer for all chunks: fresh memory for each would cost a page fault per page.
        const QChar *pieceEnd = decoder.appendToBuffer(piece.data(), QByteArrayView(data + pos, end - pos));
        if (decoder.hasError())
            return false;
        out.append(piece.constData(), pieceEnd - piece.constData());
        pos = end;
        if (progress && !progress(pos, size)) {
            cancelled = true;
            return false;
        }
    }
    return true;
}

bool decode1252(const QByteArray &bytes, LineEndNormalizer &out, const DecodeProgress &progress)
{
    const auto *data = reinterpret_cast<const uchar *>(bytes.constData());
    const qsizetype size = bytes.size();
    QString piece;
    for (qsizetype pos = 0; pos < size;) {
        const qsizetype end = qMin(pos + kChunk, size);
        piece.resize(end - pos);
        QChar *dst = piece.data();
        for (qsizetype i = pos; i < end; ++i) {
            const uchar b = data[i];
            *dst++ = QChar(b >= 0x80 && b < 0xA0 ? kHigh1252[b - 0x80] : char16_t(b));
        }
        out.append(piece.constData(), piece.size());
        pos = end;
        if (progress && !progress(pos, size))
            return false;
    }
    return true;
}

// Turns each CR LF of encoded bytes from 'from' on into one byte, in place; far quicker than
// replacing in the string before encoding.
void shortenLineEnds(QByteArray &bytes, qsizetype from, char end)
{
    char *data = bytes.data();
    const qsizetype size = bytes.size();
    qsizetype read = from, write = from;
    while (read < size) {
        const void *cr = std::memchr(data + read, '\r', size_t(size - read));
        const qsizetype stop = cr ? static_cast<const char *>(cr) - data : size;
        std::memmove(data + write, data + read, size_t(stop - read));
        write += stop - read;
        read = stop;
        if (read == size)
            break;
        if (read + 1 < size && data[read + 1] == '\n') {
            data[write++] = end;
            read += 2;
        } else {
            data[write++] = data[read++];
        }
    }
    bytes.truncate(write);
}

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

DecodedText decodeText(const QByteArray &bytes, const DecodeProgress &progress)
{
    DecodedText result;
    // Enough for any line-end growth, so the text is never copied to grow.
    const qsizetype ends =
        std::count(bytes.cbegin(), bytes.cend(), '\n') + std::count(bytes.cbegin(), bytes.cend(), '\r');
    const bool bom = bytes.startsWith("\xEF\xBB\xBF");
    {
        result.text.reserve(bytes.size() + ends);
        LineEndNormalizer out(result.text);
        bool cancelled = false;
        if (decodeUtf8(bytes, bom ? 3 : 0, out, progress, cancelled)) {
            result.format = {TextEncoding::Utf8, bom, out.style()};
            result.mixedLineEnds = out.mixed();
            return result;
        }
        if (cancelled) {
            result.text.clear();
            result.cancelled = true;
            return result;
        }
    }
    result.text.truncate(0); // keeps the room reserved
    LineEndNormalizer out(result.text);
    if (!decode1252(bytes, out, progress)) {
        result.text.clear();
        result.cancelled = true;
        return result;
    }
    result.format = {TextEncoding::Windows1252, false, out.style()};
    result.mixedLineEnds = out.mixed();
    return result;
}

QByteArray encodeText(const QString &text, const FileFormat &format, qsizetype *unencodable)
{
    if (unencodable)
        *unencodable = -1;
    if (format.encoding == TextEncoding::Utf8) {
        QStringEncoder encoder(QStringConverter::Utf8);
        const qsizetype start = format.bom ? 3 : 0;
        QByteArray bytes(start + encoder.requiredSpace(text.size()), Qt::Uninitialized);
        std::memcpy(bytes.data(), "\xEF\xBB\xBF", size_t(start));
        bytes.truncate(encoder.appendToBuffer(bytes.data() + start, text) - bytes.constData());
        if (format.lineEnd != LineEndStyle::CrLf)
            shortenLineEnds(bytes, start, format.lineEnd == LineEndStyle::Lf ? '\n' : '\r');
        return bytes;
    }
    // One byte a character, so the bytes are never more than the characters.
    QByteArray bytes(text.size(), Qt::Uninitialized);
    char *out = bytes.data();
    const QChar *chars = text.constData();
    const qsizetype n = text.size();
    for (qsizetype i = 0; i < n; ++i) {
        const char16_t c = chars[i].unicode();
        const int b = to1252(c);
        if (b < 0) {
            if (unencodable)
                *unencodable = i;
            return QByteArray();
        }
        *out++ = char(b);
    }
    bytes.truncate(out - bytes.constData());
    if (format.lineEnd != LineEndStyle::CrLf)
        shortenLineEnds(bytes, 0, format.lineEnd == LineEndStyle::Lf ? '\n' : '\r');
    return bytes;
}

SaveResult saveTextFile(const QString &path, const QString &text, const FileFormat &format)
{
    qsizetype bad = -1;
    const QByteArray bytes = encodeText(text, format, &bad);
    if (bad >= 0) {
        const int line = int(QStringView(text).left(bad).count(QLatin1String("\r\n"))) + 1;
        const uint code = QStringView(text).mid(bad).toUcs4().value(0);
        return failed(ErrorCode::PathFileAccess, SaveFailure::Unencodable,
                      QStringLiteral("The text holds a character that Windows-1252 can't store "
                                     "(U+%1 on line %2). Save it as UTF-8 to keep it.")
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
