#include "app/commands.h"

#include "app/command_table.h"
#include "core/options.h"
#include "files/autosave.h"
#include "files/printing.h"
#include "files/stamps.h"

namespace pw {

void RegisterPrintAndStampCommands(CommandTable &table, const CommandContext &context)
{
    Workspace &ws = context.workspace;
    table.setDocumentHandler(QStringLiteral("mnuFilePrint"), [&ws](frmDoc &doc) { PrintDocument(ws, doc); });
    table.setDocumentHandler(QStringLiteral("mnuFilePrintSelected"), [&ws](frmDoc &doc) { PrintSelection(ws, doc); });

    const std::pair<const char *, StampKind> stamps[] = {
        {"mnuAccretionLDate", StampKind::LongDate},
        {"mnuAccretionSDate", StampKind::ShortDate},
        {"mnuAccretionLTime", StampKind::LongTime},
        {"mnuAccretionSTime", StampKind::ShortTime},
    };
    for (const auto &[item, kind] : stamps)
        table.setDocumentHandler(QLatin1String(item), [&ws, kind = kind](frmDoc &doc) { PlaceStamp(ws, doc, kind); });

    AutoSave &autoSave = context.autoSave;
    table.setHandler(QLatin1String(optionItemName(Option::AutoSave)), [&autoSave](frmDoc *) { autoSave.ToggleAutoSave(); });
}

} // namespace pw
