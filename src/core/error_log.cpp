#include "core/error_log.h"

#include "core/app_state.h"
#include "core/status_line.h"
#include "core/workspace.h"

#include <QApplication>
#include <QCloseEvent>
#include <QPlainTextEdit>

namespace pw {

namespace {

// The size the window is drawn at, before Form_Load takes it to three quarters.
constexpr QSize DesignSize(640, 420);

} // namespace

QString &ErrorLogText()
{
    static QString text;
    return text;
}

frmErrorLog::frmErrorLog(Workspace &workspace, QWidget *parent)
    : QWidget(parent, Qt::Window), m_workspace(workspace)
{
    setObjectName(QStringLiteral("frmErrorLog"));
    setWindowTitle(QStringLiteral("Error Log"));
    setAttribute(Qt::WA_DeleteOnClose);
    tbErrorText = new QPlainTextEdit(this);
    tbErrorText->setObjectName(QStringLiteral("tbErrorText"));
    tbErrorText->setLineWrapMode(QPlainTextEdit::NoWrap);
    resize(DesignSize);
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget *, QWidget *now) { tbErrorText_LostFocus(now); });
}

void frmErrorLog::Form_Load()
{
    // The box shows line ends, not carriage returns.
    QString text = QStringLiteral("Error log:") + LineEnd + ErrorLogText();
    tbErrorText->setPlainText(text.replace(LineEnd, QStringLiteral("\n")));
    resize(width() * 3 / 4, height() * 3 / 4);
    Form_Resize();
}

void frmErrorLog::Form_Resize()
{
    if (isMinimized() || contentsRect().height() == 0)
        return;
    tbErrorText->setGeometry(contentsRect());
}

void frmErrorLog::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    Form_Resize();
}

// Focus gone to nothing is a switch to another program (the browser): the log stays for reading.
void frmErrorLog::tbErrorText_LostFocus(QWidget *now)
{
    if (!now || now == this || isAncestorOf(now) || m_unloaded)
        return;
    close();
}

void frmErrorLog::closeEvent(QCloseEvent *event)
{
    QWidget::closeEvent(event);
    if (event->isAccepted())
        Form_Unload();
}

void frmErrorLog::Form_Unload()
{
    m_unloaded = true;
    hide();
    m_workspace.FocusCurrentDocument();
}

frmErrorLog *ShowErrorLog(Workspace &workspace, QWidget *parent)
{
    if (auto *old = parent ? parent->findChild<frmErrorLog *>(QString(), Qt::FindDirectChildrenOnly) : nullptr)
        old->close();
    auto *log = new frmErrorLog(workspace, parent);
    log->Form_Load();
    CenterOver(log, parent);
    log->show();
    log->raise();
    log->activateWindow();
    log->tbErrorText->setFocus();
    return log;
}

} // namespace pw
