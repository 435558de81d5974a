#pragma once

#include "find/find_walk.h"

#include <QDialog>
#include <QString>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace pw {

class Workspace;

// Replace: replaces a text in the current document or, with "- All Documents", in all open ones,
// without asking (Replace All) or asking at each hit (Verify). A tool window over the documents,
// not modal; each action runs to its end, tells the count and closes the dialog.
class frmReplace : public QDialog
{
    Q_OBJECT

public:
    frmReplace(Workspace &workspace, QWidget *parent);
    ~frmReplace() override;

    QLabel *Label1 = nullptr;
    QLineEdit *tbFind = nullptr;
    QLabel *Label2 = nullptr;
    QLineEdit *tbReplace = nullptr;
    QCheckBox *ckCase = nullptr;
    QCheckBox *chkGlobal = nullptr;
    QPushButton *Command2 = nullptr; // Replace All
    QPushButton *Command3 = nullptr; // Verify
    QPushButton *Command1 = nullptr; // Cancel

    // The search string of the last action; kept for the run, apart from Find's.
    static QString LastReplaceFind;

    void Form_Load();
    void Command1_Click();
    void Command2_Click();
    void Command3_Click();
    bool unloaded() const { return m_unloaded; }

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void reject() override;

private:
    void Form_Unload();
    // The dialog\'s search, which LastReplaceFind remembers.
    SearchRequest takeRequest();
    void reportCount(int count);

    Workspace &m_workspace;
    bool m_unloaded = false;
    bool m_running = false;
};

// Opens Replace over parent, centred; brings it to the front when it is open already.
void ShowReplace(Workspace &workspace, QWidget *parent);
// The Replace dialog open over parent, or none.
frmReplace *ReplaceDialog(QWidget *parent);

} // namespace pw
