#pragma once

#include <QByteArray>

namespace pw {

// One byte per character of a document, held in a gap buffer: an edit costs what it changes plus
// the distance from the last one, never what the document holds.
class ClassBytes
{
public:
    int size() const { return int(m_bytes.size()) - gap(); }
    uchar at(int i) const { return uchar(m_bytes[i < m_gapStart ? i : i + gap()]); }
    // Everything becomes `size` bytes of `value`.
    void reset(int size, uchar value);
    // [position, position + removed) becomes `added` bytes of `value`.
    void replace(int position, int removed, int added, uchar value);
    // [position, position + removed) becomes `with`.
    void replace(int position, int removed, const QByteArray &with);
    void fill(int position, int length, uchar value);
    QByteArray mid(int position, int length) const;

private:
    int gap() const { return m_gapEnd - m_gapStart; }
    // The gap moves to position and holds at least room bytes.
    void moveGap(int position, int room);

    QByteArray m_bytes;
    int m_gapStart = 0;
    int m_gapEnd = 0;
};

} // namespace pw
