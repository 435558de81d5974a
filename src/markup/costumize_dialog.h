#pragma once

#include <QDialog>

#include <array>

class QButtonGroup;
class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace pw {

class Workspace;

// "Customize Function Keys": the twelve keys' tags, edited live in the workspace's table (there is
// no Cancel; the settings keep them when the program ends). Erasing a key's front tag switches it
// off. Closing it any way (OK, Escape, the close box) first keeps what the focused box holds.
class frmCostumize : public QDialog
{
    Q_OBJECT

public:
    frmCostumize(Workspace &workspace, QWidget *parent = nullptr);

    QGroupBox *Frame1 = nullptr;
    std::array<QRadioButton *, 12> opKey{};
    QLabel *Label1 = nullptr;
    QLineEdit *tbFrontTag = nullptr;
    QLabel *Label2 = nullptr;
    QLineEdit *tbFollowingTag = nullptr;
    QCheckBox *chkFrontCRLF = nullptr;
    QCheckBox *chkFollowCRLF = nullptr;
    std::array<QRadioButton *, 2> opReplace{};
    QGroupBox *Frame2 = nullptr;
    std::array<QRadioButton *, 3> opCursorPlace{};
    QPushButton *Command1 = nullptr;

    int CurrentKey = 0;

    void ShowKey(int index);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void reject() override;

private:
    void Form_Load();
    void opKey_Click(int index);
    void tbFrontTag_LostFocus();
    void tbFollowingTag_LostFocus();
    void Command1_Click();
    void Form_Unload();
    void showKeyCaption(int index);
    void lostFocusOf(QObject *control);

    Workspace &m_workspace;
    QButtonGroup *m_replace = nullptr;
    QButtonGroup *m_cursor = nullptr;
    bool m_unloaded = false;
};

// mnuOptionCostumize, mnuOptionComstumize: the dialog, centred and modal (without a loop of its own).
frmCostumize *ShowCostumize(Workspace &workspace, QWidget *parent);

} // namespace pw
