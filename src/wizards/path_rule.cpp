#include "wizards/path_rule.h"

namespace pw {

namespace {

// InStr(start, text, c): the 1-based position of c at or after start, 0 when there is none.
qsizetype inStr(qsizetype start, const QString &text, QChar c)
{
    return text.indexOf(c, start - 1) + 1;
}

} // namespace

QString MakeRelativeUrl(const QString &base, const QString &target, QChar separator)
{
    if (base.isEmpty() || target.isEmpty() || base.at(0) != target.at(0) || !base.contains(separator))
        return target;
    qsizetype pa = 1;
    qsizetype pb = 1;
    qsizetype qb = 1;
    for (;;) {
        qb = pb;
        pa = inStr(pa + 1, base, separator);
        pb = inStr(pb + 1, target, separator);
        if (pa == 0)
            return target.mid(qb);
        if (pb == 0 || QStringView(base).left(pa) != QStringView(target).left(pb))
            break;
    }
    QString up = QStringLiteral("..") + separator;
    for (qsizetype at = inStr(pa + 1, base, separator); at != 0; at = inStr(at + 1, base, separator))
        up += QStringLiteral("..") + separator;
    up.chop(1);
    return up + target.mid(qb - 1);
}

QString UrlFromPath(const QString &path, QChar separator)
{
    return QString(path).replace(separator, QLatin1Char('/'));
}

QString PathFromUrl(const QString &url, QChar separator)
{
    return QString(url).replace(QLatin1Char('/'), separator);
}

QString ResolveRelativeUrl(const QString &base, const QString &url, QChar separator)
{
    return base.left(base.lastIndexOf(separator) + 1) + PathFromUrl(url, separator);
}

} // namespace pw
