#include "wizards/frame_source.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace pw
{

SourceCheck CheckFrameSource(const QString &source, const QString &folder)
{
    static const QRegularExpression anchorOrQuery(QStringLiteral("[#?].*$"));
    const QString url = source.trimmed().remove(anchorOrQuery);
    static const QRegularExpression scheme(QStringLiteral("^[A-Za-z][A-Za-z0-9+.-]*:|^//"));
    if (url.isEmpty() || scheme.match(url).hasMatch() || (folder.isEmpty() && !QDir::isAbsolutePath(url)))
        return {};
    const QString path = QDir::cleanPath(QDir::isAbsolutePath(url) ? url : QDir(folder).filePath(url));
    if (QFileInfo::exists(path))
        return {SourceCheck::Found, {}};
    // Walk down from the root, taking each part as it is spelled on disk when only its case differs.
    const QStringList parts = path.split(QLatin1Char('/'), Qt::SkipEmptyParts);
    QString actual = QStringLiteral("/");
    for (const QString &part : parts) {
        const QStringList entries =
            QDir(actual).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
        QString match;
        for (const QString &entry : entries)
            if (entry.compare(part, Qt::CaseInsensitive) == 0) {
                match = entry;
                if (entry == part)
                    break;
            }
        if (match.isEmpty())
            return {SourceCheck::Missing, {}};
        actual = QDir(actual).filePath(match);
    }
    return {SourceCheck::CaseDiffers, actual};
}

} // namespace pw
