#include "platform/idle_queue.h"

#include <QMetaObject>

namespace pw {

IdleQueue::Busy::Busy(IdleQueue &queue) : m_queue(queue)
{
    ++m_queue.m_depth;
}

IdleQueue::Busy::~Busy()
{
    if (--m_queue.m_depth == 0 && !m_queue.m_waiting.isEmpty() && !m_queue.m_drainPosted) {
        m_queue.m_drainPosted = true;
        QMetaObject::invokeMethod(&m_queue, &IdleQueue::drain, Qt::QueuedConnection);
    }
}

void IdleQueue::runWhenIdle(std::function<void()> work)
{
    if (!isBusy() && m_waiting.isEmpty()) {
        work();
        return;
    }
    m_waiting.append(std::move(work));
}

void IdleQueue::drain()
{
    m_drainPosted = false;
    // A nested loop may deliver this while something is busy again; its end posts another drain.
    while (!isBusy() && !m_waiting.isEmpty())
        m_waiting.takeFirst()();
}

} // namespace pw
