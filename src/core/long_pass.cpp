#include "core/long_pass.h"

#include "core/app_state.h"
#include "core/main_window.h"
#include "core/status_line.h"
#include "platform/platform.h"

#include <QProgressBar>

namespace pw {

LongPass::LongPass(const QString &statusText, bool showProgress) : m_progress(showProgress)
{
    if (!statusText.isEmpty())
        SetStatusText(statusText);
    ShowWaitCursor();
    frmMDIMain *main = frmMDIMain::instance();
    if (m_progress && main) {
        main->ProgressBar->setValue(0);
        main->ProgressBar->setFixedWidth(qMax(10, main->Picture1->width() - twipsToPixels(240)));
        main->Picture1->show();
    }
}

LongPass::~LongPass()
{
    frmMDIMain *main = frmMDIMain::instance();
    if (m_progress && main) {
        main->ProgressBar->setValue(100);
        main->Picture1->hide();
    }
    HideWaitCursor();
    if (!m_keepStatus)
        ClearStatusText();
}

void LongPass::step(qint64 done, qint64 total)
{
    const int value = total > 0 ? int(qBound(qint64(0), 100 * done / total, qint64(100))) : 100;
    if (value == m_lastValue || !m_progress)
        return;
    m_lastValue = value;
    if (frmMDIMain *main = frmMDIMain::instance())
        main->ProgressBar->setValue(value);
}

bool LongPass::escapePressed()
{
    return platform().escapePressed();
}

} // namespace pw
