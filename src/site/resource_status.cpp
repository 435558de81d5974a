#include "site/resource_status.h"

#include <QDir>
#include <QFileInfo>
#include <QUrl>

namespace pw {

namespace {

// The path of a file whose components match target's ignoring case, or empty.
QString matchIgnoringCase(const QString &target, FolderListings &listings)
{
    const QStringList parts = QDir::cleanPath(target).split(QLatin1Char('/'), Qt::SkipEmptyParts);
    QString path = QStringLiteral("/");
    for (const QString &part : parts) {
        const QString exact = QDir(path).filePath(part);
        if (QFileInfo::exists(exact)) {
            path = exact;
            continue;
        }
        QString found;
        auto listed = listings.find(path);
        if (listed == listings.end())
            listed = listings.insert(path, QDir(path).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
        const QStringList &entries = *listed;
        for (const QString &entry : entries)
            if (entry.compare(part, Qt::CaseInsensitive) == 0) {
                found = entry;
                break;
            }
        if (found.isEmpty())
            return {};
        path = QDir(path).filePath(found);
    }
    return path;
}

} // namespace

LocalStatus CheckLocalReference(const QString &documentPath, const QString &url, QString *actual,
                                FolderListings *listings)
{
    if (url.contains(QLatin1Char(':')) || documentPath.isEmpty())
        return LocalStatus::NotLocal;
    // The file's part: no fragment, no query.
    qsizetype end = 0;
    while (end < url.size() && url[end] != QLatin1Char('#') && url[end] != QLatin1Char('?'))
        ++end;
    const QString part = url.left(end);
    const QString folder = QFileInfo(documentPath).absolutePath();
    // A reference to the page itself ("#top") is found.
    const QString target = QDir::cleanPath(part.isEmpty() ? documentPath
                                                          : QDir(folder).filePath(QUrl::fromPercentEncoding(part.toUtf8())));
    if (actual)
        *actual = target;
    if (QFileInfo::exists(target))
        return LocalStatus::Found;
    FolderListings own;
    const QString other = matchIgnoringCase(target, listings ? *listings : own);
    if (other.isEmpty())
        return LocalStatus::Missing;
    if (actual)
        *actual = other;
    return LocalStatus::CaseDiffers;
}

} // namespace pw
