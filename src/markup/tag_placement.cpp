#include "markup/tag_placement.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/workspace.h"
#include "platform/message_box.h"

namespace pw {

void PlaceSingleTag(Workspace &workspace, frmDoc &document, const QString &text)
{
    EditingSurface &surface = *document.Text;
    const bool colour = workspace.options.isChecked(Option::Highlight);
    if (colour)
        ApplyClassFont(surface, true);
    surface.setSelText(text);
    if (colour)
        ApplyClassFont(surface, false);
}

void PlacePairedTag(Workspace &workspace, frmDoc &document, const QString &tag, bool separateLines,
                    const std::optional<QString> &attributes)
{
    EditingSurface &surface = *document.Text;
    EditingSurface &scratch = workspace.scratch;
    const bool colour = workspace.options.isChecked(Option::Highlight);

    scratch.setText(QString());
    QString startTag = QLatin1Char('<') + tag;
    if (attributes)
        startTag += QLatin1Char(' ') + *attributes;
    startTag += QLatin1Char('>');
    int extra = 0;
    if (separateLines) {
        startTag += LineEnd;
        extra = 2;
    }

    EditingSurface::EditGroup oneStep(surface);
    QString kept;
    if (surface.SelLength() >= 1) {
        kept = surface.SelRTF();
        surface.setSelText(QString());
    }
    const QString endTag = (separateLines ? LineEnd : QString()) + QStringLiteral("</") + tag + QLatin1Char('>');

    if (colour)
        ApplyClassFont(scratch, true);
    scratch.setSelText(startTag);
    if (colour)
        ApplyClassFont(scratch, false);
    scratch.setSelRTF(kept);
    if (colour)
        ApplyClassFont(scratch, true);
    scratch.setSelText(endTag);

    scratch.setSelStart(0);
    scratch.setSelLength(scratch.TextLength());
    surface.setSelRTF(scratch.SelRTF());
    surface.setSelStart(surface.SelStart() - (extra + int(tag.size()) + 3));
    surface.SetFocus();
}

int ConfirmSelectionReplace(Workspace &workspace)
{
    return workspace.MsgBox(QStringLiteral("Highlighted text will be replaced!") + LineEnd + QStringLiteral("Continue?"),
                            MsgStyle::YesNo + MsgStyle::Exclamation);
}

bool SelectionMayBeReplaced(Workspace &workspace, frmDoc &document)
{
    if (document.Text->SelLength() < 1)
        return true;
    if (ConfirmSelectionReplace(workspace) == MsgAnswer::Yes)
        return true;
    document.Text->SetFocus();
    return false;
}

} // namespace pw
