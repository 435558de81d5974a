#include "app/command_table.h"

namespace pw {

// The menus as they stand: "name|caption|shortcut", two blanks of indent a level, "-" a separator
// ("-name" a named one). Arrays are written name(index); "@previous" stands for the separator and
// the ten previous-file items that both File menus end with, "@options" for the option rows both
// Options menus share.

static const char *const kOptionRows = R"(
mnuOptionFontColor|&Font / Color
-
mnuOptionToolbar|Show &Toolbar
mnuOptionHTML|Highlight &HTML
mnuOptionUHTML|Convert HTML to &Uppercase
mnuOptionLockFiles|&Lock Files
mnuOptionSiteMap|Site &Map
mnuOptionMaxDocs|&Maximize Doc
mnuOptionAutosave|Auto Sa&ve Files
mnuOptionBlankFile|Add Template
-
mnuOptionAssociate|&Associate files
)";

static const char *const kMainMenu = R"(
mnuFile|&File
  mnuFileNew|&New|Ctrl+N
  mnuFileOpen|&Open|Ctrl+O
  -
  mnuFileExit|E&xit
  @previous
mnuOption|&Options
  @options
  mnuOptionCostumize|&Costumize Fn Keys
  mnuOptionSelectBrowser|&Select Browser
mnuHelp|&Help
  mnuHelpContents|&Contents
  mnuHelpAbout|&About
)";

static const char *const kDocumentMenu = R"(
mnuFile|&File
  mnuFileNew|&New|Ctrl+N
  mnuFileOpen|&Open|Ctrl+O
  mnuFileSave|&Save|Ctrl+S
  mnuFileSaveAs|Save &As|Ctrl+A
  mnuFileEncoding|Reopen with &Encoding
    mnuFileEncoding(1)|UTF-8
    mnuFileEncoding(2)|Windows-1252
    mnuFileEncoding(3)|ISO-8859-1
    mnuFileEncoding(4)|ISO-8859-15
    mnuFileEncoding(5)|UTF-16 LE
    mnuFileEncoding(6)|UTF-16 BE
  -
  mnuFilePrint|&Print
  mnuFilePrintSelected|Print &Setected Text
  -
  mnuFileClose|&Close
  mnuFileCloseAll|C&lose All
  -
  mnuFileImport|&Import Text File
  mnuFileResources|&View Resources
  -
  mnuFileExit|E&xit
  @previous
mnuEdit|&Edit
  mnuEditUndo|&Undo
  -
  mnuEditCut|Cu&t|Ctrl+X
  mnuEditCopy|&Copy|Ctrl+C
  mnuEditPaste|&Paste
  mnuEditSelectAll|Select &All
  -
  mnuEditFind|&Find
  mnuEditReplace|&Replace
  -
  mnuEditPasteTime|Paste T&ime|Ctrl+T
  mnuEditPasteDate|Paste &Date|Ctrl+D
mnuOptionS|&Options
  @options
  mnuOptionComstumize|&Customize Fn Keys
  mnuOptionSelectBrowser|&Select Browser
mnuhtml|&HTML
  mnuHTMLUcase|Convert HTML to &Uppercase
  -
  mnuHTMLHTML|&HTML
  mnuHTMLHead|Hea&d
  mnuHTMLTitle|&Title
  mnuHTMLBody|&Body
  mnuHTMLBodyBackground|Body Back&ground
  -
  mnuHTMLHeading|Heading
    mnuHeadings(1)|H&1 (largest)
    mnuHeadings(2)|H&2
    mnuHeadings(3)|H&3
    mnuHeadings(4)|H&4
    mnuHeadings(5)|H&5
    mnuHeadings(6)|H&6  (smallest)
  mnuHTMLHR|Horizontal Rule
    mnuHRPlace|Place &HR|Ctrl+H
    mnuHRDefine|&Define HR
  mnuHTMLBR|&Line Break
  mnuNoBR|No Line Break
  mnuHTMLP|&Paragraph
  -
  mnuHTMLHREF|Link H&REF
  mnuHTMLName|Anchor &Name
  mnuHTMLImage|&Image
  mnuHTMLComment|&Comment
  mnuHTMLAdress|&Address
mnuText|&Text
  mnuFont|&Font
    mnuFontBaseFont|&BaseFont
    mnuFontSize(1)|Font Size &1  (smallest)
    mnuFontSize(2)|Font Size &2
    mnuFontSize(3)|Font Size &3
    mnuFontSize(4)|Font Size &4
    mnuFontSize(5)|Font Size &5
    mnuFontSize(6)|Font Size &6
    mnuFontSize(7)|Font Size &7  (largest)
    mnuFontPlusOne|Font Size &Plus 1
    mnuFontMinus|Font Size &Minus 1
    mnuFontRainbow|&Rainbow Font
    mnuFontColor|Font &Color
    mnuFontFace|Font &Face
  -
  mnuTextBold|&Bold|Ctrl+B
  mnuTextItalic|&Italic|Ctrl+I
  mnuTextTypewriter|&Typewriter
  mnuTextCenter|&Center
  mnuTextBlink|B&link
  mnuTextStrong|&Strong
  mnuTextCitation|Cit&ation
  mnuTextCode|C&ode
  mnuTextPreformatted|&Preformatted
  mnuTextEmphasis|&Emphasis
  mnuFontVariable|&Variable
  mnuTextBlockquote|Block&quote
  mnuTextSample|Sa&mple
  mnuTextUnderline|&Underline
  mnuTextStruckout|Struc&k-out
  mnuTextSub|SubScript
  mnuTextSup|SuperScript
