#pragma once

#include "wizards/form_markup.h"
#include "wizards/read_back.h"
#include "wizards/wizard_conduct.h"

class QCheckBox;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QScrollBar;
class QTabWidget;

namespace pw {

// A number box and its bar, 0 to 32767, kept in step: 0 and the empty box both mean unset. A
// letter wipes the box, a fraction rounds, a number out of range is held at the nearest end. The
// bar follows the box without writing back, so the caret never jumps; the box takes the bar's whole
// number when it is left, and follows the bar when the bar is moved.
class NumberPair : public QObject
{
    Q_OBJECT

public:
    NumberPair(QLineEdit *box, QScrollBar *bar);
    // The box's number for the markup: empty when unset.
    QString text() const;

private:
    void box_Change(const QString &text);
    void bar_Change(int value);
    void box_LostFocus();
    void follow(int value);

    QLineEdit *m_box;
    QScrollBar *m_bar;
    bool m_following = false; // the bar is being set from the box
};

// "Form Wizard": one tab per kind of form element, each with a Place and a "&Clear Tab" button.
// It stays open until "&Done": each Place writes at the caret, which stays behind it, and clears
// its tab for the next element. Opened for one kind, it shows that kind's tab only.
class frmForm : public WizardForm
{
    Q_OBJECT

public:
    frmForm(Workspace &workspace, QWidget *parent, FormKind kind);

    QTabWidget *TabStrip1 = nullptr;
    QWidget *Picture1[FormKindCount] = {};
    // Form
    QLineEdit *tbAction = nullptr, *tbName = nullptr, *tbEncType = nullptr, *tbFormExtraTag = nullptr;
    QRadioButton *opMethod[2] = {}; // Post, Get
    // Checkbox
    QLineEdit *tbCheckboxName = nullptr, *tbCheckboxValue = nullptr, *tbCheckboxText = nullptr;
    QLineEdit *tbCheckboxExtraTag = nullptr;
    QCheckBox *ckbCheckboxChecked = nullptr;
    // Hidden
    QLineEdit *tbHiddenName = nullptr, *tbHiddenValue = nullptr, *tbHiddenExtraTag = nullptr;
    // Option
    QLineEdit *tbOptionText = nullptr, *tbOptionExtraTag = nullptr;
    QCheckBox *ckbOptionSelected = nullptr;
    // Password
    QLineEdit *tbPasswordName = nullptr, *tbPasswordValue = nullptr, *tbPasswordExtraTag = nullptr;
    QLineEdit *tbPasswordSize = nullptr;
    QScrollBar *hsPasswordSize = nullptr;
    // Radio
    QLineEdit *tbRadioName = nullptr, *tbRadioValue = nullptr, *tbRadioText = nullptr,
              *tbRadioExtraTag = nullptr;
    QCheckBox *ckbRadioChecked = nullptr;
    // Reset
    QLineEdit *tbResetValue = nullptr, *tbResetExtraTag = nullptr;
    // Select
    QLineEdit *tbSelectName = nullptr, *tbSelectSize = nullptr, *tbSelectOptionText = nullptr;
    QScrollBar *hsSelectSize = nullptr;
    QCheckBox *ckbSelectMultiple = nullptr, *ckbSelectOptionSelected = nullptr;
    QListWidget *lstSelectionOptions = nullptr;
    QPushButton *Command18 = nullptr, *Command19 = nullptr, *Command20 = nullptr; // Add, Remove, Clear Options
    // Submit
    QLineEdit *tbSubmitValue = nullptr, *tbSubmitExtraTag = nullptr;
    // Text
    QLineEdit *tbTextName = nullptr, *tbTextValue = nullptr, *tbTextExtraTag = nullptr;
    QLineEdit *tbTextSize = nullptr, *tbMaxLength = nullptr;
    QScrollBar *hsTextSize = nullptr, *hsMaxLength = nullptr;
    // Textarea
    QLineEdit *tbTextAreaName = nullptr, *tbTextAreaExtraTag = nullptr;
    QLineEdit *tbTextAreaRows = nullptr, *tbTextAreaCols = nullptr;
    QPlainTextEdit *tbTextAreaValue = nullptr;
    QScrollBar *hsTextAreaRows = nullptr, *hsTextAreaCols = nullptr;
    // Each kind's Place and "&Clear Tab" buttons, by kind - 1 (Command3 ... Command26)
    QPushButton *placeButton[FormKindCount] = {};
    QPushButton *clearButton[FormKindCount] = {};
    QPushButton *Command1 = nullptr; // "&Done"

    FormKind kind() const { return m_kind; }
    void Form_Load() override;
    void TabStrip1_Click();

    // What a kind's tab holds now.
    FormElementOptions options(FormKind kind) const;
    // The Place buttons: checked, written at the caret, the tab cleared.
    void Place_Click(FormKind kind);
    // The "&Clear Tab" buttons: the tab back to empty, the focus on its first field.
    void ClearTab_Click(FormKind kind);
    void Command18_Click(); // Add an option
    void Command19_Click(); // Remove the selected option
    void Command20_Click(); // Clear Options

private:
    void buildPages();
    QWidget *firstField(FormKind kind) const;
    QWidget *faultField(FormKind kind, FormField field) const;
    FormKind kindOfTab(int index) const;

    FormKind m_kind;
    // The select the caret stood in when the wizard opened for a Select: Place Select replaces it.
    std::optional<FoundConstruct<FormElementOptions>> m_found;
    NumberPair *m_passwordSize = nullptr, *m_selectSize = nullptr, *m_textSize = nullptr;
    NumberPair *m_maxLength = nullptr, *m_rows = nullptr, *m_cols = nullptr;
};

// A kind's tab caption: "Form", "Checkbox", ...
QString FormKindCaption(FormKind kind);

// The Form menu's items, Define Form and imgForm open the wizard on a kind: Form (all tabs) or the
// one element named.
void ShowFormWizard(Workspace &workspace, QWidget *parent, FormKind kind);

} // namespace pw
