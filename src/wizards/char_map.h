#pragma once

#include "wizards/wizard_conduct.h"

class QListWidget;
class QListWidgetItem;
class QPushButton;
class QRadioButton;

namespace pw {

// The 96 entries of the upper half of Latin-1, codes 160 to 255: the character, " - ", "&#code;"
// (positions 5 to 10), and for the codes with an entity name two blanks and "&name;" (from 13).
QStringList CharMapEntries();
// What a double click on an entry places: from position 13 when the entry has a name and the
// descriptive code is chosen, else the six characters from position 5.
QString CharMapCode(const QString &entry, bool descriptive);

// "Character Map": double clicks place character codes; it stays open until Done.
class frmChar : public WizardForm
{
    Q_OBJECT

public:
    frmChar(Workspace &workspace, QWidget *parent);

    QListWidget *lstChar = nullptr;
    QRadioButton *Option1[2] = {}; // 0 Number code, 1 Descriptive code
    QPushButton *Command1 = nullptr; // Done

    void Form_Load() override;
    void lstChar_DblClick();
};

void ShowCharMap(Workspace &workspace, QWidget *parent);

} // namespace pw
