#include "markup/clipboard_undo.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "platform/platform.h"

namespace pw {

namespace {

EditingSurface *currentSurface()
{
    frmDoc *doc = CurrentDocumentWindow();
    return doc ? doc->Text : nullptr;
}

void setCutCopyEnabled(bool enabled)
{
    if (frmMDIMain *main = frmMDIMain::instance()) {
        main->setButtonEnabled(QStringLiteral("imgEditCut"), enabled);
        main->setButtonEnabled(QStringLiteral("imgEditCopy"), enabled);
    }
}

void copyFrom(EditingSurface &text)
{
    QString plain = text.SelText();
    plain.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    platform().setClipboard(plain, text.SelRTF().toUtf8());
}

} // namespace

void CopySelection()
{
    if (EditingSurface *text = currentSurface()) {
        copyFrom(*text);
        text->SetFocus();
    }
}

void CutSelection()
{
    if (EditingSurface *text = currentSurface()) {
        copyFrom(*text);
        text->setSelText(QString());
        text->SetFocus();
        setCutCopyEnabled(false);
    }
}

void PasteClipboard()
{
    EditingSurface *text = currentSurface();
    if (!text)
        return;
    const QByteArray fragment = platform().clipboardFragment();
    if (!fragment.isEmpty()) {
        text->setSelRTF(QString::fromUtf8(fragment));
    } else {
        ApplyClassFont(*text, false);
        text->setSelText(platform().clipboardText());
    }
    text->SetFocus();
    setCutCopyEnabled(false);
}

void UndoEdit()
{
    if (EditingSurface *text = currentSurface())
        text->Undo();
}

void SelectAllText()
{
    if (EditingSurface *text = currentSurface()) {
        text->setSelStart(0);
        text->setSelLength(text->TextLength());
        setCutCopyEnabled(true);
    }
}

} // namespace pw
