#pragma once

#include "wizards/wizard_conduct.h"

class QLineEdit;
class QPushButton;

namespace pw {

// What frmRainBow collects, as typed.
struct RainbowOptions {
    QString min = QStringLiteral("1");
    QString max = QStringLiteral("7");
    QString start = QStringLiteral("3");
    QString variance = QStringLiteral("1");
    QString change = QStringLiteral("1");
    QString text;
};

// The checks of the rainbow's fields, in order; StepBelowOne comes behind ChangeNotNumeric.
enum class RainbowFault {
    None, MinNotNumeric, MinRange, MaxNotNumeric, MaxRange, MaxNotGreater, StartNotNumeric, StartRange,
    VarianceNotNumeric, VarianceRange, ChangeNotNumeric, StepBelowOne, NoText, ChangeTooLong,
};
RainbowFault CheckRainbowOptions(const RainbowOptions &options);
QString RainbowMessage(RainbowFault fault);

// The sizes as whole numbers (non-whole ones rounded) and the pieces: "<FONT SIZE=n>", a run of
// `change` characters, "</FONT>", the size walking by the variance between the limits, cut at
// them and turned there. A run never ends between CR and LF, inside a surrogate pair or in front
// of a combining mark: it takes those along. Only for options that passed the checks.
QList<MarkupPiece> RainbowPieces(const RainbowOptions &options);

// "Rainbow Font Wizard": the selection, or a typed text, as a run of font sizes.
class frmRainBow : public WizardForm
{
    Q_OBJECT

public:
    frmRainBow(Workspace &workspace, QWidget *parent);

    QLineEdit *tbMin = nullptr, *tbMax = nullptr, *tbStart = nullptr, *tbVar = nullptr, *tbChange = nullptr;
    QLineEdit *tbText = nullptr;
    QPushButton *Command1 = nullptr; // OK
    QPushButton *Command2 = nullptr; // Cancel

    void Form_Load() override;
    RainbowOptions options() const;
    void Command1_Click();
};

void ShowRainbowWizard(Workspace &workspace, QWidget *parent);

} // namespace pw
