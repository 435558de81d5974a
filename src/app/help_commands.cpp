#include "app/commands.h"

#include "app/command_table.h"
#include "core/help_window.h"
#include "core/main_window.h"

namespace pw {

void RegisterHelpCommands(CommandTable &table, const CommandContext &context)
{
    Workspace &ws = context.workspace;
    frmMDIMain &main = context.main;
    const auto contents = [&ws, &main](frmDoc *) { HelpContents(ws, &main); };
    table.setHandler(QStringLiteral("mnuHelpContents"), contents);
    table.setHandler(buttonKey(Button::Help), contents);
}

} // namespace pw
