#include "find/replace.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "core/workspace.h"
#include "platform/message_box.h"

namespace pw {

namespace {
// Hits between two progress steps and Escape polls.
constexpr int PollEvery = 256;
} // namespace

int ReplaceAllIn(EditingSurface &text, const QString &target, const QString &replacement, int options,
                 const std::function<bool(qint64, qint64)> &progress)
{
    options |= EditingSurface::NoHighlight;
    const int size = int(target.size());
    const int step = int(replacement.size());
    // The hits are found in the text as it stands, each search going on behind the last hit, which
    // is where a search behind its replacement would go on; then all go in as one edit.
    QList<EditingSurface::RangeEdit> edits;
    int end = 0; // behind the last replacement, in the text that results
    for (int pos = text.Find(target, 0, -1, options); pos != -1; pos = text.Find(target, pos + size, -1, options)) {
        end = pos + int(edits.size()) * (step - size) + step;
        edits.append({EditingSurface::RangeEdit::Rewrite, pos, size, nullptr, replacement});
        if (progress && edits.size() % PollEvery == 0 && !progress(pos, text.TextLength()))
            break;
    }
    if (edits.isEmpty())
        return 0;
    {
        EditingSurface::EditGroup oneStep(text);
        EditingSurface::EventBatch oneChange(text);
        text.applyEdits(edits);
    }
    text.setSelStart(end + 1);
    return int(edits.size());
}

int ReplaceAll(Workspace &workspace, const SearchRequest &request, const QString &replacement)
{
    frmDoc *current = CurrentOrActiveDocument(workspace);
    if (!current)
        return -1;
    const QList<int> slots = request.allDocuments ? workspace.slots.openSlots() : QList<int>{current->slot()};
    LongPass pass(workspace, QStringLiteral("Replacing..."));
    constexpr qint64 Share = 1000; // of the progress strip, per document
    const qint64 total = Share * slots.size();
    int count = 0;
    bool stopped = false;
    for (qsizetype i = 0; i < slots.size() && !stopped; ++i) {
        frmDoc *document = request.allDocuments ? BringDocumentForward(workspace, slots[i]) : current;
        if (!document)
            continue;
        EditingSurface &text = *document->Text;
        if (request.allDocuments) {
            text.setSelLength(0);
            text.Refresh();
        }
        count += ReplaceAllIn(text, request.target, replacement, request.options, [&](qint64 done, qint64 length) {
            pass.step(Share * i + (length > 0 ? Share * done / length : 0), total);
            stopped = pass.escapePressed();
            return !stopped;
        });
        pass.step(Share * (i + 1), total);
    }
    return count;
}

VerifyWalk::VerifyWalk(Workspace &workspace, SearchRequest request, QString replacement, QObject *parent)
    : ResumableWalk(parent), m_workspace(workspace), m_request(std::move(request)),
      m_replacement(std::move(replacement))
{
}

void VerifyWalk::begin()
{
    m_document = nullptr;
    m_slot = 0;
    m_started = false;
    m_hit = -1;
    m_count = 0;
}

ResumableWalk::Step VerifyWalk::advance()
{
    for (;;) {
        if (!m_document) {
            if (m_started && !m_request.allDocuments)
                return Step::Done;
            m_started = true;
            frmDoc *next = m_request.allDocuments ? BringDocumentForward(m_workspace, NextOpenSlot(m_workspace, m_slot))
                                                  : CurrentOrActiveDocument(m_workspace);
            if (!next)
                return Step::Done;
            m_document = next;
            m_slot = next->slot();
            m_next = 0;
            if (m_request.allDocuments) {
                next->Text->setSelLength(0);
                next->Text->Refresh();
            }
        }
        // Find selects the hit, which is what the question points at.
        m_hit = m_document->Text->Find(m_request.target, m_next, -1, m_request.options);
        if (m_hit != -1) {
            m_document->Text->ensureCursorVisible();
            return Step::WaitForUser;
        }
        m_document = nullptr;
    }
}

void VerifyWalk::answer(int msgAnswer)
{
    if (!isWaiting())
        return;
    if (msgAnswer == MsgAnswer::Cancel) {
        stop();
        return;
    }
    if (!m_document) {
        resume();
        return;
    }
    EditingSurface &text = *m_document->Text;
    int step = int(m_replacement.size());
    if (msgAnswer == MsgAnswer::Yes) {
        ++m_count;
        text.setSelStart(m_hit);
        text.setSelLength(int(m_request.target.size()));
        text.setSelText(m_replacement);
    } else if (step == 0) {
        step = int(m_request.target.size()); // the same hit would only come back
    }
    m_next = m_hit + step;
    resume();
}

} // namespace pw
