#pragma once

#include <QByteArray>
#include <QList>

namespace pw {

// One byte per character of a document, held in chunks of a few kilobytes: an edit anywhere costs
// what it changes plus one chunk, never what the document holds.
class ClassBytes
{
public:
    ClassBytes() { reset(0, 0); }
    int size() const { return m_size; }
    uchar at(int i) const;
    // Everything becomes `size` bytes of `value`.
    void reset(int size, uchar value);
    // [position, position + removed) becomes `added` bytes of `value`.
    void replace(int position, int removed, int added, uchar value);
    // [position, position + removed) becomes `with`.
    void replace(int position, int removed, const QByteArray &with);
    void fill(int position, int length, uchar value);
    QByteArray mid(int position, int length) const;

private:
    // The chunk holding position (the last one for the end).
    qsizetype chunkAt(int position) const;
    void remove(int position, int length);
    void restart(qsizetype fromChunk); // recounts the chunks' starts

    QList<QByteArray> m_chunks;
    QList<int> m_starts; // where each chunk starts
    int m_size = 0;
    mutable qsizetype m_lastChunk = 0; // where chunkAt found the last position
};

} // namespace pw
