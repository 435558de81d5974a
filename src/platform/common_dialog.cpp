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

ErrorCode CommonDialog::show(Kind kind)
{
    return (m_platform ? *m_platform : platform()).showCommonDialog(kind, *this);
}

} // namespace pw
