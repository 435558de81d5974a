#include "platform/file_association.h"

#include "platform/platform.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSaveFile>
#include <QStandardPaths>
#include <QStringList>

namespace pw {

namespace {

const QString kDesktopId = QStringLiteral("pagewright.desktop");
const QString kMimeType = QStringLiteral("text/html");

bool writeFile(const QString &path, const QByteArray &bytes)
{
    if (!QDir().mkpath(QFileInfo(path).absolutePath()))
        return false;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write(bytes);
    return file.commit();
}

// The program as one argument of an Exec line: quoted, with the quoting's and the desktop file's own
// escapes.
QString execArgument(const QString &program)
{
    QString quoted;
    for (QChar c : program) {
        if (c == QLatin1Char('"') || c == QLatin1Char('`') || c == QLatin1Char('$') || c == QLatin1Char('\\'))
            quoted += QLatin1Char('\\');
        quoted += c;
    }
    quoted = QLatin1Char('"') + quoted + QLatin1Char('"');
    quoted.replace(QLatin1Char('%'), QLatin1String("%%"));
    quoted.replace(QLatin1Char('\\'), QLatin1String("\\\\"));
    return quoted;
}

QByteArray desktopEntry()
{
    const QStringList lines = {
        QStringLiteral("[Desktop Entry]"),
        QStringLiteral("Type=Application"),
        QStringLiteral("Name=Pagewright"),
        QStringLiteral("GenericName=HTML Editor"),
        QStringLiteral("Comment=HTML Document"),
        QStringLiteral("Exec=") + execArgument(QCoreApplication::applicationFilePath()) + QStringLiteral(" %f"),
        QStringLiteral("Icon=pagewright"),
        QStringLiteral("Terminal=false"),
        QStringLiteral("Categories=Development;WebDevelopment;"),
        QStringLiteral("MimeType=") + kMimeType + QLatin1Char(';'),
    };
    return (lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
}

// The shared MIME database knows .htm and .html but not .shtml.
QByteArray mimePackage()
{
    return QByteArrayLiteral("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                             "<mime-info xmlns=\"http://www.freedesktop.org/standards/shared-mime-info\">\n"
                             "  <mime-type type=\"text/html\">\n"
                             "    <glob pattern=\"*.htm\"/>\n"
                             "    <glob pattern=\"*.html\"/>\n"
                             "    <glob pattern=\"*.shtml\"/>\n"
                             "  </mime-type>\n"
                             "</mime-info>\n");
}

// mimeapps.list with text/html given to us under [Default Applications]; all else stays as it was.
QByteArray mimeAppsWithDefault(const QByteArray &existing)
{
    const QString header = QStringLiteral("[Default Applications]");
    const QString entry = kMimeType + QLatin1Char('=') + kDesktopId;
    QStringList lines = QString::fromUtf8(existing).split(QLatin1Char('\n'));
    if (!lines.isEmpty() && lines.last().isEmpty())
        lines.removeLast();

    qsizetype section = -1;
    for (qsizetype i = 0; i < lines.size(); ++i)
        if (lines[i].trimmed() == header)
            section = i;
    if (section < 0) {
        if (!lines.isEmpty() && !lines.last().trimmed().isEmpty())
            lines << QString();
        lines << header << entry;
    } else {
        qsizetype end = section + 1;
        while (end < lines.size() && !lines[end].trimmed().startsWith(QLatin1Char('[')))
            ++end;
        bool replaced = false;
        for (qsizetype i = end - 1; i > section; --i) {
            if (lines[i].section(QLatin1Char('='), 0, 0).trimmed() != kMimeType)
                continue;
            if (replaced) {
                lines.removeAt(i);
            } else {
                lines[i] = entry;
                replaced = true;
            }
        }
        if (!replaced)
            lines.insert(section + 1, entry);
    }
    return (lines.join(QLatin1Char('\n')) + QLatin1Char('\n')).toUtf8();
}

void refreshCache(Platform &platform, const QString &tool, const QString &dir)
{
    const QString program = QStandardPaths::findExecutable(tool);
    if (!program.isEmpty())
        platform.startProgram(program, {dir});
}

} // namespace

AssociationFiles associationFiles()
{
    const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    const QString config = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
    return {data + QStringLiteral("/applications/") + kDesktopId, config + QStringLiteral("/mimeapps.list"),
            data + QStringLiteral("/mime/packages/pagewright.xml"),
            data + QStringLiteral("/icons/hicolor/scalable/apps/pagewright.svg")};
}

bool AssociateFiles(Platform &platform)
{
    const AssociationFiles files = associationFiles();
    bool ok = writeFile(files.desktopFile, desktopEntry());
    ok = writeFile(files.mimePackage, mimePackage()) && ok;

    QFile icon(QStringLiteral(":/icons/pagewright.svg"));
    ok = icon.open(QIODevice::ReadOnly) && writeFile(files.icon, icon.readAll()) && ok;

    QByteArray existing;
    QFile current(files.mimeApps);
    if (current.open(QIODevice::ReadOnly))
        existing = current.readAll();
    current.close();
    ok = writeFile(files.mimeApps, mimeAppsWithDefault(existing)) && ok;

    // The caches are a courtesy to the desktop; a run that fails leaves the files in place.
    refreshCache(platform, QStringLiteral("update-desktop-database"), QFileInfo(files.desktopFile).absolutePath());
    refreshCache(platform, QStringLiteral("update-mime-database"),
                 QFileInfo(QFileInfo(files.mimePackage).absolutePath()).absolutePath());
    return ok;
}

} // namespace pw
