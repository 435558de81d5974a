#pragma once

#include <QPointer>
#include <QWidget>

class QPlainTextEdit;

namespace pw {

class Workspace;

// What the browser test fills before it shows the log.
QString &ErrorLogText();

// "Error Log": a throw-away view of what went wrong in a browser test. It closes as soon as the
// focus moves to anything else of this program (a switch to another program leaves it open, so
// the user can read it beside the browser) and hands the focus back to the document.
class frmErrorLog : public QWidget
{
    Q_OBJECT

public:
    frmErrorLog(Workspace &workspace, QWidget *parent);

    QPlainTextEdit *tbErrorText = nullptr;

    void Form_Load();

protected:
    void resizeEvent(QResizeEvent *event) override;
    void closeEvent(QCloseEvent *event) override;

private:
    void Form_Resize();
    void tbErrorText_LostFocus(QWidget *now);
    void Form_Unload();

    Workspace &m_workspace;
    bool m_unloaded = false;
};

// Shows the one log window over parent with ErrorLogText, focused; it is deleted when it closes.
frmErrorLog *ShowErrorLog(Workspace &workspace, QWidget *parent);

} // namespace pw
