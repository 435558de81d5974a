#include "site/site_find.h"

#include "files/text_codec.h"
#include "site/site_pictures.h"
#include "site/site_walk.h"

#include <QFile>
#include <QSet>
#include <QTreeWidgetItem>

#include <algorithm>
#include <memory>

namespace pw {

namespace {

constexpr int LineTextMax = 200;

// Collects the hits of one text; lines are counted only from the file's first hit on, so a
// file without one costs a single search.
void collectHits(const QString &path, const QString &text, const QString &target, Qt::CaseSensitivity cs,
                 QList<SiteHit> &hits)
{
    int line = 1;
    qsizetype counted = 0; // line ends before this position are in `line`
    for (qsizetype at = text.indexOf(target, 0, cs); at >= 0;) {
        line += int(QStringView(text).mid(counted, at - counted).count(QLatin1Char('\n')));
        counted = at;
        const qsizetype lineStart = at == 0 ? 0 : text.lastIndexOf(QLatin1Char('\n'), at - 1) + 1;
        qsizetype end = text.indexOf(QLatin1Char('\n'), at);
        if (end < 0)
            end = text.size();
        QStringView shown = QStringView(text).mid(lineStart, end - lineStart).trimmed();
        hits.append({path, line, int(at - lineStart), shown.left(LineTextMax).toString()});
        // The next hit in another line: one row per line.
        at = end < text.size() ? text.indexOf(target, end, cs) : -1;
    }
}

bool leftOutByName(const QString &path)
{
    const QString type = ClassifyFileType(path.right(3));
    return type == QLatin1String("image") || type == QLatin1String("sound");
}

} // namespace

QStringList SiteTextFiles(const QString &folder, const std::function<bool()> &stop)
{
    SiteNodes nodes;
    const std::unique_ptr<QTreeWidgetItem> root(WalkSiteFolder(folder, nullptr, nodes, stop));
    QStringList files;
    files.reserve(nodes.size());
    for (auto it = nodes.cbegin(); it != nodes.cend(); ++it)
        if (!isFolderPicture(pictureOf(it.value())) && !leftOutByName(it.key()))
            files << it.key();
    std::sort(files.begin(), files.end());
    return files;
}

SiteSearchResult SearchSiteFiles(const QStringList &files, const QString &target, Qt::CaseSensitivity cs,
                                 const OpenTextOf &openText, const SiteSearchStop &stop)
{
    SiteSearchResult result;
    if (target.isEmpty())
        return result;
    QByteArray buffer; // one for every file: its capacity grows to the largest and stays
    for (qsizetype i = 0; i < files.size(); ++i) {
        if (stop && stop(i, files.size())) {
            result.stopped = true;
            break;
        }
        const QString &path = files[i];
        if (openText) {
            if (const std::optional<QString> text = openText(path)) {
                ++result.searched;
                collectHits(path, *text, target, cs, result.hits);
                continue;
            }
        }
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            ++result.unreadable;
            continue;
        }
        const qint64 size = file.size();
        buffer.resize(size);
        if (size > 0 && file.read(buffer.data(), size) != size) {
            ++result.unreadable;
            continue;
        }
        if (looksBinary(buffer)) {
            ++result.binary;
            continue;
        }
        ++result.searched;
        const DecodedText decoded = decodeText(buffer);
        collectHits(path, decoded.text, target, cs, result.hits);
    }
    return result;
}

QString SiteSearchSummary(const SiteSearchResult &result)
{
    QSet<QString> files;
    for (const SiteHit &hit : result.hits)
        files.insert(hit.path);
    QString text = result.hits.isEmpty() ? QStringLiteral("0 hits")
                   : QStringLiteral("%1 %2 in %3 %4")
                         .arg(result.hits.size())
                         .arg(result.hits.size() == 1 ? QStringLiteral("hit") : QStringLiteral("hits"))
                         .arg(files.size())
                         .arg(files.size() == 1 ? QStringLiteral("file") : QStringLiteral("files"));
    if (result.unreadable)
        text += QStringLiteral("; %1 %2 could not be read")
                    .arg(result.unreadable)
                    .arg(result.unreadable == 1 ? QStringLiteral("file") : QStringLiteral("files"));
    if (result.stopped)
        text += QStringLiteral("; stopped");
    return text;
}

} // namespace pw
