#pragma once

#include <QList>
#include <QObject>
#include <QPointer>
#include <QString>

class QMdiArea;

namespace pw {

class frmDoc;
class Workspace;

// The numbered document slots, from 1: which are free, each open slot's window, which document is
// current, and the cascade of new windows. A slot's window is made when the slot is filled and
// again on its next use after it was closed; what a document knows of itself is in its window's
// state (frmDoc::state()).
class DocumentSlots : public QObject
{
    Q_OBJECT

public:
    DocumentSlots(Workspace &workspace, QMdiArea &area);

    int count() const { return int(m_free.size()) - 1; } // the upper bound; never shrinks
    bool isFree(int slot) const { return slot < 1 || slot > count() || m_free[slot]; }
    frmDoc *document(int slot) const;
    QMdiArea &area() const { return m_area; }

    int CurrentDocument = 1;
    int ActivationSelStart = 0;
    int CascadeOffset = 0; // twips

    // The lowest free slot, taken; grows the slots by one when none is free.
    int FindFreeSlot();
    // Repaints every open document.
    void RefreshDocuments();
    // The current document, or nullptr when it is not open.
    frmDoc *current() const;
    // The open slots, from 1 up.
    QList<int> openSlots() const;

    // Makes the window of a taken slot (running its Form_Load), named untitledName until it has a
    // file, with the text font on its empty surface. The caller fills it, then clears Dirty.
    frmDoc *CreateDocumentWindow(int slot, const QString &untitledName);
    // Gives a slot back after a failed open, closing its window without questions.
    void abandon(int slot);
    // Closes every open document from slot 1 up; each may refuse.
    void CloseAll();
    // A document window's unload: the slot is free again.
    void release(int slot);

Q_SIGNALS:
    // A window was made for a slot, before its Form_Load: the place to build its menus and connect
    // its events.
    void documentCreated(pw::frmDoc *document);
    // A document closed; its slot is free.
    void documentClosed(int slot);

private:
    Workspace &m_workspace;
    QMdiArea &m_area;
    QList<QPointer<frmDoc>> m_windows;
    QList<bool> m_free;
};

} // namespace pw
