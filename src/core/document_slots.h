#pragma once

#include "core/app_state.h"

#include <QList>
#include <QPointer>
#include <QString>

#include <array>

namespace pw {

class frmDoc;
class frmMDIMain;

// The numbered document slots, from 1: each slot's window, its state and its anchor names.
// A slot's window is made the first time the slot is touched and again on its next use after it
// was closed.
class DocumentSlots
{
public:
    static constexpr int LocalNameCount = 22; // positions 0 to 21

    explicit DocumentSlots(frmMDIMain *main);

    int count() const { return int(m_windows.size()) - 1; } // the upper bound
    frmDoc *document(int slot) const;
    DocumentState &state(int slot) { return m_states[slot]; }
    const DocumentState &state(int slot) const { return m_states[slot]; }
    QString &LocalNames(int position, int slot) { return m_localNames[slot][position]; }

    int CurrentDocument = 1;
    int ActivationSelStart = 0;
    int CascadeOffset = 0; // twips

    // The lowest free slot, taken (Free = 0); grows the slots by one when none is free.
    int FindFreeSlot();
    // True when any slot holds an open document; otherwise clears the status text.
    bool AnyDocumentOpen();
    // Repaints every open document.
    void RefreshDocuments();
    // The current document, or nullptr when it is not open.
    frmDoc *current() const;

    // Makes the window of a taken slot (running its Form_Load), captions it and gives its empty
    // surface the text font. The caller fills it, then clears Dirty.
    frmDoc *CreateDocumentWindow(int slot, const QString &caption);
    // Marks a slot free after a failed open and closes its window without questions.
    void abandon(int slot);
    // Closes every open document from slot 1 up; each may refuse.
    void CloseAll();

    QList<int> openSlots() const;

private:
    frmMDIMain *m_main;
    QList<QPointer<frmDoc>> m_windows;
    QList<DocumentState> m_states;
    QList<std::array<QString, LocalNameCount>> m_localNames;
};

} // namespace pw
