#include "core/class_bytes.h"

#include <algorithm>
#include <cstring>

namespace pw {

namespace {
constexpr int Chunk = 16 * 1024; // a chunk is split when it grows past twice this
} // namespace

qsizetype ClassBytes::chunkAt(int position) const
{
    // Passes go forward: the chunk of the last call, or the next one, mostly holds the position.
    const qsizetype count = m_starts.size();
    for (qsizetype k = m_lastChunk; k < qMin(m_lastChunk + 2, count); ++k)
        if (position >= m_starts[k] && (k + 1 == count || position < m_starts[k + 1]))
            return m_lastChunk = k;
    const auto it = std::upper_bound(m_starts.cbegin(), m_starts.cend(), position);
    return m_lastChunk = qMax<qsizetype>(0, (it - m_starts.cbegin()) - 1);
}

uchar ClassBytes::at(int i) const
{
    const qsizetype k = chunkAt(i);
    return uchar(m_chunks[k][i - m_starts[k]]);
}

void ClassBytes::restart(qsizetype fromChunk)
{
    m_starts.resize(m_chunks.size());
    int start = fromChunk > 0 ? m_starts[fromChunk - 1] + int(m_chunks[fromChunk - 1].size()) : 0;
    for (qsizetype k = fromChunk; k < m_chunks.size(); ++k) {
        m_starts[k] = start;
        start += int(m_chunks[k].size());
    }
    m_size = start;
}

void ClassBytes::reset(int size, uchar value)
{
    m_chunks.clear();
    for (int done = 0; done < size; done += Chunk)
        m_chunks.append(QByteArray(qMin(Chunk, size - done), char(value)));
    if (m_chunks.isEmpty())
        m_chunks.append(QByteArray());
    restart(0);
}

void ClassBytes::remove(int position, int length)
{
    qsizetype k = chunkAt(position);
    const qsizetype first = k;
    int offset = position - m_starts[k];
    while (length > 0 && k < m_chunks.size()) {
        const int n = qMin(length, int(m_chunks[k].size()) - offset);
        m_chunks[k].remove(offset, n);
        length -= n;
        offset = 0;
        if (m_chunks[k].isEmpty() && m_chunks.size() > 1)
            m_chunks.removeAt(k);
        else
            ++k;
    }
    restart(qMin(first, m_chunks.size() - 1));
}

void ClassBytes::replace(int position, int removed, const QByteArray &with)
{
    if (removed > 0)
        remove(position, removed);
    if (with.isEmpty())
        return;
    const qsizetype k = chunkAt(position);
    QByteArray &chunk = m_chunks[k];
    chunk.insert(position - m_starts[k], with);
    if (chunk.size() > 2 * Chunk) {
        // Split into chunks of the usual size.
        const QByteArray whole = std::exchange(chunk, QByteArray());
        QList<QByteArray> pieces;
        for (qsizetype done = 0; done < whole.size(); done += Chunk)
            pieces.append(whole.mid(done, Chunk));
        m_chunks.removeAt(k);
        for (qsizetype i = 0; i < pieces.size(); ++i)
            m_chunks.insert(k + i, pieces[i]);
    }
    restart(k);
}

void ClassBytes::replace(int position, int removed, int added, uchar value)
{
    replace(position, removed, QByteArray(added, char(value)));
}

void ClassBytes::fill(int position, int length, uchar value)
{
    if (length <= 0)
        return;
    qsizetype k = chunkAt(position);
    int offset = position - m_starts[k];
    while (length > 0 && k < m_chunks.size()) {
        const int n = qMin(length, int(m_chunks[k].size()) - offset);
        std::memset(m_chunks[k].data() + offset, value, size_t(n));
        length -= n;
        offset = 0;
        ++k;
    }
}

QByteArray ClassBytes::mid(int position, int length) const
{
    QByteArray out;
    if (length <= 0)
        return out;
    out.reserve(length);
    qsizetype k = chunkAt(position);
    int offset = position - m_starts[k];
    while (length > 0 && k < m_chunks.size()) {
        const int n = qMin(length, int(m_chunks[k].size()) - offset);
        out.append(m_chunks[k].constData() + offset, n);
        length -= n;
        offset = 0;
        ++k;
    }
    return out;
}

} // namespace pw
