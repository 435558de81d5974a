#include "core/workspace.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/settings_store.h"
#include "core/status_presenter.h"
#include "platform/platform.h"

namespace pw {

Workspace::Workspace(Platform &platform, StatusPresenter &status, EditingSurface &scratch, QMdiArea &area)
    : platform(platform), status(status), scratch(scratch), fonts(DefaultClassFonts()), CMDialog1(&platform),
      backColor(DefaultBackColor()), slots(*this, area)
{
    status.setClock([&platform] { return platform.ticks(); });
    for (int i = 0; i < OptionCount; ++i)
        options.setChecked(Option(i), DefaultOption(Option(i)));
    functionKeys.fill(DefaultFunctionKey());
}

bool Workspace::AnyDocumentOpen()
{
    if (!slots.openSlots().isEmpty())
        return true;
    status.ClearStatusText();
    return false;
}

void Workspace::FocusCurrentDocument()
{
    if (frmDoc *document = AnyDocumentOpen() ? current() : nullptr)
        document->Text->SetFocus();
}

int Workspace::MsgBox(const QString &text, int style)
{
    return platform.msgBox(text, style, AppTitle());
}

void Workspace::SetMarkupToolsHidden(bool hide)
{
    if (std::exchange(m_markupToolsHidden, hide) != hide)
        Q_EMIT markupToolsChanged(hide);
}

void Workspace::setPreviousFiles(const QStringList &entries)
{
    if (previous[PreviousKind::Files] == entries)
        return;
    previous[PreviousKind::Files] = entries;
    Q_EMIT previousFilesChanged();
}

} // namespace pw
