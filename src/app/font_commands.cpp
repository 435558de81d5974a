#include "app/commands.h"

#include "app/command_table.h"
#include "core/main_window.h"
#include "files/stamps.h"
#include "markup/configure_dialog.h"
#include "markup/costumize_dialog.h"
#include "markup/font_commands.h"

namespace pw {

void RegisterFontCommands(CommandTable &table, const CommandContext &context)
{
    Workspace &ws = context.workspace;
    for (int i = 1; i <= 7; ++i)
        table.setDocumentHandler(QStringLiteral("mnuFontSize(%1)").arg(i),
                                 [&ws, i](frmDoc &doc) { PlaceFontSize(ws, doc, QString::number(i)); });
    table.setDocumentHandler(QStringLiteral("mnuFontPlusOne"), [&ws](frmDoc &doc) { PlaceFontSize(ws, doc, QStringLiteral("+1")); });
    table.setDocumentHandler(QStringLiteral("mnuFontMinus"), [&ws](frmDoc &doc) { PlaceFontSize(ws, doc, QStringLiteral("-1")); });
    table.setDocumentHandler(QStringLiteral("mnuFontColor"), [&ws](frmDoc &doc) { mnuFontColor_Click(ws, doc); });
    table.setDocumentHandler(QStringLiteral("mnuFontFace"), [&ws](frmDoc &doc) { mnuFontFace_Click(ws, doc); });
    table.setDocumentHandler(QStringLiteral("mnuHTMLComment"), [](frmDoc &doc) { mnuHTMLComment_Click(doc); });
    table.setDocumentHandler(QStringLiteral("mnuEditPasteDate"), [&ws](frmDoc &doc) { PasteStamp(ws, doc, StampKind::LongDate); });
    table.setDocumentHandler(QStringLiteral("mnuEditPasteTime"), [&ws](frmDoc &doc) { PasteStamp(ws, doc, StampKind::LongTime); });

    frmMDIMain *main = &context.main;
    const auto costumize = [&ws, main](frmDoc *) { ShowCostumize(ws, main); };
    table.setHandler(QStringLiteral("mnuOptionCostumize"), costumize);
    table.setHandler(QStringLiteral("mnuOptionComstumize"), costumize);
    table.setHandler(QStringLiteral("mnuOptionFontColor"), [&ws, main](frmDoc *) { ShowConfigure(ws, main); });
}

} // namespace pw
