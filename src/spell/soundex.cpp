#include "spell/soundex.h"

namespace pw {

namespace {

QChar digitOf(QChar c)
{
    switch (c.unicode()) {
    case 'b': case 'p': case 'f': case 'v':
        return QLatin1Char('1');
    case 'c': case 's': case 'k': case 'g': case 'j': case 'q': case 'x': case 'z':
        return QLatin1Char('2');
    case 'd': case 't':
        return QLatin1Char('3');
    case 'l':
        return QLatin1Char('4');
    case 'm': case 'n':
        return QLatin1Char('5');
    case 'r':
        return QLatin1Char('6');
    default:
        return QLatin1Char('0');
    }
}

// The character at a 1-based position in lower case; a blank beyond the end, which codes as "0".
QChar lowerAt(const QString &s, int position)
{
    return position >= 1 && position <= s.size() ? s.at(position - 1).toLower() : QChar();
}

} // namespace

bool ValidSoundex(const QString &argument)
{
    return argument.size() == 6;
}

bool EndofName(const QString &surname, int counter)
{
    return counter == surname.size();
}

QString SoundexName(const QString &name)
{
    QString key = name.left(1).toUpper();
    int counter = 1;
    while (!ValidSoundex(key) && !EndofName(name, counter)) {
        ++counter;
        QChar ch = lowerAt(name, counter);
        if (lowerAt(name, counter - 1) == ch)
            ch = QLatin1Char(' ');
        key += digitOf(ch);
    }
    if (!ValidSoundex(key) && EndofName(name, counter))
        key = key.leftJustified(6, QLatin1Char('0'));
    return key.toUpper();
}

} // namespace pw