mnuCharMenu|&Characters
  mnuCharMap|&Character Map
  -
  mnuCharLess|&Less Then 
  mnuCharGreater|&Greater Then
  mnuCharAmp|&Ampersand
  mnuCharQuote|&Quote
  mnuCharReg|&Registered
  mnuCharCopy|C&opyright
  mnuCharBlank|&Non-blank space
mnuWindow|&Window
  mnuWindowTileCas|&Cascade
  mnuWindowTileH|Tile &Horizontally
mnulist|&List
  mnuListDesign|&Design List
  -
  mnuListItem|&List Item
  mnuListOrdered|&Ordered List
  mnuListUnordered|&Unordered List
  mnuListMenu|&Menu List
  mnuListDefinition|&Definition List
  mnuListTerm|List &Term
  mnuListDD|List D&efinition
mnuTable|T&able
  mnuTableDesign|&Design Table
  -
  mnuTableTable|&Table
  mnuTableCaption|&Caption
  mnuTableRow|&Row
  mnuTableData|&Data
  mnuTableHeader|&Header
mnuFrame|F&rame
  mnuDesignFrame|&Design Frames
  -
  mnuFrameSet|Frame&Set
  mnuFrameFrame|&Frame
  mnuFrameNoFrame|&Noframes
mnuForm|F&orm
  mnuFormDefine|&Define Form
  -
  mnuFormForm|&Form
  mnuFormCheckbox|&Checkbox
  mnuFormHidden|&Hidden
  mnuFormOption|&Option
  mnuFormPassword|&Password
  mnuFormRadio|&Radio
  mnuFormReset|R&eset
  mnuFormSelect|&Select
  mnuFormSubmit|S&ubmit
  mnuFormText|&Text
  mnuFormTextarea|Text&Area
mnuAccretion|&Accretion
  mnuAccretionLDate|Long Date
  mnuAccretionSDate|Short Date
  mnuAccretionLTime|Long Time
  mnuAccretionSTime|Short Time
mnuHelp|&Help
  mnuHelpContents|&Contents
  mnuHelpAbout|&About
)";

QList<MenuRow> parseMenuRows(const char *text)
{
    QList<MenuRow> rows;
    const QStringList lines = QString::fromUtf8(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString &line : lines) {
        qsizetype indent = 0;
        while (indent < line.size() && line[indent] == QLatin1Char(' '))
            ++indent;
        const QStringList fields = line.mid(indent).split(QLatin1Char('|'));
        if (line.mid(indent) == QLatin1String("@previous")) {
            rows.append({int(indent / 2), QStringLiteral("-mnuFileSep1"), {}, {}});
            for (int i = 1; i <= 10; ++i)
                rows.append({int(indent / 2), QStringLiteral("mnuFilePrevious(%1)").arg(i), {}, {}});
            continue;
        }
        if (line.mid(indent) == QLatin1String("@options")) {
            for (MenuRow row : parseMenuRows(kOptionRows)) {
                row.depth += int(indent / 2);
                rows.append(row);
            }
            continue;
        }
        MenuRow row;
        row.depth = int(indent / 2);
        row.name = fields.value(0);
        row.caption = fields.value(1);
        row.shortcut = fields.value(2);
        rows.append(row);
    }
    return rows;
}

const QList<MenuRow> &CommandTable::mainMenuRows()
{
    static const QList<MenuRow> rows = parseMenuRows(kMainMenu);
    return rows;
}

const QList<MenuRow> &CommandTable::documentMenuRows()
{
    static const QList<MenuRow> rows = parseMenuRows(kDocumentMenu);
    return rows;
}

const QList<ButtonRow> &CommandTable::toolbar1Rows()
{
    static const QList<ButtonRow> rows = {
        {"imgFileNew", "File New", "File New", "document-new"},
        {"imgFileOpen", "File Open", "Open File", "document-open"},
        {"imgFileSave", "File Save", "Save File", "document-save"},
        {"-", {}, {}, {}},
        {"imgEditCopy", "Copy", "Copy", "edit-copy"},
        {"imgEditCut", "Cut", "Cut", "edit-cut"},
        {"imgEditPaste", "Paste", "Paste", "edit-paste"},
        {"imgUndo", "Undo", "Undo", "edit-undo"},
        {"-", {}, {}, {}},
        {"imgSpell", "Spell Checker", {}, "tools-check-spelling"},
        {"-", {}, {}, {}},
        {"imgFind", "Find", "Find", "edit-find"},
        {"imgReplace", "Replace", "Replace", "edit-find-replace"},
        {"-", {}, {}, {}},
        {"imgHelp", "Help", "Help", "help-contents"},
        {"-", {}, {}, {}},
        {"imgExit", "Exit", "Exit ", "application-exit"},
    };
    return rows;
}

const QList<ButtonRow> &CommandTable::toolbar2Rows()
{
    static const QList<ButtonRow> rows = {
        {"imgResources", "View Resources", {}, "document-properties"},
        {"-", {}, {}, {}},
        {"imgBody", "Body Wizard", {}, "format-body"},
        {"imgHyperLink", "Hyperlink Wizard", {}, "insert-link"},
        {"imgAnchorName", "Anchor Wizard", {}, "anchor"},
        {"imgImage", "Image Wizard", {}, "insert-image"},
        {"imgChar", "Character Wizard", {}, "insert-text"},
        {"imgList", "List Wizard", {}, "format-list-unordered"},
        {"imgTable", "Table Wizard", {}, "insert-table"},
        {"imgFrame", "Frame Wizard", {}, "view-split-left-right"},
        {"imgForm", "Form Wizard", {}, "insert-form"},
        {"-", {}, {}, {}},
        {"imgTest", "View with browser", {}, "internet-web-browser"},
    };
    return rows;
}

} // namespace pw
