#include "core/document_state.h"

namespace pw {

void DocumentState::setPath(const QString &path)
{
    if (std::exchange(m_path, path) != path)
        Q_EMIT captionChanged(caption());
}

void DocumentState::setUntitledName(const QString &name)
{
    const QString before = caption();
    m_untitledName = name;
    if (caption() != before)
        Q_EMIT captionChanged(caption());
}

void DocumentState::setDirty(bool dirty)
{
    if (std::exchange(m_dirty, dirty) != dirty)
        Q_EMIT dirtyChanged(dirty);
}

void DocumentState::setFormat(const FileFormat &format, const QString &note)
{
    if (m_format == format && m_encodingNote == note)
        return;
    m_format = format;
    m_encodingNote = note;
    Q_EMIT formatChanged();
}

QString DocumentState::encodingText() const
{
    if (!m_encodingNote.isEmpty())
        return m_encodingNote;
    return encodingName(m_format.encoding) + (m_format.bom && m_format.encoding == TextEncoding::Utf8 ? QStringLiteral(" with BOM") : QString());
}

} // namespace pw
