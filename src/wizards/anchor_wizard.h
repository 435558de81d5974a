#pragma once

#include "wizards/wizard_conduct.h"

#include <array>

class QLineEdit;
class QPushButton;

namespace pw {

// <A NAME="name">, no closing tag.
QString AnchorTag(const QString &name);

// Keeps an anchor name among a document's LocalNames: looked for at positions 1 to 20 as a whole
// string, case included; a new one goes to position 1 and the others move down, so that position
// 21 takes the oldest, which nothing reads: the list keeps twenty names.
template<size_t N>
void RememberLocalName(std::array<QString, N> &names, const QString &name)
{
    static_assert(N == 22, "positions 0 to 21");
    for (size_t i = 1; i <= 20; ++i)
        if (names[i] == name)
            return;
    for (size_t i = 20; i >= 1; --i)
        names[i + 1] = names[i];
    names[1] = name;
}

// "Anchor Name": places a named anchor at the caret and remembers its name for the document's links.
class frmAnchor : public WizardForm
{
    Q_OBJECT

public:
    frmAnchor(Workspace &workspace, QWidget *parent);

    QLineEdit *tbAnchor = nullptr;
    QPushButton *Command1 = nullptr; // OK
    QPushButton *Command2 = nullptr; // Cancel

    void Command1_Click();
};

// mnuHTMLName and imgAnchorName: asks first about a selection; at No the dialog doesn't open.
void ShowAnchorWizard(Workspace &workspace, frmDoc &document, QWidget *parent);

} // namespace pw
