#include "files/new_document.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/status_line.h"
#include "files/previous_lists.h"

namespace pw {

QString BlankTemplate()
{
    const QStringList lines = {
        QStringLiteral("<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 3.2 Final//EN\">"),
        QStringLiteral("<HTML>"),
        QStringLiteral("<HEAD>"),
        QStringLiteral("<TITLE></TITLE>"),
        QStringLiteral("</HEAD>"),
        QStringLiteral("<BODY>"),
        QString(),
        QStringLiteral("</BODY>"),
        QStringLiteral("</HTML>"),
    };
    return lines.join(LineEnd);
}

frmDoc *NewDocument()
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return nullptr;
    SetStatusText(QStringLiteral("Loading new file"));
    ShowWaitCursor();
    DocumentSlots &slots = main->slots();
    const int slot = slots.FindFreeSlot();
    frmDoc *doc = slots.CreateDocumentWindow(slot, QStringLiteral("Untitled: ") + QString::number(slot));
    ApplyClassFont(*doc->Text, false);
    if (main->options().isChecked(Option::AddTemplate))
        FillBlankTemplate(*doc);
    SyncDocumentMenus(); // the new window's menu shows the previous files too
    slots.state(slot).Dirty = False;
    if (main->markupToolsHidden())
        SetMarkupToolsHidden(false);
    main->setButtonEnabled(QStringLiteral("imgFileSave"), false);
    HideWaitCursor();
    return doc;
}

void FillBlankTemplate(frmDoc &window)
{
    frmMDIMain *main = frmMDIMain::instance();
    const bool colour = main && main->options().isChecked(Option::Highlight);
    EditingSurface &text = *window.Text;
    if (colour)
        ApplyClassFont(text, true);
    text.setSelText(BlankTemplate());
    text.setSelStart(80);
    if (colour)
        ApplyClassFont(text, false);
    text.clearUndo();
    if (main)
        main->slots().state(window.slot()).Dirty = False;
    SetStatusText(QStringLiteral(
        "Enter your documents title then move down inside the body tags to create your page."));
}

} // namespace pw
