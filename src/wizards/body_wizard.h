#pragma once

#include "wizards/body_tag.h"
#include "wizards/wizard_conduct.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;

namespace pw {

// "Body Background Wizard": the document's body tag, taken apart into colours, a texture and extra
// text, kept as a working copy in lbBodyTag and written back in place of the old one.
class frmBody : public WizardForm
{
    Q_OBJECT

public:
    frmBody(Workspace &workspace, QWidget *parent);

    QLabel *lbBodyTag = nullptr;
    QComboBox *cbTexture = nullptr;
    QPushButton *Command1 = nullptr; // Browse
    QCheckBox *chkBaseURL = nullptr;
    QComboBox *cbJAVAOnLoad = nullptr;
    QLabel *lbColor[4] = {};
    QPushButton *cmdColorChange[4] = {};
    QPushButton *Command2 = nullptr; // Change Background Color
    QPushButton *Command3 = nullptr; // OK
    QPushButton *Command4 = nullptr; // Cancel
    QPushButton *Command5 = nullptr; // Clear Tag

    // The colours the labels show: text colours by index, one common background.
    qint32 textColor(int i) const { return m_text[i]; }
    qint32 backColor() const { return m_back; }

    void Form_Load() override;
    void cbTexture_Change();
    void Command1_Click();
    void cmdColorChange_Click(int i);
    void Command2_Click();
    void Command3_Click();
    void Command5_Click();
    // Cancel, by the button, Escape or the close box: the old tag is left unselected.
    void reject() override;


private:
    void setTag(const QString &tag);
    void showColors();

    qint32 m_text[4] = {};
    qint32 m_back = 0;
};

void ShowBodyWizard(Workspace &workspace, QWidget *parent);

} // namespace pw
