#include "app/commands.h"

#include "app/command_table.h"
#include "core/about_box.h"
#include "core/association_command.h"
#include "core/document_window.h"
#include "core/main_window.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "files/new_document.h"
#include "markup/case_conversion.h"
#include "markup/highlighter.h"
#include "markup/tag_placement.h"

#include <QMdiArea>
#include <QToolBar>

namespace pw {

namespace {

struct PairedRow {
    const char *item;
    const char *tag;
    bool separateLines;
};

// Commands that are nothing but a placement.
const PairedRow kPaired[] = {
    {"mnuHTMLHTML", "HTML", true},       {"mnuHTMLHead", "HEAD", true},
    {"mnuHTMLTitle", "TITLE", true},     {"mnuHTMLAdress", "ADDRESS", true},
    {"mnuFrameSet", "FRAMESET", true},   {"mnuTextCitation", "CITE", true},
    {"mnuTextPreformatted", "PRE", true}, {"mnuListOrdered", "OL", true},
    {"mnuListUnordered", "UL", true},    {"mnuListMenu", "MENU", true},
    {"mnuListDefinition", "DL", true},   {"mnuTableTable", "TABLE", true},
    {"mnuFrameNoFrame", "NOFRAMES", true}, {"mnuTextCode", "CODE", true},
    {"mnuTextBold", "B", false},         {"mnuTextItalic", "I", false},
    {"mnuTextUnderline", "U", false},    {"mnuTextTypewriter", "TT", false},
    {"mnuTextBlink", "BLINK", false},    {"mnuTextBlockquote", "BLOCKQUOTE", false},
    {"mnuTextCenter", "CENTER", false},  {"mnuTextEmphasis", "EM", false},
    {"mnuTextSample", "SAMP", false},    {"mnuTextStrong", "STRONG", false},
    {"mnuTextStruckout", "STRIKE", false}, {"mnuTextSub", "SUB", false},
    {"mnuTextSup", "SUP", false},        {"mnuFontVariable", "VAR", false},
    {"mnuNoBR", "NOBR", false},          {"mnuTableCaption", "CAPTION", false},
    {"mnuTableRow", "TR", false},        {"mnuTableData", "TD", false},
    {"mnuTableHeader", "TH", false},
};

struct SingleRow {
    const char *item;
    const char *literal;
};

const SingleRow kSingle[] = {
    {"mnuHTMLBR", "<BR>"},           {"mnuHTMLP", "<P>"},
    {"mnuHRPlace", "<HR>"},          {"mnuFrameFrame", "    <FRAME>"},
    {"mnuListItem", "    <LI>"},     {"mnuListTerm", "    <DT>"},
    {"mnuListDD", "        <DD>"},   {"mnuCharLess", "&lt;"},
    {"mnuCharGreater", "&gt;"},      {"mnuCharAmp", "&amp;"},
    {"mnuCharQuote", "&quot;"},      {"mnuCharReg", "&reg;"},
    {"mnuCharCopy", "&copy;"},       {"mnuCharBlank", "&nbsp;"},
};

void BodyWithHint(Workspace &ws, frmDoc &document)
{
    PlacePairedTag(ws, document, QStringLiteral("BODY"), true);
    ws.status.SetStatusText(QStringLiteral("Use Body Background to change the default colors of your document!"));
}

} // namespace

void RegisterCommands(CommandTable &table, const CommandContext &context)
{
    Workspace &ws = context.workspace;
    frmMDIMain &main = context.main;
    for (const PairedRow &row : kPaired) {
        const QString tag = QLatin1String(row.tag);
        const bool lines = row.separateLines;
        table.setDocumentHandler(QLatin1String(row.item),
                                 [&ws, tag, lines](frmDoc &doc) { PlacePairedTag(ws, doc, tag, lines); });
    }
    table.setDocumentHandler(QStringLiteral("mnuHTMLBody"), [&ws](frmDoc &doc) { BodyWithHint(ws, doc); });
    for (int level = 1; level <= 6; ++level)
        table.setDocumentHandler(QStringLiteral("mnuHeadings(%1)").arg(level), [&ws, level](frmDoc &doc) {
            PlacePairedTag(ws, doc, QStringLiteral("H%1").arg(level), false);
        });
    for (const SingleRow &row : kSingle) {
        const QString literal = QLatin1String(row.literal);
        table.setDocumentHandler(QLatin1String(row.item), [&ws, literal](frmDoc &doc) { PlaceSingleTag(ws, doc, literal); });
    }

    // File
    const auto newDocument = [&ws](frmDoc *) { NewDocument(ws); };
    table.setHandler(QStringLiteral("mnuFileNew"), newDocument);
    table.setHandler(buttonKey(Button::FileNew), newDocument);
    table.setDocumentHandler(QStringLiteral("mnuFileClose"), [](frmDoc &doc) { doc.close(); });
    table.setHandler(QStringLiteral("mnuFileCloseAll"), [&ws](frmDoc *) { ws.slots.CloseAll(); });
    const auto exit = [&main](frmDoc *) { main.close(); };
    table.setHandler(QStringLiteral("mnuFileExit"), exit);
    table.setHandler(buttonKey(Button::Exit), exit);

    // Window
    table.setHandler(QStringLiteral("mnuWindowTileCas"), [&main](frmDoc *) { main.mdiArea->cascadeSubWindows(); });
    table.setHandler(QStringLiteral("mnuWindowTileH"), [&main](frmDoc *) { main.mdiArea->tileSubWindows(); });

    // The association and the about box
    table.setHandler(QStringLiteral("mnuHelpAbout"), [&ws, &main](frmDoc *) { ShowAboutBox(ws, &main); });
    table.setHandler(QStringLiteral("mnuOptionAssociate"), [&ws](frmDoc *) { AssociateFilesCommand(ws); });

    // Options: each flips the shared state, which every menu shows, then has its effect.
    table.setHandler(QLatin1String(optionItemName(Option::Toolbar)), [&ws](frmDoc *) { ws.options.toggle(Option::Toolbar); });
    table.setHandler(QLatin1String(optionItemName(Option::MaximizeDocs)), [&ws](frmDoc *) { ws.options.toggle(Option::MaximizeDocs); });
    table.setHandler(QLatin1String(optionItemName(Option::AddTemplate)), [&ws](frmDoc *) { ws.options.toggle(Option::AddTemplate); });
    table.setHandler(QLatin1String(optionItemName(Option::Highlight)), [&ws](frmDoc *) { ToggleHighlighting(ws); });
    table.setHandler(QLatin1String(optionItemName(Option::UHTML)), [&ws](frmDoc *) { ToggleUppercaseOption(ws); });
    table.setDocumentHandler(QStringLiteral("mnuHTMLUcase"), [&ws](frmDoc &doc) { ConvertTagsToUpper(ws, doc); });

    RegisterEditCommands(table, context);
    RegisterOpenCommands(table, context);
    RegisterSaveCommands(table, context);
    RegisterPrintAndStampCommands(table, context);
    RegisterHelpCommands(table, context);
    RegisterFontCommands(table, context);
    RegisterWizardCommands(table, context);
    RegisterSiteCommands(table, context);
}

} // namespace pw
