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

} // namespace pw
