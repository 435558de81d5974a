#include "core/long_pass.h"

#include "core/status_presenter.h"
#include "core/workspace.h"
#include "platform/platform.h"

namespace pw {

ProgressStrip::ProgressStrip(StatusPresenter &status, bool show) : m_status(status), m_shown(show)
{
    if (m_shown)
        m_status.showProgress();
}

ProgressStrip::~ProgressStrip()
{
    if (m_shown)
        m_status.hideProgress();
}

void ProgressStrip::step(qint64 done, qint64 total)
{
    // Most steps leave the value as it is: they cost a comparison, not a division.
    if (total == m_total && done >= m_valueFrom && done < m_nextFrom)
        return;
    const int value = total > 0 ? int(qBound(qint64(0), 100 * done / total, qint64(100))) : 0;
    m_total = total;
    // The stretch of done giving this value: 100 * done / total == value.
    m_valueFrom = total > 0 && value < 100 ? (value * total + 99) / 100 : done;
    m_nextFrom = total > 0 && value < 100 ? ((value + 1) * total + 99) / 100 : done;
    if (value == std::exchange(m_lastValue, value))
        return;
    m_status.setProgress(value);
}

LongPass::LongPass(Workspace &workspace, const QString &statusText, bool showProgress)
    : m_workspace(workspace), m_busy(workspace.platform.idle()), m_progress(workspace.status, showProgress)
{
    if (!statusText.isEmpty())
        m_workspace.status.SetPassStatusText(statusText);
    m_workspace.status.ShowWaitCursor();
}

LongPass::~LongPass()
{
    m_workspace.status.HideWaitCursor();
    m_workspace.status.ClearStatusText();
}

void LongPass::step(qint64 done, qint64 total)
{
    m_progress.step(done, total);
}

bool LongPass::progressShown() const
{
    return m_workspace.status.progressShown();
}

bool LongPass::escapePressed()
{
    constexpr qint64 PollEvery = 20; // ms
    const qint64 now = m_workspace.platform.ticks();
    if (m_polled && now - m_lastPoll < PollEvery)
        return false;
    m_polled = true;
    m_lastPoll = now;
    m_workspace.status.pollProgress();
    return m_workspace.platform.escapePressed();
}

void LongPass::pauseWaitCursor()
{
    m_workspace.status.HideWaitCursor();
}

void LongPass::resumeWaitCursor()
{
    m_workspace.status.ShowWaitCursor();
}

} // namespace pw
