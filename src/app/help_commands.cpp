#include "app/commands.h"

#include "app/command_table.h"
#include "core/main_window.h"

namespace pw {

void RegisterHelpCommands(CommandTable &table, frmMDIMain &main)
{
    Q_UNUSED(table);
    Q_UNUSED(main);
}

} // namespace pw
