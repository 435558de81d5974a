#pragma once

#include "wizards/wizard_conduct.h"

class QCheckBox;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace pw {

// What frmHR collects, as typed.
struct HrOptions {
    QString size;
    QString width;
    bool widthInPixels = false;
    int alignment = 0; // 0 default, 1 left, 2 right, 3 center
    bool noShade = false;
};

// The field a rule's options fail at, checked in this order.
enum class HrFault { None, Size, Width };
HrFault CheckHrOptions(const HrOptions &options);

// "<HR" with SIZE, WIDTH (a per cent sign unless in pixels), ALIGN and NOSHADE as given, in that
// order, no value quoted.
QString HrTag(const HrOptions &options);

// "Define <HR>": a horizontal rule with its attributes.
class frmHR : public WizardForm
{
    Q_OBJECT

public:
    frmHR(Workspace &workspace, QWidget *parent);

    QLineEdit *tbSize = nullptr;
    QLineEdit *tbWidth = nullptr;
    QCheckBox *chkWidth = nullptr;
    QRadioButton *opAlignment[4] = {};
    QCheckBox *chkNoShade = nullptr;
    QPushButton *Command1 = nullptr; // OK
    QPushButton *Command2 = nullptr; // Cancel

    HrOptions options() const;
    void Command1_Click();
};

// mnuHRDefine: asks first about a selection; at No the dialog doesn't open.
void ShowRuleWizard(Workspace &workspace, frmDoc &document, QWidget *parent);

} // namespace pw
