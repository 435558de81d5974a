#include "core/font_class.h"

#include <QColor>

namespace pw {

QColor colorFromValue(qint32 value)
{
    return QColor(value & 0xFF, (value >> 8) & 0xFF, (value >> 16) & 0xFF);
}

qint32 valueFromColor(const QColor &color)
{
    return color.red() | (color.green() << 8) | (color.blue() << 16);
}

QTextCharFormat FontClass::toFormat() const
{
    QTextCharFormat f;
    f.setFontFamilies({Name});
    f.setFontPointSize(Size);
    f.setFontWeight(Bold ? QFont::Bold : QFont::Normal);
    f.setFontItalic(Italic);
    f.setForeground(colorFromValue(Color));
    return f;
}

FontClass FontClass::fromFormat(const QTextCharFormat &format)
{
    FontClass c;
    const QStringList families = format.fontFamilies().toStringList();
    c.Name = families.value(0);
    c.Size = qint16(qRound(format.fontPointSize()));
    c.Bold = format.fontWeight() >= QFont::Bold;
    c.Italic = format.fontItalic();
    c.Color = valueFromColor(format.foreground().color());
    return c;
}

} // namespace pw
