#include "core/status_presenter.h"

#include "core/app_state.h"
#include "core/document_state.h"
#include "core/editing_surface.h"
#include "core/status_line.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QProgressBar>
#include <QStatusBar>

#include <memory>

namespace pw {

namespace {
void setIfChanged(QLabel &label, const QString &text)
{
    if (label.text() != text)
        label.setText(text);
}
} // namespace

StatusPresenter::StatusPresenter(QStatusBar &bar, QLabel &message, QLabel &line, QLabel &size, QLabel &encoding,
                                 QWidget &strip, QProgressBar &progress, QObject *parent)
    : QObject(parent), m_bar(bar), m_message(message), m_line(line), m_size(size), m_encoding(encoding),
      m_strip(strip), m_progress(progress)
{
    m_clock = [timer = std::make_shared<QElapsedTimer>()] {
        if (!timer->isValid())
            timer->start();
        return timer->elapsed();
    };
    follow(nullptr);
}

void StatusPresenter::SetStatusText(const QString &text)
{
    m_messageWaiting = false;
    m_message.setText(QLatin1Char(' ') + text);
    m_bar.repaint();
}

void StatusPresenter::SetPassStatusText(const QString &text)
{
    m_message.setText(QLatin1Char(' ') + text);
    m_messageStart = m_clock();
    m_messageWaiting = true;
}

void StatusPresenter::ClearStatusText()
{
    m_messageWaiting = false;
    if (!m_message.text().isEmpty())
        m_message.clear();
}

QString StatusPresenter::StatusText() const
{
    return m_message.text();
}

void StatusPresenter::follow(EditingSurface *surface)
{
    if (surface && surface == m_surface)
        return;
    for (const QMetaObject::Connection &c : std::as_const(m_connections))
        disconnect(c);
    m_connections.clear();
    m_surface = surface;
    if (!surface) {
        setIfChanged(m_size, QStringLiteral("Size: 0"));
        setIfChanged(m_line, QStringLiteral("Line: 0 "));
        return;
    }
    m_connections << connect(surface, &EditingSurface::Change, this, &StatusPresenter::onChange)
                  << connect(surface, &EditingSurface::SelChange, this, &StatusPresenter::showLine);
    showSize();
    showLine();
}

void StatusPresenter::followFormat(const DocumentState *state)
{
    disconnect(m_formatConnection);
    m_encoding.setVisible(state != nullptr);
    if (!state)
        return;
    const auto show = [this, state] { setIfChanged(m_encoding, state->encodingText()); };
    m_formatConnection = connect(state, &DocumentState::formatChanged, this, show);
    show();
}

void StatusPresenter::onChange()
{
    showSize();
    showLine();
    ClearStatusText();
}

void StatusPresenter::showLine()
{
    if (m_surface)
        setIfChanged(m_line, LineText(m_surface->GetLineFromChar(m_surface->SelStart() + 1) + 1));
}

void StatusPresenter::showSize()
{
    if (m_surface)
        setIfChanged(m_size, SizeText(m_surface->TextLength()));
}

namespace {
constexpr qint64 ProgressAppearsAfter = 150; // ms: a quick pass shows no strip at all
constexpr qint64 ProgressRepaintEvery = 50;  // ms
} // namespace

void StatusPresenter::showProgress()
{
    m_progressStart = m_clock();
    m_progressValue = 0;
    m_progressWanted = true;
}

void StatusPresenter::setProgress(int value)
{
    m_progressValue = value;
    const qint64 now = m_clock();
    if (m_messageWaiting && now - m_messageStart >= ProgressAppearsAfter) {
        m_messageWaiting = false;
        m_bar.repaint();
    }
    if (!m_progressWanted)
        return;
    if (!m_progressShown) {
        if (now - m_progressStart < ProgressAppearsAfter)
            return;
        m_progress.setValue(value);
        m_progress.setFixedWidth(qMax(10, m_strip.width() - twipsToPixels(240)));
        m_strip.show();
        m_progressShown = true;
        m_progressPainted = now;
        return;
    }
    // QProgressBar repaints at once on a new value.
    if (value != m_progress.value() && now - m_progressPainted >= ProgressRepaintEvery) {
        m_progress.setValue(value);
        m_progressPainted = now;
    }
}

void StatusPresenter::hideProgress()
{
    m_progressWanted = false;
    if (std::exchange(m_progressShown, false))
        m_strip.hide();
    m_progress.setValue(100);
}

void StatusPresenter::ShowWaitCursor()
{
    if (std::exchange(m_waiting, true))
        return;
    QApplication::setOverrideCursor(Qt::WaitCursor);
}

void StatusPresenter::HideWaitCursor()
{
    if (std::exchange(m_waiting, false))
        QApplication::restoreOverrideCursor();
}

} // namespace pw
