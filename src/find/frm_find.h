#pragma once

#include <QDialog>
#include <QString>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

namespace pw {

class FindWalk;
class Workspace;

// Find: steps through the hits of a text in the current document or, with "- All Documents", in
// all open documents. A tool window over the documents, not modal: it stays open after a hit, and
// each OK goes on to the next one.
class frmFind : public QDialog
{
    Q_OBJECT

public:
    frmFind(Workspace &workspace, QWidget *parent);
    ~frmFind() override;

    QLabel *Label1 = nullptr;
    QLineEdit *tbFind = nullptr;
    QCheckBox *chkCase = nullptr;
    QCheckBox *chkGlobal = nullptr;
    QPushButton *Command1 = nullptr; // OK: find next
    QPushButton *Command2 = nullptr; // Cancel

    // The last hit as text; "0" after a failed search; empty when new or tbFind has changed.
    QString Tag;
    // tbFind as it was when it last lost the focus; kept for the run.
    static QString LastFindText;

    void Form_Load();
    void Command1_Click();
    void Command2_Click();
    void tbFind_Change();
    void tbFind_LostFocus();
    bool unloaded() const { return m_unloaded; }

protected:
    void changeEvent(QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void reject() override;

private:
    void Form_Activate();
    void Form_Unload();
    void notFound();

    Workspace &m_workspace;
    FindWalk *m_walk = nullptr;
    bool m_unloaded = false;
};

// Opens Find over parent, centred; brings it to the front when it is open already.
void ShowFind(Workspace &workspace, QWidget *parent);
// The Find dialog open over parent, or none.
frmFind *FindDialog(QWidget *parent);

} // namespace pw
