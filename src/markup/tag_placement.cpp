#include "markup/tag_placement.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "platform/message_box.h"
#include "platform/platform.h"

namespace pw {

namespace {

bool highlightOn(frmMDIMain *main)
{
    return main->options().isChecked(Option::Highlight);
}

} // namespace

void PlaceSingleTag(const QString &text)
{
    frmMDIMain *main = frmMDIMain::instance();
    frmDoc *doc = main ? main->slots().current() : nullptr;
    if (!doc)
        return;
    EditingSurface &surface = *doc->Text;
    if (highlightOn(main))
        ApplyClassFont(surface, true);
    surface.setSelText(text);
    if (highlightOn(main))
        ApplyClassFont(surface, false);
}

void PlacePairedTag(const QString &tag, bool separateLines, const std::optional<QString> &attributes)
{
    frmMDIMain *main = frmMDIMain::instance();
    frmDoc *doc = main ? main->slots().current() : nullptr;
    if (!doc)
        return;
    EditingSurface &surface = *doc->Text;
    EditingSurface &scratch = *main->Text;
    const bool colour = highlightOn(main);

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

int ConfirmSelectionReplace()
{
    return MsgBox(QStringLiteral("Highlighted text will be replaced!") + LineEnd + QStringLiteral("Continue?"),
                  MsgStyle::YesNo + MsgStyle::Exclamation, AppTitle());
}

bool SelectionMayBeReplaced()
{
    frmDoc *doc = CurrentDocumentWindow();
    if (!doc || doc->Text->SelLength() < 1)
        return true;
    if (ConfirmSelectionReplace() == MsgAnswer::Yes)
        return true;
    doc->Text->SetFocus();
    return false;
}

} // namespace pw
