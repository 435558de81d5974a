#include "core/document_slots.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/workspace.h"

#include <QMdiArea>

namespace pw {

DocumentSlots::DocumentSlots(Workspace &workspace, QMdiArea &area) : m_workspace(workspace), m_area(area)
{
    // Index 0 is unused; slot 1 exists from the start, free until the first document takes it.
    m_windows.resize(2);
    m_free = {true, true};
}

frmDoc *DocumentSlots::document(int slot) const
{
    if (slot < 1 || slot > count())
        return nullptr;
    return m_windows[slot];
}

frmDoc *DocumentSlots::current() const
{
    return isFree(CurrentDocument) ? nullptr : m_windows[CurrentDocument].data();
}

int DocumentSlots::FindFreeSlot()
{
    for (int slot = 1; slot <= count(); ++slot) {
        if (m_free[slot]) {
            m_free[slot] = false;
            return slot;
        }
    }
    m_windows.append(nullptr);
    m_free.append(false);
    return count();
}

QList<int> DocumentSlots::openSlots() const
{
    QList<int> open;
    for (int slot = 1; slot <= count(); ++slot)
        if (!m_free[slot] && m_windows[slot])
            open.append(slot);
    return open;
}

void DocumentSlots::RefreshDocuments()
{
    for (int slot : openSlots())
        m_windows[slot]->repaint();
}

frmDoc *DocumentSlots::CreateDocumentWindow(int slot, const QString &untitledName)
{
    auto *doc = new frmDoc(m_workspace, slot, untitledName);
    m_windows[slot] = doc;
    m_free[slot] = false;
    Q_EMIT documentCreated(doc);
    m_area.addSubWindow(doc);
    doc->Form_Load();
    doc->Text->applyClassFont(false);
    if (!doc->isMaximized())
        doc->show();
    return doc;
}

void DocumentSlots::abandon(int slot)
{
    if (frmDoc *doc = m_windows[slot]; doc && !m_free[slot]) {
        doc->state().setDirty(false);
        doc->unloadQuietly();
    } else {
        release(slot);
    }
}

void DocumentSlots::release(int slot)
{
    if (slot < 1 || slot > count())
        return;
    m_free[slot] = true;
    Q_EMIT documentClosed(slot);
}

void DocumentSlots::CloseAll()
{
    for (int slot = 1; slot <= count(); ++slot)
        if (!m_free[slot] && m_windows[slot])
            m_windows[slot]->close();
}

} // namespace pw
