#include "core/resumable_walk.h"

#include <QPointer>

namespace pw {

void ResumableWalk::start()
{
    if (m_advancing)
        return;
    m_running = true;
    begin();
    run();
}

void ResumableWalk::resume()
{
    if (isWaiting())
        run();
}

void ResumableWalk::stop()
{
    if (!std::exchange(m_running, false))
        return;
    Q_EMIT finished(false);
}

void ResumableWalk::run()
{
    const QPointer<ResumableWalk> self(this);
    m_advancing = true;
    const Step step = advance();
    if (!self)
        return;
    m_advancing = false;
    if (!m_running)
        return; // stopped while advancing
    if (step == Step::WaitForUser) {
        Q_EMIT stopped();
        return;
    }
    m_running = false;
    Q_EMIT finished(true);
}

} // namespace pw
