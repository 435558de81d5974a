#include "app/commands.h"

#include "app/command_table.h"
#include "core/help_window.h"
#include "core/main_window.h"

namespace pw {

void RegisterHelpCommands(CommandTable &table, frmMDIMain &main)
{
    table.setHandler(QStringLiteral("mnuHelpContents"), [](frmDoc *) { HelpContents(); });
    setButtonHandler(table, main, QStringLiteral("imgHelp"), [] { HelpContents(); });
}

} // namespace pw
