#include "app/commands.h"

#include "app/command_table.h"
#include "core/options.h"
#include "files/file_locks.h"
#include "files/save_document.h"

namespace pw {

void RegisterSaveCommands(CommandTable &table, const CommandContext &context)
{
    Workspace &ws = context.workspace;
    const auto save = [&ws](frmDoc &doc) { SaveDocument(ws, doc); };
    table.setDocumentHandler(QStringLiteral("mnuFileSave"), save);
    table.setDocumentHandler(buttonKey(Button::FileSave), save);
    table.setDocumentHandler(QStringLiteral("mnuFileSaveAs"), [&ws](frmDoc &doc) { SaveDocumentAs(ws, doc); });
    table.setHandler(QLatin1String(optionItemName(Option::LockFiles)), [&ws](frmDoc *) { ToggleLockFiles(ws); });
}

} // namespace pw
