#include "core/display_blocks.h"

#include <algorithm>

namespace pw {

QString DisplayBlocks::convert(QStringView piece)
{
    QString out(piece.size() + piece.size() / (m_limit / 2) + 2, Qt::Uninitialized);
    QChar *const begin = out.data();
    QChar *o = begin;
    const QChar *end = piece.end();
    const auto lineEnd = [](QChar c) {
        return c.unicode() <= u'\r' ? c == QLatin1Char('\r') || c == QLatin1Char('\n') : c == QChar::ParagraphSeparator;
    };
    for (const QChar *c = piece.begin(); c != end;) {
        // The characters of a line below its block's bound go across in one run.
        if (m_column < m_limit) {
            const QChar *run = c;
            const QChar *stop = c + std::min<qsizetype>(end - c, m_limit - m_column);
            while (c != stop && !lineEnd(*c))
                ++c;
            o = std::copy(run, c, o);
            m_column += int(c - run);
            if (c == end)
                break;
            if (!lineEnd(*c))
                continue;
        }
        if (lineEnd(*c)) {
            *o++ = QLatin1Char('\n');
            if (*c == QLatin1Char('\r') && c + 1 != end && c[1] == QLatin1Char('\n'))
                ++c;
            ++c;
            m_column = 0;
            continue;
        }
        // A block is broken only when more of its line follows, never inside a surrogate pair.
        if (m_column >= m_limit && !(o != begin && o[-1].isHighSurrogate()))
            o = breakBlock(begin, o);
        *o++ = *c++;
        ++m_column;
    }
    out.truncate(o - begin);
    m_written += int(out.size());
    return out;
}

QChar *DisplayBlocks::breakBlock(QChar *begin, QChar *o)
{
    QChar *at = o;
    const QChar *stop = o - std::min({qsizetype(m_column), qsizetype(m_limit / 4), qsizetype(o - begin)});
    for (QChar *c = o; c != stop; --c)
        if (c[-1] == QLatin1Char('>') || c[-1] == QLatin1Char(' ')) {
            at = c;
            break;
        }
    std::move_backward(at, o, o + 1);
    *at = QLatin1Char('\n');
    breaks.push_back(m_written + int(at - begin));
    m_column = int(o - at);
    return o + 1;
}

} // namespace pw
