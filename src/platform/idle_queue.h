#pragma once

#include <QList>
#include <QObject>

#include <functional>

namespace pw {

// Work that must not run inside a long pass or under an open box: the autosave tick, a command a
// second start hands over, a termination request. While something is busy the work waits; it runs
// from the event loop once nothing is busy any more, never from inside the code that was busy, so
// that it can't pull a document away from under a caller.
class IdleQueue : public QObject
{
    Q_OBJECT

public:
    // Marks the program busy for its lifetime (a pass, a box, the start).
    class Busy
    {
    public:
        explicit Busy(IdleQueue &queue);
        ~Busy();
        Busy(const Busy &) = delete;
        Busy &operator=(const Busy &) = delete;

    private:
        IdleQueue &m_queue;
    };

    bool isBusy() const { return m_depth > 0; }
    // Runs work now when nothing is busy, else once the busy time has ended.
    void runWhenIdle(std::function<void()> work);

private:
    void drain();

    int m_depth = 0;
    bool m_drainPosted = false;
    QList<std::function<void()>> m_waiting;
};

} // namespace pw
