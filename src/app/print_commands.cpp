#include "app/commands.h"

#include "app/command_table.h"
#include "core/main_window.h"
#include "files/autosave.h"
#include "files/printing.h"
#include "files/stamps.h"

namespace pw {

void RegisterPrintAndStampCommands(CommandTable &table, frmMDIMain &main)
{
    table.setHandler(QStringLiteral("mnuFilePrint"), [](frmDoc *) { PrintDocument(); });
    table.setHandler(QStringLiteral("mnuFilePrintSelected"), [](frmDoc *) { PrintSelection(); });

    table.setHandler(QStringLiteral("mnuAccretionLDate"), [](frmDoc *) { PlaceStamp(StampKind::LongDate); });
    table.setHandler(QStringLiteral("mnuAccretionSDate"), [](frmDoc *) { PlaceStamp(StampKind::ShortDate); });
    table.setHandler(QStringLiteral("mnuAccretionLTime"), [](frmDoc *) { PlaceStamp(StampKind::LongTime); });
    table.setHandler(QStringLiteral("mnuAccretionSTime"), [](frmDoc *) { PlaceStamp(StampKind::ShortTime); });

    table.setHandler(QStringLiteral("mnuOptionAutosave"), [](frmDoc *) { ToggleAutoSave(); });
    BindAutoSaveTimer(main);
}

} // namespace pw
