#include "app/commands.h"

#include "app/command_table.h"
#include "core/main_window.h"
#include "core/workspace.h"
#include "find/frm_find.h"
#include "find/frm_replace.h"
#include "markup/clipboard_undo.h"
#include "spell/checking_walk.h"

namespace pw {

void RegisterEditCommands(CommandTable &table, const CommandContext &context)
{
    Workspace &ws = context.workspace;
    frmMDIMain &main = context.main;
    const auto both = [&table](const QString &item, Button button, std::function<void(frmDoc &)> handler) {
        table.setDocumentHandler(item, handler);
        table.setDocumentHandler(buttonKey(button), std::move(handler));
    };
    both(QStringLiteral("mnuEditUndo"), Button::Undo, [](frmDoc &doc) { UndoEdit(doc); });
    both(QStringLiteral("mnuEditCut"), Button::EditCut, [&ws](frmDoc &doc) { CutSelection(ws, doc); });
    both(QStringLiteral("mnuEditCopy"), Button::EditCopy, [&ws](frmDoc &doc) { CopySelection(ws, doc); });
    both(QStringLiteral("mnuEditPaste"), Button::EditPaste, [&ws](frmDoc &doc) { PasteClipboard(ws, doc); });
    table.setDocumentHandler(QStringLiteral("mnuEditSelectAll"), [](frmDoc &doc) { SelectAllText(doc); });
    both(QStringLiteral("mnuEditFind"), Button::Find, [&ws, &main](frmDoc &) { ShowFind(ws, &main); });
    both(QStringLiteral("mnuEditReplace"), Button::Replace, [&ws, &main](frmDoc &) { ShowReplace(ws, &main); });
    table.setDocumentHandler(buttonKey(Button::Spell), [&ws, &main](frmDoc &doc) { ShowSpellChecker(ws, doc, &main); });
}

} // namespace pw
