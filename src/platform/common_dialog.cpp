#include "platform/common_dialog.h"

#include "platform/platform.h"

namespace pw {

QList<CommonDialog::FilterEntry> CommonDialog::parseFilter(const QString &filter)
{
    QList<FilterEntry> entries;
    const QStringList parts = filter.split(QLatin1Char('|'));
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2)
        entries.append({parts[i], parts[i + 1].split(QLatin1Char(';'), Qt::SkipEmptyParts)});
    return entries;
}

QStringList CommonDialog::nameFilters(const QString &filter)
{
    QStringList filters;
    for (const FilterEntry &entry : parseFilter(filter)) {
        QStringList patterns;
        for (const QString &pattern : entry.patterns)
            patterns.append(pattern.trimmed() == QLatin1String("*.*") ? QStringLiteral("*") : pattern.trimmed());
        filters.append(QStringLiteral("%1 (%2)").arg(entry.description, patterns.join(QLatin1Char(' '))));
    }
    return filters;
}

ErrorCode CommonDialog::show(Kind kind)
{
    return (m_platform ? *m_platform : platform()).showCommonDialog(kind, *this);
}

} // namespace pw
