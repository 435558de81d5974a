#pragma once

#include <QString>
#include <QUrl>
#include <QWidget>

class QTextBrowser;
class QToolButton;

namespace pw {

class Workspace;

// The help window: the manual in a browser of its own, with Back, Forward and Contents. It opens
// centred over the main window, and Escape closes it.
class frmHelp : public QWidget
{
    Q_OBJECT

public:
    frmHelp(Workspace &workspace, QWidget *parent);

    QTextBrowser *HelpText = nullptr;
    QToolButton *cmdBack = nullptr;
    QToolButton *cmdForward = nullptr;
    QToolButton *cmdContents = nullptr;

    // Shows file, at anchor when one is given, else at its top.
    void showManual(const QString &file, const QString &anchor = {});
    QUrl home() const { return m_home; }

private:
    void onAnchorClicked(const QUrl &url);

    Workspace &m_workspace;
    QUrl m_home;
};

// The manual: the installed copy when there is one, else the one built into the program.
QString HelpFilePath();

// Opens the one help window of parent (made on first use, reused after) at the manual's anchor.
frmHelp *ShowHelpWindow(Workspace &workspace, QWidget *parent, const QString &file = HelpFilePath(),
                        const QString &anchor = {});

// Help contents: CMDialog1 shows the manual with help command 3, at its table of contents.
void HelpContents(Workspace &workspace, QWidget *parent);

} // namespace pw
