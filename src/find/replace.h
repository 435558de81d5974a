#pragma once

#include "core/resumable_walk.h"
#include "find/find_walk.h"

#include <QPointer>
#include <QString>

#include <functional>

namespace pw {

class EditingSurface;
class Workspace;
class frmDoc;

// Replaces every hit of target in a surface from its start, as one undo step and one change. The
// next search starts behind the inserted text, so a replacement that holds the target doesn't
// loop. progress(done, total) is asked now and then; false stops the pass where it stands. Each
// hit costs a search from the last one and one write, never a copy of the text. Returns the count.
int ReplaceAllIn(EditingSurface &text, const QString &target, const QString &replacement, int options,
                 const std::function<bool(qint64 done, qint64 total)> &progress = {});

// Replace All over the current document or, with allDocuments, each open one from slot 1 up,
// brought forward with nothing selected. Status text, wait cursor and progress strip while it
// runs; Escape stops it with what is done kept. Returns the count; -1 when no document is open.
int ReplaceAll(Workspace &workspace, const SearchRequest &request, const QString &replacement);

// Verify's walk: each stop is a hit, selected in its document, waiting for the user's answer.
// Yes replaces it; Yes and No go on behind it by the replacement's length (No with an empty
// replacement steps past the hit); Cancel ends the walk in all documents.
class VerifyWalk : public ResumableWalk
{
    Q_OBJECT

public:
    VerifyWalk(Workspace &workspace, SearchRequest request, QString replacement, QObject *parent = nullptr);

    int count() const { return m_count; }
    // A message box's answer: 6 Yes, 7 No, 2 Cancel.
    void answer(int msgAnswer);

protected:
    void begin() override;
    Step advance() override;

private:
    Workspace &m_workspace;
    SearchRequest m_request;
    QString m_replacement;
    QPointer<frmDoc> m_document; // the document searched; null between documents
    int m_slot = 0;              // its slot, to go on behind it when it has closed
    bool m_started = false;
    int m_hit = -1;
    int m_next = 0;
    int m_count = 0;
};

} // namespace pw
