#include "site/link_counts.h"

#include "platform/file_handles.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSet>
#include <QUrl>

namespace pw {

bool IsPageName(const QString &name)
{
    for (const char *ending : {".html", ".htm", ".shtml"})
        if (name.endsWith(QLatin1String(ending), Qt::CaseInsensitive))
            return true;
    return false;
}

QHash<QString, int> CountInboundLinks(const QStringList &pages, const std::function<bool()> &stop)
{
    static const QRegularExpression reference(QStringLiteral("\\b(?:HREF|SRC|BACKGROUND)\\s*=\\s*\"([^\"]*)\""),
                                              QRegularExpression::CaseInsensitiveOption);
    QHash<QString, int> counts;
    for (const QString &page : pages) {
        if (stop && stop())
            break;
        QByteArray bytes;
        if (readWholeFile(page, bytes, FileShare::None) != ErrorCode::None)
            continue;
        const QString text = QString::fromUtf8(bytes);
        const QDir folder = QFileInfo(page).absoluteDir();
        QSet<QString> targets;
        for (auto it = reference.globalMatch(text); it.hasNext();) {
            const QString url = it.next().captured(1);
            if (url.contains(QLatin1Char(':')))
                continue;
            qsizetype end = 0;
            while (end < url.size() && url[end] != QLatin1Char('#') && url[end] != QLatin1Char('?'))
                ++end;
            if (end == 0)
                continue; // the page itself
            const QString target =
                QDir::cleanPath(folder.filePath(QUrl::fromPercentEncoding(url.left(end).toUtf8())));
            if (target != page)
                targets.insert(target);
        }
        for (const QString &target : std::as_const(targets))
            ++counts[target];
    }
    return counts;
}

} // namespace pw
