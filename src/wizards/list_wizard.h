#pragma once

#include "wizards/list_markup.h"
#include "wizards/read_back.h"
#include "wizards/wizard_conduct.h"

class QCheckBox;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace pw {

// The six buttons of each List Wizard tab.
enum class ListAction { Add, Delete, MoveDown, MoveUp, PlaceList, ClearList };
constexpr int ListActionCount = 6;

// "List Wizard": the entries of a list collected and ordered in a list box on one of four tabs,
// and placed at the caret in one step. It stays open after placing, the tab cleared for the next
// list; "Exit" closes it. Opened with the caret inside a list, it shows that list, and its tab's
// Place puts the list back in its place.
class frmList : public WizardForm
{
    Q_OBJECT

public:
    frmList(Workspace &workspace, QWidget *parent);

    QTabWidget *TabStrip1 = nullptr;
    QWidget *Picture1[ListKindCount] = {};
    // Ordered
    QLineEdit *tbOrderedText = nullptr, *tbOrderedStart = nullptr;
    QRadioButton *opOrderedType[5] = {};
    QListWidget *lstOrdered = nullptr;
    // Unordered
    QLineEdit *tbUnorderedText = nullptr;
    QRadioButton *opUnorderedType[4] = {};
    QListWidget *lstUnordered = nullptr;
    // Menu
    QLineEdit *tbMenuText = nullptr;
    QListWidget *lstMenu = nullptr;
    // Definition
    QPlainTextEdit *tbTerm = nullptr, *tbDefinition = nullptr;
    QCheckBox *ckbCompact = nullptr;
    QListWidget *lstDefinition = nullptr;
    // The 24 list buttons by action and tab (Command2 ... Command25)
    QPushButton *buttons[ListActionCount][ListKindCount] = {};
    QPushButton *Command1 = nullptr; // "Exit"

    void Form_Load() override;
    void TabStrip1_Click();

    // Shared by the four tabs: the selected entry swaps with its neighbour and stays selected.
    static void MoveUp(QListWidget &list);
    static void MoveDown(QListWidget &list);

    // What a tab holds now.
    ListOptions options(ListKind kind) const;
    void Add_Click(ListKind kind);
    void Delete_Click(ListKind kind);
    void Move_Click(ListKind kind, bool up);
    void PlaceList_Click(ListKind kind);
    void ClearList_Click(ListKind kind);

    QListWidget *list(ListKind kind) const;
    QWidget *firstField(ListKind kind) const;

private:
    void buildPages();
    void addEntry(ListKind kind, const ListEntry &entry);
    void showList(const ListOptions &options);

    // The list the caret stood in when the wizard opened: its tab's Place replaces it.
    std::optional<FoundConstruct<ListOptions>> m_found;
};

// mnuListDesign and imgList.
void ShowListWizard(Workspace &workspace, QWidget *parent);

} // namespace pw
