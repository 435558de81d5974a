#include "wizards/frame_generation.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "files/previous_lists.h"
#include "files/save_document.h"
#include "files/text_file.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"

#include <QDialog>
#include <QDir>
#include <QFileInfo>
#include <QMdiArea>

#include <cmath>

namespace pw
{

namespace
{

QString lines(std::initializer_list<const char *> parts)
{
    QStringList all;
    for (const char *part : parts)
        all.append(QLatin1String(part));
    return all.join(LineEnd);
}

// The checks before anything is shown: false after a message.
bool validate(Workspace &ws, const FrameModel &model, const FramePageOptions &o, QString *mergeText)
{
    if (model.count() == 1) {
        ws.MsgBox(QStringLiteral("There is no frame information to process."), MsgStyle::Exclamation);
        return false;
    }
    if (o.saveFile && TrimTrailing(o.fileName).isEmpty()) {
        ws.MsgBox(lines({"You have selected to save the document", "once it is created but have not selected",
                         "a file name to use.", "Please select a file name."}),
                  MsgStyle::Information);
        return false;
    }
    if (!o.merge)
        return true;
    if (TrimTrailing(o.mergeFile).isEmpty()) {
        ws.MsgBox(lines({"You have selected to have the NOFRAMES", "section of your document created from an",
                         "existing file but did not select the file.",
                         "Please select a file to use for the merge."}),
                  MsgStyle::Information);
        return false;
    }
    const QString path = FrameFilePath(o.mergeFile, ws.current());
    if (!QFileInfo::exists(path)) {
        ws.MsgBox(
            lines({"The file you selected to use in the NOFRAMES", "section of your document does not exist.",
                   "Please select a different file to use for the merge."}),
            MsgStyle::Information);
        return false;
    }
    // Read now, so that nothing is half made when it can't be read.
    const ReadResult read = readTextFile(path, FileShare::Shared);
    if (read.error != ErrorCode::None) {
        ws.MsgBox(lines({"The file you selected to use in the NOFRAMES",
                         "section of your document can not be read."}) +
                      LineEnd + errorText(read.error) + LineEnd +
                      QStringLiteral("Please select a different file to use for the merge."),
                  MsgStyle::Exclamation);
        return false;
    }
    *mergeText = read.decoded.text;
    return true;
}

// Whether the frame set may go to path: a file held elsewhere or read-only, or a folder that
// can't take a new file, is refused; an existing file is replaced only after a Yes.
bool targetWritable(Workspace &ws, LongPass &pass, const QString &path)
{
    QString reason;
    const QFileInfo info(path);
    if (info.exists()) {
        QByteArray bytes;
        if (!info.isFile())
            reason = QStringLiteral("%1 is not a file.").arg(path);
        else if (isReadOnlyPath(path))
            reason = QStringLiteral("The file %1 is read-only.").arg(path);
        else if (readWholeFile(path, bytes, FileShare::Exclusive) != ErrorCode::None)
            reason = QStringLiteral("The file %1 is open elsewhere.").arg(path);
    } else if (!QFileInfo(info.absolutePath()).isDir()) {
        reason = QStringLiteral("The folder %1 does not exist.").arg(info.absolutePath());
    } else if (isReadOnlyPath(info.absolutePath())) {
        reason = QStringLiteral("The folder %1 is read-only.").arg(info.absolutePath());
    }
    pass.pauseWaitCursor();
    bool ok = reason.isEmpty();
    if (!ok)
        ws.MsgBox(QStringLiteral("Permission denied!") + LineEnd + reason, MsgStyle::Exclamation);
    else if (info.exists())
        ok = ws.MsgBox(path + LineEnd + QStringLiteral("Replace existing file?"),
                       MsgStyle::YesNo + MsgStyle::Question) == MsgAnswer::Yes;
    pass.resumeWaitCursor();
    return ok;
}

// Collects the page's pieces with the progress they stand for; they go into the document at once.
class PageWriter
{
public:
    PageWriter(Workspace &ws, LongPass &pass) : m_ws(ws), m_pass(pass) {}

    void add(const QString &text, bool isTag) { m_pieces.append({text, isTag}); }
    void progress(double value)
    {
        m_progress = qMin(100.0, value);
        m_pass.step(qint64(m_progress), 100);
    }
    double value() const { return m_progress; }
    void status(const QString &text) { m_ws.status.SetStatusText(text); }

