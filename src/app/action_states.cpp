#include "app/action_states.h"

#include "app/command_table.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "platform/platform.h"

#include <QAction>
#include <QActionGroup>
#include <QMenu>
#include <QMdiArea>
#include <QToolBar>

namespace pw {

ActionStates::ActionStates(frmMDIMain &main, Workspace &workspace, const CommandTable &commands)
    : QObject(&main), m_main(main), m_workspace(workspace), m_commands(commands),
      m_save(CommandTable::button(main, Button::FileSave)), m_copy(CommandTable::button(main, Button::EditCopy)),
      m_cut(CommandTable::button(main, Button::EditCut)), m_paste(CommandTable::button(main, Button::EditPaste)),
      m_undo(CommandTable::button(main, Button::Undo)), m_spell(CommandTable::button(main, Button::Spell))
{
    const auto readClipboard = [this] {
        m_clipboardHasText = !m_workspace.platform.clipboardText().isEmpty();
        updateActions();
    };
    m_workspace.platform.watchClipboard(this, readClipboard);
    m_clipboardHasText = !m_workspace.platform.clipboardText().isEmpty();

    DocumentSlots &slots = workspace.slots;
    connect(&slots, &DocumentSlots::documentCreated, this, [this](frmDoc *document) {
        connect(document, &frmDoc::Activated, this, [this, document] { follow(document); });
        m_workspace.SetMarkupToolsHidden(false);
    });
    connect(&slots, &DocumentSlots::documentClosed, this, &ActionStates::onDocumentClosed);
    connect(&workspace, &Workspace::markupToolsChanged, this, &ActionStates::showToolbars);
    connect(&workspace.options, &Options::changed, this, [this](Option option) {
        if (option == Option::Toolbar)
            showToolbars();
    });
    follow(nullptr);
    showToolbars();
}

void ActionStates::setSpellAvailable(bool available)
{
    m_spellAvailable = available;
    updateActions();
}

void ActionStates::onDocumentClosed()
{
    frmDoc *current = m_workspace.current();
    if (!current)
        m_workspace.SetMarkupToolsHidden(true);
    follow(current);
}

void ActionStates::follow(frmDoc *document)
{
    if (document != m_followed || !document) {
        for (const QMetaObject::Connection &c : std::as_const(m_connections))
            disconnect(c);
        m_connections.clear();
        m_followed = document;
        m_items.fill(nullptr);
        if (document) {
            static const char *const names[ItemCount] = {"mnuFileSave", "mnuFilePrintSelected", "mnuEditCopy",
                                                         "mnuEditCut",  "mnuEditPaste",         "mnuEditUndo",
                                                         "mnuFileEncoding", "mnuHTMLUcase"};
            for (int i = 0; i < ItemCount; ++i)
                m_items[size_t(i)] = document->item(QLatin1String(names[i]));
            EditingSurface *text = document->Text;
            m_connections << connect(text, &EditingSurface::SelChange, this, &ActionStates::updateActions)
                          << connect(text, &EditingSurface::CanUndoChanged, this, &ActionStates::updateActions)
                          << connect(&document->state(), &DocumentState::dirtyChanged, this, &ActionStates::updateActions)
                          << connect(&document->state(), &DocumentState::captionChanged, this, &ActionStates::updateActions)
                          << connect(&document->state(), &DocumentState::formatChanged, this, &ActionStates::showEncoding);
            if (QAction *encodings = m_items[FileEncoding]) {
                QMenu *menu = encodings->menu();
                if (!menu->findChild<QActionGroup *>()) {
                    auto *group = new QActionGroup(menu); // one mark, shown as a radio button; none for UTF-32
                    group->setExclusionPolicy(QActionGroup::ExclusionPolicy::ExclusiveOptional);
                    for (QAction *item : menu->actions()) {
                        item->setCheckable(true);
                        group->addAction(item);
                    }
                }
                for (QAction *item : menu->actions())
                    m_connections << connect(item, &QAction::triggered, this, &ActionStates::showEncoding);
            }
        }
        m_workspace.status.follow(document ? document->Text : nullptr);
        m_workspace.status.followFormat(document ? &document->state() : nullptr);
        showEncoding();
    }
    updateActions();
}

void ActionStates::setEnabled(QAction *action, bool enabled) const
{
    if (action && m_commands.hasHandler(action->objectName()))
        action->setEnabled(enabled);
}

void ActionStates::updateActions()
{
    frmDoc *document = m_followed;
    const EditingSurface *text = document ? document->Text : nullptr;
    const bool selected = text && text->SelLength() > 0;
    const bool canUndo = text && text->CanUndo();
    const bool dirty = document && document->state().Dirty();
    const bool untitled = document && document->isUntitled();
    const bool canPaste = document && m_clipboardHasText;

    setEnabled(m_save, untitled || dirty);
    setEnabled(m_copy, selected);
    setEnabled(m_cut, selected);
    setEnabled(m_paste, canPaste);
    setEnabled(m_undo, canUndo);
    setEnabled(m_spell, document && m_spellAvailable);

    if (!document)
        return;
    setEnabled(m_items[FileSave], dirty);
    setEnabled(m_items[FilePrintSelected], selected);
    setEnabled(m_items[EditCopy], selected);
    setEnabled(m_items[EditCut], selected);
    setEnabled(m_items[EditPaste], canPaste);
    setEnabled(m_items[EditUndo], canUndo);
    setEnabled(m_items[HTMLUcase], !document->state().binary);
    // A submenu has no handler of its own.
    if (QAction *encodings = m_items[FileEncoding])
        encodings->setEnabled(!untitled);
}

void ActionStates::showEncoding()
{
    QAction *encodings = m_followed ? m_items[FileEncoding] : nullptr;
    if (!encodings)
        return;
    const QString current = QStringLiteral("mnuFileEncoding(%1)").arg(int(m_followed->state().format().encoding) + 1);
    for (QAction *item : encodings->menu()->actions())
        item->setChecked(item->objectName() == current);
}

void ActionStates::showToolbars()
{
    const bool toolbars = m_workspace.options.isChecked(Option::Toolbar);
    const bool hidden = m_workspace.markupToolsHidden();
    // Toolbar1's buttons from the fourth to the fourth from last, separators counted, and the whole
    // of Toolbar2 are what is useless without a document.
    const QList<QAction *> buttons = m_main.Toolbar1->actions();
    for (qsizetype i = 3; i <= buttons.size() - 4; ++i)
        buttons[i]->setVisible(!hidden);
    m_main.Toolbar1->setVisible(toolbars);
    m_main.Toolbar2->setVisible(toolbars && !hidden);
}

} // namespace pw
