#include "wizards/local_target.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QUrl>

namespace pw {

TargetCheck CheckLocalTarget(const QString &url, const QString &documentPath)
{
    TargetCheck check;
    QString path = url.trimmed();
    static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*:"));
    if (path.startsWith(QLatin1String("file://"), Qt::CaseInsensitive))
        path = path.mid(7);
    else if (scheme.match(path).hasMatch())
        return check;
    path = path.left(path.indexOf(QLatin1Char('#'))); // indexOf -1 keeps it whole
    path = path.left(path.indexOf(QLatin1Char('?')));
    path = QUrl::fromPercentEncoding(path.toUtf8());
    if (path.isEmpty())
        return check;
    if (QDir::isRelativePath(path)) {
        if (documentPath.isEmpty())
            return check; // an untitled page has no folder to look in
        path = QFileInfo(documentPath).absoluteDir().filePath(path);
    }
    check.path = QDir::cleanPath(path);
    check.kind = TargetCheck::Fine;

    // Down the path a part at a time: an exact name goes on at once; otherwise a name that differs
    // only in case is taken as the one meant, and the walk goes on from it.
    QString onDisk = QStringLiteral("/");
    for (const QString &part : check.path.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        const QString exact = QDir(onDisk).filePath(part);
        if (QFileInfo::exists(exact)) {
            onDisk = exact;
            continue;
        }
        const QStringList entries = QDir(onDisk).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        const auto same = std::find_if(entries.begin(), entries.end(),
                                       [&part](const QString &entry) { return entry.compare(part, Qt::CaseInsensitive) == 0; });
        if (same == entries.end()) {
            check.kind = TargetCheck::Missing;
            check.found.clear();
            return check;
        }
        check.kind = TargetCheck::CaseDiffers;
        onDisk = QDir(onDisk).filePath(*same);
    }
    if (check.kind == TargetCheck::CaseDiffers)
        check.found = onDisk;
    return check;
}

QString TargetCheckText(const TargetCheck &check)
{
    switch (check.kind) {
    case TargetCheck::NotLocal:
    case TargetCheck::Fine: return {};
    case TargetCheck::Missing: return QStringLiteral("No such file: %1").arg(check.path);
    case TargetCheck::CaseDiffers:
        return QStringLiteral("Only %1 is there: letter case counts on most web servers").arg(check.found);
    }
    return {};
}

} // namespace pw
