// Where Text and the document part: line ends (two characters against one separator) and the display
// breaks of long lines (no character against one separator).
#include "core/editing_surface.h"

#include <algorithm>

namespace pw {

int EditingSurface::breaksBefore(int documentPosition) const
{
    return int(std::lower_bound(m_breaks.begin(), m_breaks.end(), documentPosition) - m_breaks.begin());
}

bool EditingSurface::isBreak(int documentPosition) const
{
    return std::binary_search(m_breaks.begin(), m_breaks.end(), documentPosition);
}

// Each separator before counts one in the document; a line end counts two in Text, a break none.
int EditingSurface::toSurface(int documentPosition) const
{
    const QTextBlock block = document()->findBlock(documentPosition);
    const int separators = block.isValid() ? block.blockNumber() : document()->blockCount() - 1;
    return documentPosition + separators - (m_breaks.empty() ? 0 : 2 * breaksBefore(documentPosition));
}

int EditingSurface::surfaceStart(const QTextBlock &block) const
{
    return toSurface(block.position());
}

int EditingSurface::lineSpan(const QTextBlock &block, int documentPosition) const
{
    const int end = documentPosition + block.length() - 1;
    const bool lineEnd = block.next().isValid() && (m_breaks.empty() || !isBreak(end));
    return block.length() - 1 + (lineEnd ? 2 : 0);
}

int EditingSurface::toDocument(int position) const
{
    const QTextDocument *doc = document();
    position = qBound(0, position, TextLength());
    // The block holding position p is the last one whose surface start (its document start plus
    // one for each line end before it) is at most p. Its number is at most that of the block at
    // document position p.
    // (A break adds one to the document and nothing to Text, so it may lie further on.)
    QTextBlock upper = doc->findBlock(position + int(m_breaks.size()));
    int lo = 0;
    int hi = upper.isValid() ? upper.blockNumber() : doc->blockCount() - 1;
    while (lo < hi) {
        const int mid = (lo + hi + 1) / 2;
        if (surfaceStart(doc->findBlockByNumber(mid)) <= position)
            lo = mid;
        else
            hi = mid - 1;
    }
    // At a break the position is the start of the block behind it.
    const QTextBlock block = doc->findBlockByNumber(lo);
    // A position between CR and LF falls back to the end of the line.
    return qMin(block.position() + position - surfaceStart(block), block.position() + block.length() - 1);
}

int EditingSurface::lineStart(int line) const
{
    if (line <= 0)
        return 0;
    // A block's line is its number less the breaks before it; the line starts at the first block
    // whose line reaches it.
    const QTextDocument *doc = document();
    const auto lineOf = [&](int number) { return number - breaksBefore(doc->findBlockByNumber(number).position()); };
    int lo = 0;
    int hi = doc->blockCount() - 1;
    while (lo < hi) {
        const int mid = (lo + hi) / 2;
        if (lineOf(mid) >= line)
            hi = mid;
        else
            lo = mid + 1;
    }
    return lineOf(lo) < line ? TextLength() : surfaceStart(doc->findBlockByNumber(lo));
}

void EditingSurface::moveBreaks(int position, int removed, int added)
{
    if (m_breaks.empty())
        return;
    const auto first = std::lower_bound(m_breaks.begin(), m_breaks.end(), position);
    const auto last = std::lower_bound(first, m_breaks.end(), position + removed);
    for (auto at = last; at != m_breaks.end(); ++at)
        *at += added - removed;
    m_breaks.erase(first, last);
}

void EditingSurface::addBreaks(int position, const QList<int> &offsets)
{
    for (const int offset : offsets) {
        const int at = position + offset;
        m_breaks.insert(std::lower_bound(m_breaks.begin(), m_breaks.end(), at), at);
    }
}

} // namespace pw
