#include "core/app_state.h"

#include <QRegularExpression>

namespace pw {

QString VersionText()
{
    return QStringLiteral("%1.%2.%3")
        .arg(PAGEWRIGHT_VERSION_MAJOR)
        .arg(PAGEWRIGHT_VERSION_MINOR, 2, 10, QLatin1Char('0'))
        .arg(PAGEWRIGHT_VERSION_PATCH);
}

QString AppTitle()
{
    return QStringLiteral("Tessaline Pagewright  Version ") + VersionText();
}

QString FormatNumberPicture(qint64 value)
{
    if (value == 0)
        return QString();
    QString digits = QString::number(value < 0 ? -value : value);
    for (qsizetype i = digits.size() - 3; i > 0; i -= 3)
        digits.insert(i, QLatin1Char(','));
    return value < 0 ? QLatin1Char('-') + digits : digits;
}

QString TrimTrailing(const QString &text)
{
    qsizetype end = text.size();
    while (end > 0 && (text[end - 1] == QLatin1Char(' ') || text[end - 1] == QChar(0)))
        --end;
    return text.left(end);
}

bool IsNumeric(const QString &text)
{
    static const QRegularExpression numeric(QStringLiteral("^\\s*[+-]?(\\d+\\.?\\d*|\\.\\d+)\\s*$"));
    return numeric.match(text).hasMatch();
}

} // namespace pw
