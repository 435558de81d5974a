#include "markup/clipboard_undo.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/workspace.h"
#include "platform/platform.h"

namespace pw {

namespace {

void copyFrom(Platform &platform, EditingSurface &text)
{
    QString plain = text.SelText();
    plain.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    platform.setClipboard(plain, text.SelRTF().toUtf8());
}

} // namespace

void CopySelection(Workspace &workspace, frmDoc &document)
{
    copyFrom(workspace.platform, *document.Text);
    document.Text->SetFocus();
}

void CutSelection(Workspace &workspace, frmDoc &document)
{
    EditingSurface &text = *document.Text;
    copyFrom(workspace.platform, text);
    text.setSelText(QString());
    text.SetFocus();
}

void PasteClipboard(Workspace &workspace, frmDoc &document)
{
    EditingSurface &text = *document.Text;
    const QByteArray fragment = workspace.platform.clipboardFragment();
    if (!fragment.isEmpty()) {
        text.setSelRTF(QString::fromUtf8(fragment));
    } else {
        ApplyClassFont(text, false);
        text.setSelText(workspace.platform.clipboardText());
    }
    text.SetFocus();
}

void UndoEdit(frmDoc &document)
{
    document.Text->Undo();
}

void SelectAllText(frmDoc &document)
{
    EditingSurface &text = *document.Text;
    text.setSelStart(0);
    text.setSelLength(text.TextLength());
}

} // namespace pw
