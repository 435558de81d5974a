#include "app/commands.h"

#include "app/command_table.h"
#include "files/open_document.h"
#include "files/previous_lists.h"

namespace pw {

void RegisterOpenCommands(CommandTable &table, const CommandContext &context)
{
    Workspace &ws = context.workspace;
    const auto open = [&ws](frmDoc *) { OpenFromDialog(ws); };
    table.setHandler(QStringLiteral("mnuFileOpen"), open);
    table.setHandler(buttonKey(Button::FileOpen), open);
    for (int i = 1; i <= PreviousFileCount; ++i)
        table.setHandler(QStringLiteral("mnuFilePrevious(%1)").arg(i), [&ws, i](frmDoc *) { OpenPrevious(ws, i); });
    table.setDocumentHandler(QStringLiteral("mnuFileImport"), [&ws](frmDoc &doc) { ImportFile(ws, doc); });
    for (int i = 1; i <= PickableEncodingCount; ++i)
        table.setDocumentHandler(QStringLiteral("mnuFileEncoding(%1)").arg(i),
                                 [&ws, i](frmDoc &doc) { ReopenWithEncoding(ws, doc, TextEncoding(i - 1)); });
}

} // namespace pw