    void write(EditingSurface &surface)
    {
        PieceBatch batch(surface);
        for (const MarkupPiece &piece : std::as_const(m_pieces))
            batch.add(piece);
        batch.write();
    }

private:
    Workspace &m_ws;
    LongPass &m_pass;
    QList<MarkupPiece> m_pieces;
    double m_progress = 0;
};

void addFrameSets(PageWriter &page, const FrameModel &model, const FramePageOptions &o)
{
    const int frameCount = model.liveCount();
    page.status(QStringLiteral("Building frameset information..."));
    // A share of 50 per frame, counted from the start so that the shares add up exactly.
    const double start = page.value();
    int leaves = 0;
    BuildFrameSets(
        model, o.sets, [&page](const MarkupPiece &piece) { page.add(piece.text, true); },
        [&] { page.progress(start + 50.0 * ++leaves / frameCount); });
}

void addBody(PageWriter &page, const FrameModel &model, const FramePageOptions &o, const QString &mergeText)
{
    page.add(LineEnd + FrameWizardComment + LineEnd, true);
    addFrameSets(page, model, o);
    page.progress(60);
    if (o.noFramesTag) {
        page.status(QStringLiteral("Adding NoFRAMES tag..."));
        page.add(QStringLiteral("<NOFRAMES>") + LineEnd, true);
        if (o.merge) {
            page.status(QStringLiteral("Processing ") + o.mergeFile +
                        QStringLiteral(" file for NOFRAMES tag information..."));
            const QString body = NoFramesSection(mergeText, [&page](qint64 done, qint64 total) {
                page.progress(double(done) / double(qMax<qint64>(total, 1)) * 40 + 60);
            });
            if (!body.isEmpty())
                page.add(body, false);
        }
        page.add(QStringLiteral("</NOFRAMES>") + LineEnd, true);
    }
    page.progress(100);
    page.add(LineEnd + QStringLiteral("</HTML>"), true);
}

bool generate(Workspace &ws, const FrameModel &model, const FramePageOptions &o, QDialog &dialog,
              const QString &mergeText)
{
    frmDoc *current = ws.current();
    if (!o.newDocument && !current)
        return false;
    LongPass pass(ws, QStringLiteral("Generating frames..."));
    dialog.hide();
    if (current)
        current->repaint();
    PageWriter page(ws, pass);

    frmDoc *doc = current;
    QString path;
    if (o.newDocument) {
        if (o.saveFile) {
            path = FrameFilePath(o.fileName, current);
            if (!targetWritable(ws, pass, path))
                return false;
        }
        page.status(QStringLiteral("Creating new document."));
        DocumentSlots &slots = ws.slots;
        const int n = slots.FindFreeSlot();
        page.progress(2);
        doc = slots.CreateDocumentWindow(n, QStringLiteral("Untitled: ") + QString::number(n));
        if (o.saveFile) {
            doc->state().setPath(path);
            // An existing file is held (and locked) now; it is written only by the save below.
            const ErrorCode held =
                QFileInfo::exists(path)
                    ? FileHandles::instance().hold(n, path, ws.options.isChecked(Option::LockFiles))
                    : ErrorCode::None;
            if (held != ErrorCode::None) {
                slots.abandon(n);
                pass.pauseWaitCursor();
                ws.MsgBox(QStringLiteral("Permission denied!") + LineEnd + errorText(held),
                          MsgStyle::Exclamation);
                return false;
            }
        }
        page.progress(5);
        doc->repaint();
        page.add(FramePageHeader(o.title), true);
        slots.CurrentDocument = n;
        slots.area().setActiveSubWindow(doc);
        page.progress(10);
    }
    if (o.replace) {
        doc->Text->setSelStart(o.replace->first);
        doc->Text->setSelLength(o.replace->second - o.replace->first);
        addFrameSets(page, model, o);
    } else {
        addBody(page, model, o, mergeText);
    }
    EditingSurface &text = *doc->Text;
    {
        EditingSurface::EditGroup oneStep(text);
        page.write(text);
    }
    if (o.newDocument)
        text.clearUndo(); // a new page has nothing to go back to

    if (o.saveFile) {
        page.status(QStringLiteral("Saving ") + doc->Caption());
        if (!SaveDocument(ws, *doc)) {
            ws.slots.abandon(doc->slot());
            return false;
        }
        AddPreviousFile(ws, doc->Caption());
    }
    ApplyClassFont(text, false);
    text.setSelStart(o.replace ? o.replace->first : 0);
    return true;
}

} // namespace

QString FrameFilePath(const QString &typed, const frmDoc *current)
{
    const QString name = TrimTrailing(typed);
    if (name.isEmpty() || QDir::isAbsolutePath(name))
        return name;
    const QString folder = current && !current->isUntitled()
                               ? QFileInfo(current->state().path()).absolutePath()
                               : QDir::homePath();
    return QDir::cleanPath(QDir(folder).filePath(name));
}

bool GenerateFramePage(Workspace &workspace, const FrameModel &model, const FramePageOptions &options,
                       QDialog &dialog)
{
    QString mergeText;
    if (!validate(workspace, model, options, &mergeText))
        return false;
    const bool done = generate(workspace, model, options, dialog, mergeText);
    if (!done)
        dialog.show();
    return done;
}

} // namespace pw
