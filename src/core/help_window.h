#pragma once

#include <QString>
#include <QUrl>
#include <QWidget>

class QTextBrowser;
class QToolButton;

namespace pw {

// The help window: the manual in a browser of its own, with Back, Forward and Contents.
class frmHelp : public QWidget
{
    Q_OBJECT

public:
    explicit frmHelp(QWidget *parent = nullptr);

    QTextBrowser *HelpText = nullptr;
    QToolButton *cmdBack = nullptr;
    QToolButton *cmdForward = nullptr;
    QToolButton *cmdContents = nullptr;

    // Shows file, at anchor when one is given, else at its top.
    void showManual(const QString &file, const QString &anchor = {});
    QUrl home() const { return m_home; }

private:
    void onAnchorClicked(const QUrl &url);

    QUrl m_home;
};

// The manual: the installed copy when there is one, else the one built into the program.
QString HelpFilePath();

// Opens the one help window (made on first use, reused after) at the manual's anchor.
frmHelp *ShowHelpWindow(const QString &file = HelpFilePath(), const QString &anchor = {});
frmHelp *HelpWindow();

// Help contents: CMDialog1 shows the manual with help command 3, at its table of contents.
void HelpContents();

} // namespace pw
