#include "app/commands.h"

#include "app/command_table.h"
#include "core/about_box.h"
#include "core/association_command.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/status_line.h"
#include "files/new_document.h"
#include "markup/case_conversion.h"
#include "markup/clipboard_undo.h"
#include "markup/highlighter.h"
#include "markup/tag_placement.h"
#include "spell/checking_walk.h"

#include <QAction>
#include <QApplication>
#include <QMdiArea>
#include <QTimer>
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
    {"mnuHTMLTitle", "TITLE", true},     {"mnuHTMLBody", "BODY", true},
    {"mnuHTMLAdress", "ADDRESS", true},  {"mnuFrameSet", "FRAMESET", true},
    {"mnuTextCitation", "CITE", true},   {"mnuTextPreformatted", "PRE", true},
    {"mnuListOrdered", "OL", true},      {"mnuListUnordered", "UL", true},
    {"mnuListMenu", "MENU", true},       {"mnuListDefinition", "DL", true},
    {"mnuTableTable", "TABLE", true},    {"mnuFrameNoFrame", "NOFRAMES", true},
    {"mnuTextCode", "CODE", true},
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

void focusCurrentDocument(frmMDIMain &main)
{
    if (main.slots().AnyDocumentOpen())
        if (frmDoc *doc = main.slots().current())
            doc->Text->SetFocus();
}

// The option toggles: flip the shared state (every menu follows it), then the effect.
void registerOption(CommandTable &table, frmMDIMain &main, Option option, std::function<void(bool)> effect)
{
    table.setHandler(QLatin1String(optionItemName(option)), [&main, option, effect](frmDoc *) {
        main.options().toggle(option);
        if (effect)
            effect(main.options().isChecked(option));
    });
}

} // namespace

void setButtonHandler(CommandTable &table, frmMDIMain &main, const QString &key, std::function<void()> command)
{
    table.setHandler(key, [&main, command = std::move(command)](frmDoc *) {
        focusCurrentDocument(main);
        command();
    });
}

void mnuFile_Click(frmDoc &document)
{
    frmMDIMain *main = frmMDIMain::instance();
    if (QAction *save = document.item(QStringLiteral("mnuFileSave")))
        save->setEnabled(main && main->slots().state(document.slot()).Dirty);
    if (QAction *printSelected = document.item(QStringLiteral("mnuFilePrintSelected")))
        printSelected->setEnabled(printSelected->isEnabled() && document.Text->SelLength() != 0);
}

void mnuEdit_Click(frmDoc &document)
{
    const bool selected = document.Text->SelLength() != 0;
    for (const char *name : {"mnuEditCopy", "mnuEditCut"})
        if (QAction *a = document.item(QLatin1String(name)))
            a->setEnabled(selected);
}

void RegisterCommands(CommandTable &table, frmMDIMain &main)
{
    for (const PairedRow &row : kPaired) {
        const QString tag = QLatin1String(row.tag);
        const bool lines = row.separateLines;
        table.setHandler(QLatin1String(row.item), [tag, lines](frmDoc *) { PlacePairedTag(tag, lines); });
    }
    table.setHandler(QStringLiteral("mnuHTMLBody"), [](frmDoc *) {
        PlacePairedTag(QStringLiteral("BODY"), true);
        SetStatusText(QStringLiteral("Use Body Background to change the default colors of your document!"));
    });
    for (int level = 1; level <= 6; ++level)
        table.setHandler(QStringLiteral("mnuHeadings(%1)").arg(level),
                         [level](frmDoc *) { PlacePairedTag(QStringLiteral("H%1").arg(level), false); });
    for (const SingleRow &row : kSingle) {
        const QString literal = QLatin1String(row.literal);
        table.setHandler(QLatin1String(row.item), [literal](frmDoc *) { PlaceSingleTag(literal); });
    }

    // File
    const auto newDocument = [](frmDoc *) { NewDocument(); };
    table.setHandler(QStringLiteral("mnuFileNew"), newDocument);
    table.setHandler(QStringLiteral("mnuFileClose"), [](frmDoc *doc) {
        if (doc)
            doc->close();
    });
    table.setHandler(QStringLiteral("mnuFileCloseAll"), [&main](frmDoc *) { main.slots().CloseAll(); });
    table.setHandler(QStringLiteral("mnuFileExit"), [&main](frmDoc *) { main.close(); });

    // Edit
    table.setHandler(QStringLiteral("mnuEditUndo"), [](frmDoc *) { UndoEdit(); });
    table.setHandler(QStringLiteral("mnuEditCut"), [](frmDoc *) { CutSelection(); });
    table.setHandler(QStringLiteral("mnuEditCopy"), [](frmDoc *) { CopySelection(); });
    table.setHandler(QStringLiteral("mnuEditPaste"), [](frmDoc *) { PasteClipboard(); });
    table.setHandler(QStringLiteral("mnuEditSelectAll"), [](frmDoc *) { SelectAllText(); });

    // Window
    table.setHandler(QStringLiteral("mnuWindowTileCas"), [&main](frmDoc *) { main.mdiArea->cascadeSubWindows(); });
    table.setHandler(QStringLiteral("mnuWindowTileH"), [&main](frmDoc *) { main.mdiArea->tileSubWindows(); });

    // Help and the association
    table.setHandler(QStringLiteral("mnuHelpAbout"), [](frmDoc *) { ShowAboutBox(); });
    table.setHandler(QStringLiteral("mnuOptionAssociate"), [](frmDoc *) { AssociateFilesCommand(); });

    // Options
    registerOption(table, main, Option::Toolbar, [&main](bool on) {
        main.Toolbar1->setVisible(on);
        main.Toolbar2->setVisible(on && !main.markupToolsHidden());
    });
    // These two flip their option themselves, and may flip it back at Cancel.
    table.setHandler(QLatin1String(optionItemName(Option::Highlight)), [](frmDoc *) { ToggleHighlighting(); });
    table.setHandler(QLatin1String(optionItemName(Option::UHTML)), [](frmDoc *) { ToggleUppercaseOption(); });
    table.setHandler(QStringLiteral("mnuHTMLUcase"), [](frmDoc *doc) {
        if (doc)
            ConvertTagsToUpper(*doc);
    });
    registerOption(table, main, Option::MaximizeDocs, nullptr);
    registerOption(table, main, Option::AddTemplate, nullptr);

    const auto button = [&table, &main](const QString &key, std::function<void()> command) {
        setButtonHandler(table, main, key, std::move(command));
    };
    button(QStringLiteral("imgFileNew"), [] { NewDocument(); });
    button(QStringLiteral("imgEditCopy"), [] { CopySelection(); });
    button(QStringLiteral("imgEditCut"), [] { CutSelection(); });
    button(QStringLiteral("imgEditPaste"), [] { PasteClipboard(); });
    button(QStringLiteral("imgUndo"), [] { UndoEdit(); });
    button(QStringLiteral("imgExit"), [&main] { main.close(); });
    button(QStringLiteral("imgSpell"), [] { ShowSpellChecker(); });

    RegisterOpenCommands(table, main);
    RegisterSaveCommands(table, main);
    RegisterPrintAndStampCommands(table, main);
    RegisterHelpCommands(table, main);
}

} // namespace pw
