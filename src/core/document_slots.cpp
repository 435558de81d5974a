#include "core/document_slots.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/status_line.h"

#include <QMdiArea>

namespace pw {

DocumentSlots::DocumentSlots(frmMDIMain *main) : m_main(main)
{
    // Index 0 is unused; slot 1 exists from the start, free until the first document takes it.
    m_windows.resize(2);
    m_states.resize(2);
    m_localNames.resize(2);
    m_states[1].Free = True;
}

frmDoc *DocumentSlots::document(int slot) const
{
    if (slot < 1 || slot > count())
        return nullptr;
    return m_windows[slot];
}

frmDoc *DocumentSlots::current() const
{
    if (CurrentDocument < 1 || CurrentDocument > count() || m_states[CurrentDocument].Free)
        return nullptr;
    return m_windows[CurrentDocument];
}

int DocumentSlots::FindFreeSlot()
{
    for (int slot = 1; slot <= count(); ++slot) {
        if (m_states[slot].Free) {
            m_states[slot].Free = False;
            return slot;
        }
    }
    m_windows.append(nullptr);
    m_states.append(DocumentState{});
    m_localNames.append(std::array<QString, LocalNameCount>{});
    return count();
}

bool DocumentSlots::AnyDocumentOpen()
{
    for (int slot = 1; slot <= count(); ++slot)
        if (!m_states[slot].Free && m_windows[slot])
            return true;
    ClearStatusText();
    return false;
}

QList<int> DocumentSlots::openSlots() const
{
    QList<int> open;
    for (int slot = 1; slot <= count(); ++slot)
        if (!m_states[slot].Free && m_windows[slot])
            open.append(slot);
    return open;
}

void DocumentSlots::RefreshDocuments()
{
    for (int slot : openSlots())
        m_windows[slot]->repaint();
}

frmDoc *DocumentSlots::CreateDocumentWindow(int slot, const QString &caption)
{
    auto *doc = new frmDoc(m_main);
    m_windows[slot] = doc;
    m_states[slot] = DocumentState{};
    doc->Tag = QString::number(slot);
    doc->setCaption(caption);
    Q_EMIT m_main->documentWindowCreated(doc);
    m_main->mdiArea->addSubWindow(doc);
    doc->Text->setBackColor(m_main->Text->BackColor());
    doc->Form_Load();
    ApplyClassFont(*doc->Text, false);
    if (!doc->isMaximized())
        doc->show();
    return doc;
}

void DocumentSlots::abandon(int slot)
{
    m_states[slot].Free = True;
    m_states[slot].Dirty = False;
    if (frmDoc *doc = m_windows[slot])
        doc->unloadQuietly();
}

void DocumentSlots::CloseAll()
{
    for (int slot = 1; slot <= count(); ++slot)
        if (!m_states[slot].Free && m_windows[slot])
            m_windows[slot]->close();
}

} // namespace pw
