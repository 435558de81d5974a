#include "wizards/list_wizard.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/workspace.h"
#include "platform/message_box.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace pw {

namespace {

const char *const TabCaptions[ListKindCount] = {"Ordered", "Unordered", "Menu", "Definition"};
const char *const ActionCaptions[ListActionCount] = {"Add",     "Delete",     "Move Down",
                                                     "Move Up", "Place List", "Clear List"};
const int ButtonNumbers[ListActionCount][ListKindCount] = {
    {2, 13, 19, 20}, {3, 12, 18, 21}, {4, 11, 17, 22}, {5, 10, 16, 23}, {6, 9, 15, 24}, {7, 8, 14, 25},
};
constexpr int TermRole = Qt::UserRole;
constexpr int DefinitionRole = Qt::UserRole + 1;

template<typename W, typename... Args>
W *named(const QString &name, Args &&...args)
{
    auto *widget = new W(std::forward<Args>(args)...);
    widget->setObjectName(name);
    return widget;
}

QString linesOf(const QPlainTextEdit *box)
{
    return box->toPlainText().replace(QLatin1Char('\n'), LineEnd);
}

QGroupBox *typeFrame(QRadioButton **options, int count, const char *const *captions, const QString &name)
{
    auto *frame = new QGroupBox(QStringLiteral("Type"));
    auto *layout = new QVBoxLayout(frame);
    for (int i = 0; i < count; ++i) {
        options[i] = named<QRadioButton>(name + QStringLiteral("(%1)").arg(i), QLatin1String(captions[i]));
        layout->addWidget(options[i]);
    }
    options[0]->setChecked(true);
    return frame;
}

} // namespace

frmList::frmList(Workspace &workspace, QWidget *parent)
    : WizardForm(workspace, parent, QStringLiteral("List Wizard"))
{
    buildPages();
    Command1 = named<QPushButton>(QStringLiteral("Command1"), QStringLiteral("Exit"));
    layOutTabs(TabStrip1, Command1);

    for (int k = 0; k < ListKindCount; ++k) {
        const auto kind = ListKind(k);
        connect(buttons[int(ListAction::Add)][k], &QPushButton::clicked, this,
                [this, kind] { Add_Click(kind); });
        connect(buttons[int(ListAction::Delete)][k], &QPushButton::clicked, this,
                [this, kind] { Delete_Click(kind); });
        connect(buttons[int(ListAction::MoveDown)][k], &QPushButton::clicked, this,
                [this, kind] { Move_Click(kind, false); });
        connect(buttons[int(ListAction::MoveUp)][k], &QPushButton::clicked, this,
                [this, kind] { Move_Click(kind, true); });
        connect(buttons[int(ListAction::PlaceList)][k], &QPushButton::clicked, this,
                [this, kind] { PlaceList_Click(kind); });
        connect(buttons[int(ListAction::ClearList)][k], &QPushButton::clicked, this,
                [this, kind] { ClearList_Click(kind); });
    }
    // A type chosen, typing goes on in the tab's text box.
    for (QRadioButton *option : opOrderedType)
        connect(option, &QRadioButton::toggled, this, [this](bool on) { if (on) tbOrderedText->setFocus(); });
    for (QRadioButton *option : opUnorderedType)
        connect(option, &QRadioButton::toggled, this, [this](bool on) { if (on) tbUnorderedText->setFocus(); });
    connect(Command1, &QPushButton::clicked, this, &frmList::unload);
    connect(TabStrip1, &QTabWidget::currentChanged, this, &frmList::TabStrip1_Click);
}

