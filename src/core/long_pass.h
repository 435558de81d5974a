#pragma once

#include <QString>

namespace pw {

// The progress strip under the documents: with `show`, shown at 0 for its lifetime and hidden at 100
// at its end; without, it only sets the value of a strip someone else shows.
class ProgressStrip
{
public:
    explicit ProgressStrip(bool show = true);
    ~ProgressStrip();
    ProgressStrip(const ProgressStrip &) = delete;
    ProgressStrip &operator=(const ProgressStrip &) = delete;

    // After each unit of work: the integer part of 100 x done / total.
    void step(qint64 done, qint64 total);

private:
    bool m_shown;
    int m_lastValue = -1;
};

// A long pass: status text, wait cursor and progress strip for its lifetime, Escape polled on
// request. Everything it showed is reset on every way out of the scope.
class LongPass
{
public:
    explicit LongPass(const QString &statusText, bool showProgress = true);
    ~LongPass();
    LongPass(const LongPass &) = delete;
    LongPass &operator=(const LongPass &) = delete;

    // After each unit of work: the integer part of 100 x done / total.
    void step(qint64 done, qint64 total);
    // True when the user pressed Escape since the last poll.
    bool escapePressed();
    // Leaves the status text standing when the pass ends.
    void keepStatusText() { m_keepStatus = true; }

private:
    ProgressStrip m_progress;
    bool m_keepStatus = false;
};

} // namespace pw
