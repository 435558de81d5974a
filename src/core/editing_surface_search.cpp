#include "core/editing_surface.h"

#include <QStringMatcher>
#include <QTextBlock>
#include <QTextCursor>
#include <QTextLayout>

// Finding text, spanning and stopping at characters, and lines: the surface's read-only walks.

namespace pw {

namespace {
bool isWordChar(QChar c)
{
    return c.isLetterOrNumber() || c == QLatin1Char('_');
}
} // namespace

int EditingSurface::Find(const QString &target, int start, int end, int options)
{
    if (target.isEmpty())
        return -1;
    const int length = TextLength();
    const int from = start < 0 ? SelStart() : qMin(start, length);
    const int to = end < 0 ? length : qMin(end, length);
    const Qt::CaseSensitivity cs = (options & MatchCase) ? Qt::CaseSensitive : Qt::CaseInsensitive;
    const int size = int(target.size());
    if (from + size > to)
        return -1;

    auto boundaryOk = [&](int pos) {
        if (!(options & WholeWord))
            return true;
        const QString before = pos > 0 ? Mid(pos - 1, 1) : QString();
        const QString after = Mid(pos + size, 1);
        return !(before.size() == 1 && isWordChar(before[0])) && !(after.size() == 1 && isWordChar(after[0]));
    };

    const QStringList parts = target.split(QLatin1String("\r\n"));
    const bool loneBreak = std::any_of(parts.begin(), parts.end(), [](const QString &p) {
        return p.contains(QLatin1Char('\r')) || p.contains(QLatin1Char('\n'));
    });

    int found = -1;
    if (loneBreak) {
        // A lone CR or LF can only match half of a line end; rare enough to search a copy.
        const QString range = Mid(from, to - from);
        for (qsizetype i = range.indexOf(target, 0, cs); i >= 0; i = range.indexOf(target, i + 1, cs))
            if (boundaryOk(from + int(i))) {
                found = from + int(i);
                break;
            }
    } else {
        // One matcher for every line: it skips ahead by the target's length, which a plain search
        // ignoring case does not.
        const QStringMatcher matcher(parts.first(), cs);
        const int docFrom = toDocument(from);
        QTextBlock block = document()->findBlock(docFrom);
        int offset = docFrom - block.position();
        int blockStart = surfaceStart(block);
        int at = block.position();
        for (; block.isValid() && found < 0;
             blockStart += lineSpan(block, at), at += block.length(), block = block.next(), offset = 0) {
            if (blockStart + offset + size > to)
                break;
            // Far from the start the rest is read in large pieces, not line by line: a line costs
            // an allocation of its own, and a hit close by never gets here. (Pieces overlap by the
            // target's length, so no hit falls between two.)
            if (parts.size() == 1 && at - docFrom > FarSearch) {
                found = findInPieces(matcher, at + offset, size, to, boundaryOk);
                break;
            }
            QString text = lineText(block); // shared, not copied: the cache may move on
            const bool broken = !m_breaks.empty() && isBreak(at + block.length() - 1);
            if (parts.size() == 1) {
                // A hit may run on into the display blocks behind a break; it starts in this one.
                const qsizetype own = text.size();
                if (broken)
                    text += Mid(blockStart + int(own), size - 1);
                for (qsizetype i = matcher.indexIn(text, offset); i >= 0 && i < own; i = matcher.indexIn(text, i + 1)) {
                    const int pos = blockStart + int(i);
                    if (pos + size > to)
                        return -1;
                    if (boundaryOk(pos)) {
                        found = pos;
                        break;
                    }
                }
                continue;
            }
            // Several lines: the first part ends this line, the middle parts are whole lines and the
            // last part begins the line after them (read through Text, which knows no breaks).
            if (broken)
                continue;
            const int lineEnd = blockStart + int(text.size());
            const int pos = lineEnd - int(parts.first().size());
            if (pos < from || Mid(pos, int(parts.first().size())).compare(parts.first(), cs) != 0)
                continue;
            bool match = block.next().isValid();
            int at = lineEnd + 2;
            for (qsizetype k = 1; k < parts.size() && match; ++k) {
                const int length = int(parts[k].size());
                const QString line = Mid(at, length + 2);
                match = k + 1 < parts.size() ? line.size() == length + 2 && line.endsWith(QLatin1String("\r\n"))
                                                   && QStringView(line).left(length).compare(parts[k], cs) == 0
                                             : QStringView(line).left(length).compare(parts[k], cs) == 0
                                                   && line.size() >= length;
                at += length + 2;
            }
            if (match && pos + size > to)
                return -1;
            if (match && boundaryOk(pos))
                found = pos;
        }
    }
    if (found >= 0 && !(options & NoHighlight)) {
        setSelStart(found);
        setSelLength(size);
    }
    return found;
}

int EditingSurface::findInPieces(const QStringMatcher &matcher, int docFrom, int size, int to,
                                 const std::function<bool(int)> &accept) const
{
    const int docEnd = document()->characterCount() - 1;
    QTextCursor piece(document());
    QString text;
    std::vector<int> dropped; // offsets in the piece of the breaks taken out of it
    for (int pieceFrom = docFrom; pieceFrom < docEnd; pieceFrom += FarSearch) {
        const int pieceEnd = qMin(docEnd, pieceFrom + FarSearch); // a hit starts before it
        // Read on by the target's length less one, not counting the breaks on the way: pieces
        // overlap by that much of Text, so no hit falls between two.
        const auto first = std::lower_bound(m_breaks.begin(), m_breaks.end(), pieceFrom);
        int readEnd = pieceEnd + size - 1;
        auto last = first;
        for (; last != m_breaks.end() && *last < qMin(docEnd, readEnd); ++last)
            if (*last >= pieceEnd)
                ++readEnd;
        readEnd = qMin(docEnd, readEnd);
        piece.setPosition(pieceFrom);
        piece.setPosition(readEnd, QTextCursor::KeepAnchor);
        text = piece.selectedText(); // a separator is one character, as in the document
        // A break is no character of Text; a hit may run across it.
        dropped.clear();
        for (auto b = last; b != first;) {
            const int at = *--b - pieceFrom;
            text.remove(at, 1);
            dropped.insert(dropped.begin(), at);
        }
        for (qsizetype i = matcher.indexIn(text, 0); i >= 0; i = matcher.indexIn(text, i + 1)) {
            int at = int(i);
            for (const int d : dropped)
                if (d <= at)
                    ++at;
            if (pieceFrom + at >= pieceEnd)
                break;
            const int pos = toSurface(pieceFrom + at);
            if (pos + size > to)
                return -1;
            if (accept(pos))
                return pos;
        }
    }
    return -1;
}

int EditingSurface::stopForward(int from, const QString &set, bool stopInSet) const
{
    QTextBlock block = document()->findBlock(toDocument(from));
    int blockStart = surfaceStart(block);
    int offset = from - blockStart;
    for (int at = block.position(); block.isValid(); at += block.length(), block = block.next(), offset = 0) {
        const QString text = block.text();
        const int span = lineSpan(block, at);
        for (; offset < span; ++offset) {
            const QChar c = offset < text.size() ? text[offset]
                                                 : QLatin1Char(offset == text.size() ? '\r' : '\n');
            if (set.contains(c) == stopInSet)
                return blockStart + offset;
        }
        blockStart += span;
    }
    return TextLength();
}

int EditingSurface::stopBackward(int from, const QString &set, bool stopInSet) const
{
    QTextBlock block = document()->findBlock(toDocument(from));
    int blockStart = surfaceStart(block);
    int offset = from - blockStart; // the character before the caret is offset - 1
    int at = block.position();
    while (block.isValid()) {
        const QString text = block.text();
        for (; offset > 0; --offset) {
            const int i = offset - 1;
            const QChar c = i < text.size() ? text[i] : QLatin1Char(i == text.size() ? '\r' : '\n');
            if (set.contains(c) == stopInSet)
                return blockStart + offset;
        }
        block = block.previous();
        if (!block.isValid())
            break;
        at -= block.length();
        offset = lineSpan(block, at); // the text and its CR LF, if it ends a line
        blockStart -= offset;
    }
    return 0;
}

void EditingSurface::UpTo(const QString &characters, bool forward, bool negate)
{
    const int from = SelStart();
    setSelStart(forward ? stopForward(from, characters, !negate) : stopBackward(from, characters, !negate));
}

int EditingSurface::upToStop(int from, const QString &characters, bool forward, bool negate) const
{
    from = qBound(0, from, TextLength());
    return forward ? stopForward(from, characters, !negate) : stopBackward(from, characters, !negate);
}

void EditingSurface::Span(const QString &characters, bool forward, bool negate)
{
    const int from = SelStart();
    if (forward) {
        const int to = stopForward(from, characters, negate);
        setSelStart(from);
        setSelLength(to - from);
    } else {
        const int to = stopBackward(from, characters, negate);
        setSelStart(to);
        setSelLength(from - to);
    }
}

int EditingSurface::GetLineFromChar(int position) const
{
    const int d = toDocument(position);
    const QTextBlock block = document()->findBlock(d);
    int line = qMax(0, block.firstLineNumber());
    // Lines wrapped on screen count; a block not laid out yet counts as one line.
    if (const QTextLayout *layout = block.layout(); layout && layout->lineCount() > 0) {
        const QTextLine textLine = layout->lineForTextPosition(d - block.position());
        if (textLine.isValid())
            line += textLine.lineNumber();
    }
    return line;
}

} // namespace pw