void frmList::buildPages()
{
    TabStrip1 = named<QTabWidget>(QStringLiteral("TabStrip1"), this);
    QVBoxLayout *fields[ListKindCount];
    for (int k = 0; k < ListKindCount; ++k) {
        Picture1[k] = named<QWidget>(QStringLiteral("Picture1(%1)").arg(k), TabStrip1);
        TabStrip1->addTab(Picture1[k], QLatin1String(TabCaptions[k]));
        auto *column = new QVBoxLayout;
        for (int a = 0; a < ListActionCount; ++a) {
            buttons[a][k] = named<QPushButton>(QStringLiteral("Command%1").arg(ButtonNumbers[a][k]),
                                               QLatin1String(ActionCaptions[a]));
            column->addWidget(buttons[a][k]);
        }
        column->addStretch();
        fields[k] = new QVBoxLayout;
        auto *row = new QHBoxLayout(Picture1[k]);
        row->addLayout(fields[k], 1);
        row->addLayout(column);
    }
    const auto textBox = [](QVBoxLayout *into, const QString &name) {
        into->addWidget(new QLabel(QStringLiteral("List element text")));
        auto *box = named<QLineEdit>(name);
        into->addWidget(box);
        return box;
    };
    const auto listBox = [](QVBoxLayout *into, const QString &name) {
        auto *list = named<QListWidget>(name);
        list->setUniformItemSizes(true); // long lists stay quick to lay out
        into->addWidget(list, 1);
        return list;
    };

    QVBoxLayout *f = fields[int(ListKind::Ordered)];
    tbOrderedText = textBox(f, QStringLiteral("tbOrderedText"));
    tbOrderedStart = named<QLineEdit>(QStringLiteral("tbOrderedStart"));
    auto *start = new QFormLayout;
    start->addRow(QStringLiteral("Start:"), tbOrderedStart);
    f->addLayout(start);
    static const char *const ordered[] = {"1, 2, 3, ...", "A, B, C, ...", "a, b, c, ...", "I, II, III, ...",
                                          "i, ii, iii, ..."};
    f->addWidget(typeFrame(opOrderedType, 5, ordered, QStringLiteral("opOrderedType")));
    lstOrdered = listBox(f, QStringLiteral("lstOrdered"));

    f = fields[int(ListKind::Unordered)];
    tbUnorderedText = textBox(f, QStringLiteral("tbUnorderedText"));
    static const char *const unordered[] = {"Default", "Disc", "Circle", "Square"};
    f->addWidget(typeFrame(opUnorderedType, 4, unordered, QStringLiteral("opUnorderedType")));
    lstUnordered = listBox(f, QStringLiteral("lstUnordered"));

    f = fields[int(ListKind::Menu)];
    tbMenuText = textBox(f, QStringLiteral("tbMenuText"));
    lstMenu = listBox(f, QStringLiteral("lstMenu"));

    f = fields[int(ListKind::Definition)];
    const auto lines = [f](const QString &label, const QString &name) {
        f->addWidget(new QLabel(label));
        auto *box = named<QPlainTextEdit>(name);
        box->setTabChangesFocus(true);
        box->setMaximumHeight(60);
        f->addWidget(box);
        return box;
    };
    tbTerm = lines(QStringLiteral("List Term"), QStringLiteral("tbTerm"));
    tbDefinition = lines(QStringLiteral("List Definition"), QStringLiteral("tbDefinition"));
    ckbCompact = named<QCheckBox>(QStringLiteral("ckbCompact"), QStringLiteral("Compact"));
    f->addWidget(ckbCompact);
    lstDefinition = listBox(f, QStringLiteral("lstDefinition"));
}

void frmList::Form_Load()
{
    if (const frmDoc *document = m_workspace.current())
        m_found = ListAround(document->Text->Text(), document->Text->SelStart());
    if (m_found)
        showList(m_found->options);
    TabStrip1->setCurrentIndex(m_found ? int(m_found->options.kind) : 0);
    TabStrip1_Click();
}

void frmList::showList(const ListOptions &options)
{
    switch (options.kind) {
    case ListKind::Ordered:
        tbOrderedStart->setText(options.start);
        opOrderedType[qBound(0, options.type, 4)]->setChecked(true);
        break;
    case ListKind::Unordered:
        opUnorderedType[qBound(0, options.type, 3)]->setChecked(true);
        break;
    case ListKind::Menu:
        break;
    case ListKind::Definition:
        ckbCompact->setChecked(options.compact);
        break;
    }
    for (const ListEntry &entry : options.entries)
        addEntry(options.kind, entry);
}

void frmList::addEntry(ListKind kind, const ListEntry &entry)
{
    if (kind != ListKind::Definition) {
        list(kind)->addItem(entry.text);
        return;
    }
    auto *item = new QListWidgetItem(JoinedDefinition(entry));
    item->setData(TermRole, entry.text);
    item->setData(DefinitionRole, entry.definition);
    lstDefinition->addItem(item);
}

void frmList::TabStrip1_Click()
{
    const auto kind = ListKind(TabStrip1->currentIndex());
    buttons[int(ListAction::Add)][int(kind)]->setDefault(true); // Enter adds what was typed
    firstField(kind)->setFocus();
}

QListWidget *frmList::list(ListKind kind) const
{
    QListWidget *const lists[ListKindCount] = {lstOrdered, lstUnordered, lstMenu, lstDefinition};
    return lists[int(kind)];
}

