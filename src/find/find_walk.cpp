#include "find/find_walk.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/workspace.h"

#include <QMdiArea>

namespace pw {

frmDoc *BringDocumentForward(Workspace &workspace, int slot)
{
    frmDoc *document = workspace.slots.isFree(slot) ? nullptr : workspace.slots.document(slot);
    if (!document)
        return nullptr;
    workspace.slots.CurrentDocument = slot;
    if (document->isMinimized())
        document->showNormal();
    document->show();
    workspace.slots.area().setActiveSubWindow(document);
    return document;
}

frmDoc *CurrentOrActiveDocument(Workspace &workspace)
{
    if (frmDoc *document = workspace.current())
        return document;
    auto *active = qobject_cast<frmDoc *>(workspace.slots.area().activeSubWindow());
    if (active && !workspace.slots.isFree(active->slot()))
        workspace.slots.CurrentDocument = active->slot();
    return workspace.current();
}

int NextOpenSlot(const Workspace &workspace, int slot)
{
    for (int next = qMax(slot, 0) + 1; next <= workspace.slots.count(); ++next)
        if (!workspace.slots.isFree(next))
            return next;
    return 0;
}

FindWalk::FindWalk(Workspace &workspace, QWidget *dialog)
    : ResumableWalk(dialog), m_workspace(workspace), m_dialog(dialog)
{
}

frmDoc *FindWalk::forward(int slot)
{
    frmDoc *document = BringDocumentForward(m_workspace, slot);
    if (m_dialog && m_dialog->isVisible())
        m_dialog->activateWindow();
    return document;
}

ResumableWalk::Step FindWalk::advance()
{
    frmDoc *document = CurrentOrActiveDocument(m_workspace);
    // A hit at 0 is a hit like any other: only a new walk goes back to the first document.
    if (request.allDocuments && std::exchange(m_fresh, false))
        document = forward(NextOpenSlot(m_workspace, 0));
    if (!document || request.target.isEmpty()) {
        m_hit = 0;
        return Step::Done;
    }
    int found = document->Text->Find(request.target, m_hit + 1, -1, request.options);
    // Through the documents behind this one, each from its start.
    while (found == -1 && request.allDocuments) {
        document = forward(NextOpenSlot(m_workspace, document->slot()));
        if (!document)
            break;
        found = document->Text->Find(request.target, 0, -1, request.options);
    }
    if (found == -1) {
        m_hit = 0;
        return Step::Done;
    }
    m_hit = found;
    return Step::WaitForUser;
}

} // namespace pw
