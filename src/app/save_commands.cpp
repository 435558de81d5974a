#include "app/commands.h"

#include "app/command_table.h"
#include "core/main_window.h"
#include "core/options.h"
#include "files/file_locks.h"
#include "files/save_document.h"

namespace pw {

void RegisterSaveCommands(CommandTable &table, frmMDIMain &main)
{
    table.setHandler(QStringLiteral("mnuFileSave"), [](frmDoc *) { SaveDocument(); });
    table.setHandler(QStringLiteral("mnuFileSaveAs"), [](frmDoc *) { SaveDocumentAs(); });
    setButtonHandler(table, main, QStringLiteral("imgFileSave"), [] { SaveDocument(); });
    // Flips the option itself, like the other toggles with an effect on open documents.
    table.setHandler(QLatin1String(optionItemName(Option::LockFiles)), [](frmDoc *) { ToggleLockFiles(); });
}

} // namespace pw