QWidget *frmList::firstField(ListKind kind) const
{
    QWidget *const boxes[ListKindCount] = {tbOrderedText, tbUnorderedText, tbMenuText, tbTerm};
    return boxes[int(kind)];
}

void frmList::MoveUp(QListWidget &list)
{
    const int row = list.currentRow();
    if (row < 1 || !list.currentItem()->isSelected())
        return;
    // The whole item moves, so that a definition's two halves go with it.
    QListWidgetItem *entry = list.takeItem(row);
    list.insertItem(row - 1, entry);
    list.setCurrentRow(row - 1);
}

void frmList::MoveDown(QListWidget &list)
{
    const int row = list.currentRow();
    if (row < 0 || row >= list.count() - 1 || !list.currentItem()->isSelected())
        return;
    QListWidgetItem *entry = list.takeItem(row);
    list.insertItem(row + 1, entry);
    list.setCurrentRow(row + 1);
}

ListOptions frmList::options(ListKind kind) const
{
    ListOptions o;
    o.kind = kind;
    o.start = tbOrderedStart->text();
    o.compact = ckbCompact->isChecked();
    if (kind == ListKind::Ordered)
        for (int i = 0; i < 5; ++i)
            if (opOrderedType[i]->isChecked())
                o.type = i;
    if (kind == ListKind::Unordered)
        for (int i = 0; i < 4; ++i)
            if (opUnorderedType[i]->isChecked())
                o.type = i;
    const QListWidget *entries = list(kind);
    o.entries.reserve(entries->count());
    for (int i = 0; i < entries->count(); ++i) {
        const QListWidgetItem *item = entries->item(i);
        if (kind == ListKind::Definition)
            o.entries.append({item->data(TermRole).toString(), item->data(DefinitionRole).toString()});
        else
            o.entries.append({item->text(), QString()});
    }
    return o;
}

void frmList::Add_Click(ListKind kind)
{
    if (kind == ListKind::Definition) {
        addEntry(kind, {linesOf(tbTerm), linesOf(tbDefinition)});
        tbTerm->clear();
        tbDefinition->clear();
        tbTerm->setFocus();
        return;
    }
    auto *box = static_cast<QLineEdit *>(firstField(kind));
    if (TrimTrailing(box->text()).isEmpty())
        return;
    addEntry(kind, {box->text(), QString()});
    box->clear();
    box->setFocus();
}

void frmList::Delete_Click(ListKind kind)
{
    QListWidgetItem *entry = list(kind)->currentItem();
    if (entry && entry->isSelected())
        delete entry;
    firstField(kind)->setFocus();
}

void frmList::Move_Click(ListKind kind, bool up)
{
    if (up)
        MoveUp(*list(kind));
    else
        MoveDown(*list(kind));
    firstField(kind)->setFocus();
}

void frmList::PlaceList_Click(ListKind kind)
{
    if (kind == ListKind::Ordered && !ListStartAccepted(tbOrderedStart->text())) {
        refuse(QStringLiteral("Start not numeric!"), MsgStyle::Exclamation, tbOrderedStart);
        return;
    }
    const QList<MarkupPiece> pieces = ListPieces(options(kind));
    // Out of the way while the list goes in; the dialog was opened with open(), so hiding it ends
    // no loop and it comes back still modal.
    hide();
    m_workspace.slots.RefreshDocuments();
    if (frmDoc *document = m_workspace.current()) {
        if (m_found && m_found->options.kind == kind) {
            document->Text->setSelStart(m_found->from);
            document->Text->setSelLength(m_found->length);
            m_found.reset();
        }
        PlacePieces(m_workspace, *document, pieces);
    }
    show();
    activateWindow();
    ClearList_Click(kind);
}

void frmList::ClearList_Click(ListKind kind)
{
    switch (kind) {
    case ListKind::Ordered:
        tbOrderedStart->clear();
        tbOrderedText->clear();
        opOrderedType[0]->setChecked(true);
        break;
    case ListKind::Unordered:
        tbUnorderedText->clear();
        opUnorderedType[0]->setChecked(true);
        break;
    case ListKind::Menu:
        tbMenuText->clear();
        break;
    case ListKind::Definition:
        tbTerm->clear();
        tbDefinition->clear();
        ckbCompact->setChecked(false);
        break;
    }
    list(kind)->clear();
    // A cleared tab starts a new list at the caret; the one read back stays as it is.
    if (m_found && m_found->options.kind == kind)
        m_found.reset();
    firstField(kind)->setFocus();
}

void ShowListWizard(Workspace &workspace, QWidget *parent)
{
    OpenWizard<frmList>(workspace, parent);
}

} // namespace pw
