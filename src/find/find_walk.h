#pragma once

#include "core/resumable_walk.h"

#include <QPointer>
#include <QString>

class QWidget;

namespace pw {

class Workspace;
class frmDoc;

// What a search looks for: the text, the options of Find (0, or MatchCase), and whether it goes on
// through all open documents.
struct SearchRequest {
    QString target;
    int options = 0;
    bool allDocuments = false;
};

// Makes an open slot's document the current one and brings it forward: restored when minimized,
// shown, active. Null when the slot is free.
frmDoc *BringDocumentForward(Workspace &workspace, int slot);
// The current document; when it has closed, the active one, which becomes current; else null.
frmDoc *CurrentOrActiveDocument(Workspace &workspace);
// The first open slot behind slot (0 for the first of all), or 0 when there is none.
int NextOpenSlot(const Workspace &workspace, int slot);

// Find's walk. Each stop is the next hit, selected in its document; going on searches from one
// behind it, so overlapping hits are all found. The hit is only a position: the user may type
// between two stops, and the next search starts behind it whatever changed. A walk that ends found
// nothing more, and the next start begins afresh. The current document is looked up at every step,
// so a document closed meanwhile is never touched.
class FindWalk : public ResumableWalk
{
    Q_OBJECT

public:
    // A document brought forward gives the focus back to dialog.
    explicit FindWalk(Workspace &workspace, QWidget *dialog = nullptr);

    // What the next step looks for; read at each step, so a changed check box counts at once.
    SearchRequest request;
    // The position of the last hit; 0 before the first and after a failed search.
    int hit() const { return m_hit; }

protected:
    void begin() override
    {
        m_hit = 0;
        m_fresh = true;
    }
    Step advance() override;

private:
    frmDoc *forward(int slot);

    Workspace &m_workspace;
    QPointer<QWidget> m_dialog;
    int m_hit = 0;
    bool m_fresh = true; // no step taken since the start: all documents begin at the first
};

} // namespace pw
