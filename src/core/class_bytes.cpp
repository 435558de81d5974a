#include "core/class_bytes.h"

#include <cstring>

namespace pw {

void ClassBytes::reset(int size, uchar value)
{
    m_bytes = QByteArray(size, char(value));
    m_gapStart = m_gapEnd = size;
}

void ClassBytes::moveGap(int position, int room)
{
    char *data = m_bytes.data();
    if (position < m_gapStart) {
        const int n = m_gapStart - position;
        std::memmove(data + m_gapEnd - n, data + position, size_t(n));
        m_gapStart -= n;
        m_gapEnd -= n;
    } else if (position > m_gapStart) {
        const int n = position - m_gapStart;
        std::memmove(data + m_gapStart, data + m_gapEnd, size_t(n));
        m_gapStart += n;
        m_gapEnd += n;
    }
    if (gap() >= room)
        return;
    // Grow by an eighth at least, so typing at one place reallocates rarely.
    const int after = int(m_bytes.size()) - m_gapEnd;
    const int newGap = room + qMax(4096, size() / 8);
    QByteArray grown(m_gapStart + newGap + after, Qt::Uninitialized);
    std::memcpy(grown.data(), m_bytes.constData(), size_t(m_gapStart));
    std::memcpy(grown.data() + m_gapStart + newGap, m_bytes.constData() + m_gapEnd, size_t(after));
    m_bytes = std::move(grown);
    m_gapEnd = m_gapStart + newGap;
}

void ClassBytes::replace(int position, int removed, int added, uchar value)
{
    moveGap(position, qMax(0, added - removed));
    m_gapEnd += removed;
    std::memset(m_bytes.data() + m_gapStart, value, size_t(added));
    m_gapStart += added;
}

void ClassBytes::replace(int position, int removed, const QByteArray &with)
{
    const int added = int(with.size());
    moveGap(position, qMax(0, added - removed));
    m_gapEnd += removed;
    std::memcpy(m_bytes.data() + m_gapStart, with.constData(), size_t(added));
    m_gapStart += added;
}

void ClassBytes::fill(int position, int length, uchar value)
{
    char *data = m_bytes.data();
    const int before = qBound(0, m_gapStart - position, length);
    std::memset(data + position, value, size_t(before));
    std::memset(data + position + before + gap(), value, size_t(length - before));
}

QByteArray ClassBytes::mid(int position, int length) const
{
    QByteArray out(length, Qt::Uninitialized);
    const int before = qBound(0, m_gapStart - position, length);
    std::memcpy(out.data(), m_bytes.constData() + position, size_t(before));
    std::memcpy(out.data() + before, m_bytes.constData() + position + before + gap(), size_t(length - before));
    return out;
}

} // namespace pw
