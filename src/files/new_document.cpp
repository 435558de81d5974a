#include "files/new_document.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/status_presenter.h"
#include "core/workspace.h"

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

frmDoc *NewDocument(Workspace &workspace)
{
    StatusPresenter &status = workspace.status;
    status.SetStatusText(QStringLiteral("Loading new file"));
    status.ShowWaitCursor();
    DocumentSlots &slots = workspace.slots;
    const int slot = slots.FindFreeSlot();
    frmDoc *doc = slots.CreateDocumentWindow(slot, QStringLiteral("Untitled: ") + QString::number(slot));
    if (workspace.options.isChecked(Option::AddTemplate))
        FillBlankTemplate(workspace, *doc);
    doc->state().setDirty(false);
    status.HideWaitCursor();
    return doc;
}

void FillBlankTemplate(Workspace &workspace, frmDoc &document)
{
    const bool colour = workspace.options.isChecked(Option::Highlight);
    EditingSurface &text = *document.Text;
    if (colour)
        ApplyClassFont(text, true);
    text.setSelText(BlankTemplate());
    text.setSelStart(80);
    if (colour)
        ApplyClassFont(text, false);
    text.clearUndo();
    document.state().setDirty(false);
    workspace.status.SetStatusText(QStringLiteral(
        "Enter your documents title then move down inside the body tags to create your page."));
}

} // namespace pw
