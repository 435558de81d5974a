#include "platform/processes.h"

#include <QByteArrayList>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

namespace pw {

namespace {

// A process's argument, made absolute against its own working folder, as a real path.
QString realArgument(const QString &proc, const QByteArray &argument)
{
    QString path = QFile::decodeName(argument);
    if (path.isEmpty())
        return {};
    if (QDir::isRelativePath(path))
        path = QFileInfo(QFile::symLinkTarget(proc + QStringLiteral("/cwd")), path).filePath();
    return QFileInfo(path).canonicalFilePath();
}

} // namespace

bool ProgramRunning(const QString &program)
{
    const QString target = QFileInfo(program).canonicalFilePath();
    if (target.isEmpty())
        return false;
    const QByteArray self = QByteArray::number(qint64(::getpid()));
    const uid_t me = ::getuid();
    const QStringList entries = QDir(QStringLiteral("/proc")).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &entry : entries) {
        bool numeric = false;
        entry.toLongLong(&numeric);
        if (!numeric || entry.toLatin1() == self)
            continue;
        const QString proc = QStringLiteral("/proc/") + entry;
        struct stat st = {};
        if (::stat(QFile::encodeName(proc).constData(), &st) != 0 || st.st_uid != me)
            continue;
        if (QFileInfo(QFile::symLinkTarget(proc + QStringLiteral("/exe"))).canonicalFilePath() == target)
            return true;
        QFile cmdline(proc + QStringLiteral("/cmdline"));
        if (!cmdline.open(QIODevice::ReadOnly))
            continue;
        // An interpreter's script comes among its first arguments ("sh -e script").
        const QByteArrayList arguments = cmdline.readAll().split('\0');
        for (qsizetype i = 0; i < qMin<qsizetype>(arguments.size(), 4); ++i)
            if (!arguments[i].startsWith('-') && realArgument(proc, arguments[i]) == target)
                return true;
    }
    return false;
}

} // namespace pw
