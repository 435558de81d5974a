#include "core/status_line.h"

#include "core/app_state.h"
#include "core/main_window.h"

#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QStatusBar>

namespace pw {

void SetStatusText(const QString &text)
{
    if (frmMDIMain *main = frmMDIMain::instance()) {
        main->Panel1->setText(QLatin1Char(' ') + text);
        main->StatusBar1->repaint();
    }
}

void ClearStatusText()
{
    if (frmMDIMain *main = frmMDIMain::instance())
        main->Panel1->clear();
}

QString StatusText()
{
    frmMDIMain *main = frmMDIMain::instance();
    return main ? main->Panel1->text() : QString();
}

static bool g_waiting = false;

void ShowWaitCursor()
{
    if (g_waiting)
        return;
    g_waiting = true;
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

void HideWaitCursor()
{
    if (!g_waiting)
        return;
    g_waiting = false;
    QApplication::restoreOverrideCursor();
}

void CenterForm(QWidget *form)
{
    const QScreen *screen = form->screen() ? form->screen() : QGuiApplication::primaryScreen();
    const QRect area = screen->availableGeometry();
    const QSize size = form->frameSize().isValid() ? form->frameSize() : form->size();
    form->move(area.left() + (area.width() - size.width()) / 2,
               area.top() + int((area.height() - size.height()) * 0.8 / 2));
}

QString SizeText(int length)
{
    return QStringLiteral("Size: ") + FormatNumberPicture(length);
}

QString LineText(int line)
{
    return QStringLiteral("Line: ") + FormatNumberPicture(line) + QLatin1Char(' ');
}

} // namespace pw
