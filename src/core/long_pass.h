#pragma once

#include "platform/idle_queue.h"

#include <QString>

namespace pw {

class StatusPresenter;
class Workspace;

// The progress strip under the documents: with `show`, shown at 0 for its lifetime and hidden at 100
// at its end; without, it only sets the value of a strip someone else shows.
class ProgressStrip
{
public:
    explicit ProgressStrip(StatusPresenter &status, bool show = true);
    ~ProgressStrip();
    ProgressStrip(const ProgressStrip &) = delete;
    ProgressStrip &operator=(const ProgressStrip &) = delete;

    // After each unit of work: the integer part of 100 x done / total.
    void step(qint64 done, qint64 total);

private:
    StatusPresenter &m_status;
    bool m_shown;
    int m_lastValue = -1;
    qint64 m_total = -1;
    qint64 m_valueFrom = 0, m_nextFrom = 0; // done in [from, next) gives m_lastValue again
};

// A long pass: status text, wait cursor and progress strip for its lifetime, Escape polled on
// request. Everything it showed is reset on every way out of the scope. While it runs, the program
// is busy: the autosave tick, a hand-over and a termination request wait for its end.
class LongPass
{
public:
    explicit LongPass(Workspace &workspace, const QString &statusText, bool showProgress = true);
    ~LongPass();
    LongPass(const LongPass &) = delete;
    LongPass &operator=(const LongPass &) = delete;

    // After each unit of work: the integer part of 100 x done / total.
    void step(qint64 done, qint64 total);
    // True when the user pressed Escape since the last poll. Polled by the platform's clock, at
    // most every 20 ms, however often a pass asks; the first poll of a pass always happens.
    bool escapePressed();
    // The strip has appeared: the pass has run long enough to be seen.
    bool progressShown() const;
    // No hourglass over a box the pass shows; it comes back after.
    void pauseWaitCursor();
    void resumeWaitCursor();

private:
    Workspace &m_workspace;
    IdleQueue::Busy m_busy;
    ProgressStrip m_progress;
    qint64 m_lastPoll = 0;
    bool m_polled = false;
};

} // namespace pw
