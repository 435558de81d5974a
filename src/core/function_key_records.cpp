#include "core/function_key_records.h"

namespace pw {

QString FixedWidthText(const QString &text, int width)
{
    return text.left(width).leftJustified(width, QLatin1Char(' '));
}

} // namespace pw
