#pragma once

#include "wizards/wizard_conduct.h"

class QLineEdit;
class QPushButton;
class QScrollBar;

namespace pw {

// <BASEFONT SIZE="size">.
QString BaseFontTag(const QString &size);

// "BaseFont": a base font size from 1 to 7, chosen on the bar. Enter presses Cancel, the default.
class frmBaseFont : public WizardForm
{
    Q_OBJECT

public:
    frmBaseFont(Workspace &workspace, QWidget *parent);

    QLineEdit *tbSize = nullptr; // read only: written by HScroll1_Change alone
    QScrollBar *HScroll1 = nullptr;
    QPushButton *Command1 = nullptr; // OK
    QPushButton *Command2 = nullptr; // Cancel

    void Form_Load() override;
    void HScroll1_Change(int value);
    void Command1_Click();
};

// mnuFontBaseFont: opens at once; the question about a selection comes at OK.
void ShowBaseFontWizard(Workspace &workspace, QWidget *parent);

} // namespace pw
