#include "site/site_find.h"

#include "files/text_codec.h"
#include "site/site_pictures.h"
#include "site/site_walk.h"

#include <QFile>
#include <QSet>
#include <QTreeWidgetItem>

#include <algorithm>
#include <functional>
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

// A target of ASCII letters, digits and marks can be looked for in a file's bytes before they are
// decoded: none of the decodings makes an ASCII character from a byte of 0x80 or above (UTF-8,
// the 8-bit charsets), and line ends don't come into it. Most files hold no hit, so most are never
// decoded. Two non-ASCII letters fold to ASCII ones ignoring case (KELVIN SIGN to k, LONG S to s):
// such a target gets no verdict from the bytes of a file with any byte above 0x7F.
class ByteFilter
{
public:
    ByteFilter(const QString &target, Qt::CaseSensitivity cs) : m_cs(cs)
    {
        for (const QChar c : target) {
            if (c.unicode() >= 0x80 || c == QLatin1Char('\r') || c == QLatin1Char('\n'))
                return;
            const char byte = char(c.unicode());
            m_bytes += byte;
            if (cs == Qt::CaseInsensitive && (lower(byte) == 'k' || lower(byte) == 's'))
                m_folds = true;
        }
        m_usable = !target.isEmpty();
    }
    // False only when the decoded text can't hold the target.
    bool mayHold(const QByteArray &bytes) const
    {
        if (!m_usable || hasWideMark(bytes))
            return true;
        bool found;
        if (m_cs == Qt::CaseSensitive) {
            found = bytes.contains(m_bytes);
        } else {
            const std::boyer_moore_horspool_searcher searcher(m_bytes.cbegin(), m_bytes.cend(), Hash(), Equal());
            found = std::search(bytes.cbegin(), bytes.cend(), searcher) != bytes.cend();
        }
        if (found || !m_folds)
            return found;
        return std::any_of(bytes.cbegin(), bytes.cend(), [](char b) { return uchar(b) >= 0x80; });
    }

private:
    static char lower(char c) { return c >= 'A' && c <= 'Z' ? char(c + 32) : c; }
    struct Hash {
        std::size_t operator()(char c) const { return std::size_t(uchar(lower(c))); }
    };
    struct Equal {
        bool operator()(char a, char b) const { return lower(a) == lower(b); }
    };
    // UTF-16 and UTF-32 (either order) by their byte-order mark.
    static bool hasWideMark(const QByteArray &bytes)
    {
        return bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF") ||
               bytes.startsWith(QByteArrayView("\x00\x00\xFE\xFF", 4));
    }

    QByteArray m_bytes;
    Qt::CaseSensitivity m_cs;
    bool m_usable = false;
    bool m_folds = false;
};

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
    const ByteFilter filter(target, cs);
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
        if (!filter.mayHold(buffer))
            continue;
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
