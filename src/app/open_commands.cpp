#include "app/commands.h"

#include "app/command_table.h"
#include "core/main_window.h"
#include "files/open_document.h"
#include "files/previous_lists.h"

namespace pw {

void RegisterOpenCommands(CommandTable &table, frmMDIMain &main)
{
    table.setHandler(QStringLiteral("mnuFileOpen"), [](frmDoc *) { OpenFromDialog(); });
    setButtonHandler(table, main, QStringLiteral("imgFileOpen"), [] { OpenFromDialog(); });
    for (int i = 1; i <= PreviousFileCount; ++i)
        table.setHandler(QStringLiteral("mnuFilePrevious(%1)").arg(i), [i](frmDoc *) { OpenPrevious(i); });
    table.setHandler(QStringLiteral("mnuFileImport"), [](frmDoc *) { ImportFile(); });
}

} // namespace pw
