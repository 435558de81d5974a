#include "app/action_states.h"

#include "app/command_table.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "platform/platform.h"

#include <QAction>
#include <QMdiArea>
#include <QToolBar>

namespace pw {

ActionStates::ActionStates(frmMDIMain &main, Workspace &workspace, const CommandTable &commands)
    : QObject(&main), m_main(main), m_workspace(workspace), m_commands(commands)
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
        if (document) {
            EditingSurface *text = document->Text;
            m_connections << connect(text, &EditingSurface::SelChange, this, &ActionStates::updateActions)
                          << connect(text, &EditingSurface::CanUndoChanged, this, &ActionStates::updateActions)
                          << connect(&document->state(), &DocumentState::dirtyChanged, this, &ActionStates::updateActions)
                          << connect(&document->state(), &DocumentState::captionChanged, this, &ActionStates::updateActions);
        }
        m_workspace.status.follow(document ? document->Text : nullptr);
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

    const auto button = [this](Button b) { return CommandTable::button(m_main, b); };
    setEnabled(button(Button::FileSave), untitled || dirty);
    setEnabled(button(Button::EditCopy), selected);
    setEnabled(button(Button::EditCut), selected);
    setEnabled(button(Button::EditPaste), canPaste);
    setEnabled(button(Button::Undo), canUndo);
    setEnabled(button(Button::Spell), document && m_spellAvailable);

    if (!document)
        return;
    const auto item = [document](const char *name) { return document->item(QLatin1String(name)); };
    setEnabled(item("mnuFileSave"), dirty);
    setEnabled(item("mnuFilePrintSelected"), selected);
    setEnabled(item("mnuEditCopy"), selected);
    setEnabled(item("mnuEditCut"), selected);
    setEnabled(item("mnuEditPaste"), canPaste);
    setEnabled(item("mnuEditUndo"), canUndo);
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
