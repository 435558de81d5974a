#include "core/long_pass.h"

#include "core/app_state.h"
#include "core/main_window.h"
#include "core/status_line.h"
#include "platform/platform.h"

#include <QProgressBar>

namespace pw {

ProgressStrip::ProgressStrip(bool show) : m_shown(show)
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!m_shown || !main)
        return;
    main->ProgressBar->setValue(0);
    main->ProgressBar->setFixedWidth(qMax(10, main->Picture1->width() - twipsToPixels(240)));
    main->Picture1->show();
}

ProgressStrip::~ProgressStrip()
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!m_shown || !main)
        return;
    main->ProgressBar->setValue(100);
    main->Picture1->hide();
}

void ProgressStrip::step(qint64 done, qint64 total)
{
    const int value = total > 0 ? int(qBound(qint64(0), 100 * done / total, qint64(100))) : 0;
    if (value == m_lastValue)
        return;
    m_lastValue = value;
    if (frmMDIMain *main = frmMDIMain::instance())
        main->ProgressBar->setValue(value);
}

LongPass::LongPass(const QString &statusText, bool showProgress) : m_progress(showProgress)
{
    if (!statusText.isEmpty())
        SetStatusText(statusText);
    ShowWaitCursor();
}

LongPass::~LongPass()
{
    HideWaitCursor();
    if (!m_keepStatus)
        ClearStatusText();
}

void LongPass::step(qint64 done, qint64 total)
{
    m_progress.step(done, total);
}

bool LongPass::escapePressed()
{
    return platform().escapePressed();
}

} // namespace pw
