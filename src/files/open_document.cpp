#include "files/open_document.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "files/previous_lists.h"
#include "files/text_file.h"
#include "markup/highlighter.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"
#include "platform/platform.h"

#include <QFileInfo>
#include <QMdiArea>
#include <QPointer>

#include <optional>

namespace pw {

namespace {

constexpr int HideReadOnly = 4; // the open dialog's flag that hides the read-only box
// Below this a file decodes in one piece: no progress strip, no Escape.
constexpr qint64 ProgressFrom = 1 << 20;

// How a way in tells a failed read.
enum class Failure {
    Dialog,      // 70: "Permission denied!"
    CommandLine, // 70: "Permission denied!", others the platform's text
    Other,       // 70: "Permission Denied!", others the platform's text
    Previous,    // 70: "Permission denied!", 53 and 75: "Not found!"
};

struct Way {
    Way(const QString &status, Failure how) : statusText(status), failure(how) {}

    QString statusText;
    Failure failure;
    bool refresh = true;      // refresh what the dialog covered before the load
    bool showTools = false;   // bring the markup tools back
    bool rememberOpen = false; // History.Open
    int previousIndex = 0;    // the entry a "Not found!" drops
};

QString couldNotOpen(const QString &path, ErrorCode code)
{
    return QStringLiteral("Could not open the file [") + path + QStringLiteral("] Due to the following error!")
           + LineEnd + LineEnd + errorText(code);
}

void tellFailure(Workspace &ws, const Way &way, const QString &path, ErrorCode code)
{
    // No hourglass over a message box.
    ws.status.HideWaitCursor();
    const auto exclamation = [&ws](const QString &text) { ws.MsgBox(text, MsgStyle::OkOnly + MsgStyle::Exclamation); };
    const bool denied = code == ErrorCode::PermissionDenied;
    switch (way.failure) {
    case Failure::Dialog:
    case Failure::CommandLine:
        exclamation(denied ? QStringLiteral("Permission denied!") : couldNotOpen(path, code));
        break;
    case Failure::Other:
        exclamation(denied ? QStringLiteral("Permission Denied!") : couldNotOpen(path, code));
        break;
    case Failure::Previous:
        if (denied) {
            exclamation(QStringLiteral("Permission denied!"));
        } else if (code == ErrorCode::FileNotFound || code == ErrorCode::PathFileAccess) {
            ws.MsgBox(path + LineEnd + QStringLiteral("Not found!"), MsgStyle::OkOnly);
            RemovePreviousFile(ws, way.previousIndex);
        } else {
            exclamation(couldNotOpen(path, code));
        }
        break;
    }
}

// The strip for a large file's read and load; Escape there stops them. Small files show nothing.
class LargeFileProgress
{
public:
    explicit LargeFileProgress(Workspace &ws) : m_ws(ws) {}

    bool operator()(qint64 done, qint64 total)
    {
        if (total < ProgressFrom || done >= total)
            return true;
        if (!m_strip)
            m_strip.emplace(m_ws.status);
        m_strip->step(done, total);
        return !m_ws.platform.escapePressed();
    }

private:
    Workspace &m_ws;
    std::optional<ProgressStrip> m_strip;
};

// Reads while the strip shows how far a large file got.
ReadResult readWithProgress(Workspace &ws, const std::function<ReadResult(const DecodeProgress &)> &read)
{
    LargeFileProgress progress(ws);
    return read(std::ref(progress));
}

// A read that failed or was cancelled gives the slot back; a failure is told as the way in tells it.
bool readFailed(Workspace &ws, int slot, const ReadResult &read, const Way &way, const QString &path)
{
    if (read.error == ErrorCode::None && !read.decoded.cancelled)
        return false;
    ws.slots.abandon(slot);
    if (read.error != ErrorCode::None)
        tellFailure(ws, way, path, read.error);
    return true;
}

// Fills a window made for slot with the decoded text. A large file goes in piece by piece under
// the progress strip, and Escape there stops the open: the window goes again and the slot is free.
// The load is no undo step.
// path: the file the document holds, or empty for one that holds none (named untitledName).
frmDoc *fillWindow(Workspace &ws, int slot, const QString &path, const QString &untitledName,
                   const DecodedText &decoded)
{
    frmDoc *document = ws.slots.CreateDocumentWindow(slot, untitledName);
    document->state().setPath(path);
    document->state().setFormat(decoded.format, decoded.note);
    document->state().binary = decoded.binary;
    LargeFileProgress progress(ws);
    // The colouring pass that follows would rewrite each tag in the surface; on the text it costs
    // a scan.
    // A file that isn't text is shown, never rewritten.
    const bool uppercase = ws.options.isChecked(Option::Highlight) && ws.options.isChecked(Option::UHTML) && !decoded.binary;
    if (!document->Text->loadText(uppercase ? UppercaseTags(decoded.text) : decoded.text, std::ref(progress))) {
        ws.slots.abandon(slot);
        return nullptr;
    }
    return document;
}

void colourAndName(Workspace &ws, frmDoc &document)
{
    FindLocalNames(ws, document, HighlightDocument(ws, document));
    document.Text->clearUndo();
}

bool askOpenAnyway(Workspace &ws, const QString &path)
{
    return ws.MsgBox(path + QStringLiteral(" does not look like a text file. Open it anyway?"),
                     MsgStyle::YesNo + MsgStyle::Question)
           == MsgAnswer::Yes;
}

bool openAnyway(Workspace &ws, LongPass &pass, const QString &path)
{
    pass.pauseWaitCursor();
    const bool yes = askOpenAnyway(ws, path);
    pass.resumeWaitCursor();
    return yes;
}

// The load sequence of every way in but the recovery.
frmDoc *loadDocument(Workspace &ws, const QString &path, const Way &way)
{
    DocumentSlots &slots = ws.slots;
    if (frmDoc *open = OpenDocumentOf(ws, path)) {
        slots.area().setActiveSubWindow(open);
        return open;
    }
    if (QFileInfo(path).isDir()) {
        ws.MsgBox(path + QStringLiteral(" is a folder, not a file."), MsgStyle::OkOnly + MsgStyle::Exclamation);
        return nullptr;
    }
    LongPass pass(ws, way.statusText, false);
    if (way.refresh)
        slots.RefreshDocuments();

    const int slot = slots.FindFreeSlot();
    FileHandles &handles = FileHandles::instance();
    ReadResult read = readWithProgress(
        ws, [&](const DecodeProgress &progress) { return openDocumentFile(handles, slot, path, progress); });
    if (readFailed(ws, slot, read, way, path))
        return nullptr;
    if (read.decoded.binary && !openAnyway(ws, pass, path)) {
        handles.close(slot);
        slots.abandon(slot);
        return nullptr;
    }

    frmDoc *document = fillWindow(ws, slot, path, path, read.decoded);
    if (!document)
        return nullptr;
    read.decoded.text = QString(); // in the document now: the colour pass needs the memory
    if (ws.options.isChecked(Option::LockFiles))
        handles.lock(slot); // a failed lock still holds the file, shared
    colourAndName(ws, *document);
    document->state().setDirty(false);
    AddPreviousFile(ws, path);
    if (way.rememberOpen)
        ws.history.Open = path;
    if (way.showTools)
        ws.SetMarkupToolsHidden(false);
    return document;
}

// The open dialog as the open command and the import show it; empty when cancelled.
QString chooseFileToOpen(Workspace &ws)
{
    CommonDialog &dialog = ws.CMDialog1;
    dialog.Flags = HideReadOnly;
    dialog.DefaultExt = QStringLiteral(".html;*.htm;*.shtml");
    dialog.Filter = QStringLiteral(
        "HTML (*.html; *.htm; *.shtml)|*.html; *.htm; *.shtml|Text (*.txt)|*.txt|All (*.*)|*.*");
    dialog.FileName = ws.history.Open;
    // Before any file came through the dialog, start where the page in front lives.
    dialog.InitDir.clear();
    if (const frmDoc *front = ws.current(); front && !front->isUntitled())
        dialog.InitDir = QFileInfo(front->state().path()).absolutePath();
    if (dialog.ShowOpen() == ErrorCode::Cancel)
        return {};
    return dialog.FileName;
}

} // namespace

QString LongPathOf(const QString &path)
{
    return QFileInfo(path).absoluteFilePath();
}

frmDoc *OpenDocumentOf(Workspace &workspace, const QString &path)
{
    const QString file = QFileInfo(path).canonicalFilePath();
    if (file.isEmpty())
        return nullptr;
    for (const int slot : workspace.slots.openSlots()) {
        frmDoc *document = workspace.slots.document(slot);
        if (document && !document->isUntitled() && QFileInfo(document->state().path()).canonicalFilePath() == file)
            return document;
    }
    return nullptr;
}

void ReopenWithEncoding(Workspace &workspace, frmDoc &document, TextEncoding encoding)
{
    DocumentState &state = document.state();
    if (state.isUntitled())
        return;
    const QString path = state.path();
    const QString name = encodingName(encoding);
    if (state.Dirty()
        && workspace.MsgBox(QStringLiteral("The changes to ") + path + QStringLiteral(" will be lost.") + LineEnd
                                + QStringLiteral("Reopen it as ") + name + QStringLiteral("?"),
                            MsgStyle::YesNo + MsgStyle::Exclamation)
               != MsgAnswer::Yes)
        return;

    const QPointer<frmDoc> target(&document);
    LongPass pass(workspace, QStringLiteral("Reopening ") + path + QStringLiteral(" as ") + name, false);
    QByteArray bytes;
    if (const ErrorCode error = readWholeFile(path, bytes, FileShare::None); error != ErrorCode::None) {
        tellFailure(workspace, Way{QString(), Failure::Other}, path, error);
        return;
    }
    const DecodedText decoded = decodeTextAs(bytes, encoding);
    if (decoded.invalid) {
        pass.pauseWaitCursor();
        workspace.MsgBox(path + QStringLiteral(" is not valid ") + name + QStringLiteral("; it stays as it was."),
                         MsgStyle::OkOnly + MsgStyle::Exclamation);
        return;
    }
    if (!target)
        return;
    EditingSurface &text = *target->Text;
    const int caret = text.SelStart();
    // The old text is gone once the load begins, so Escape doesn't stop this one.
    ProgressStrip strip(workspace.status, decoded.text.size() >= ProgressFrom);
    text.setText(QString());
    ApplyClassFont(text, false); // what is read is text until the colouring pass finds its tags
    text.loadText(decoded.text, [&strip](qint64 done, qint64 total) {
        strip.step(done, total);
        return true;
    });
    state.setFormat(decoded.format);
    colourAndName(workspace, *target);
    text.setSelStart(qMin(caret, text.TextLength()));
    state.setDirty(false);
}

frmDoc *OpenFromDialog(Workspace &workspace)
{
    const QString path = chooseFileToOpen(workspace);
    if (path.isEmpty())
        return nullptr;
    Way way{QStringLiteral("Opening ") + path, Failure::Dialog};
    way.showTools = true;
    way.rememberOpen = true;
    return loadDocument(workspace, path, way);
}

frmDoc *OpenFromCommandLine(Workspace &workspace, const QString &commandLine)
{
    QString path = LongPathOf(commandLine);
    if (path.isEmpty())
        path = commandLine;
    return loadDocument(workspace, path, Way{QStringLiteral("Opening ") + path, Failure::CommandLine});
}

frmDoc *OpenFromHandOver(Workspace &workspace, const QString &path)
{
    const QString longPath = LongPathOf(path);
    return loadDocument(workspace, longPath, Way{QStringLiteral("Opening ") + longPath, Failure::Other});
}

frmDoc *OpenFromSiteMap(Workspace &workspace, const QString &path)
{
    const QString longPath = LongPathOf(path);
    return loadDocument(workspace, longPath, Way{QStringLiteral("Opening ") + longPath, Failure::Other});
}

frmDoc *OpenPrevious(Workspace &workspace, int index)
{
    const QString path = PreviousFile(workspace, index);
    if (path.isEmpty())
        return nullptr;
    Way way{QStringLiteral(" Opening ") + path, Failure::Previous};
    way.refresh = false;
    way.showTools = true;
    way.previousIndex = index;
    return loadDocument(workspace, path, way);
}

frmDoc *RecoverFile(Workspace &workspace, const QString &path, const QString &untitledName)
{
    LongPass pass(workspace, QStringLiteral("Recovering ") + path, false);
    workspace.slots.RefreshDocuments();

    const int slot = workspace.slots.FindFreeSlot();
    const ReadResult read = readWithProgress(
        workspace, [&](const DecodeProgress &progress) { return readTextFile(path, FileShare::None, progress); });
    if (readFailed(workspace, slot, read, Way{QString(), Failure::Other}, path))
        return nullptr;

    frmDoc *document = fillWindow(workspace, slot, QString(), untitledName, read.decoded);
    if (!document)
        return nullptr; // the autosaved file stays for the next start
    colourAndName(workspace, *document);
    // It has no file of its own, so what it holds is unsaved.
    document->state().setDirty(true);
    return document;
}

void ImportFile(Workspace &workspace, frmDoc &document)
{
    const QString path = chooseFileToOpen(workspace);
    if (path.isEmpty())
        return;
    const QPointer<frmDoc> target(&document);
    LongPass pass(workspace, QStringLiteral("Importing ") + path, false);
    workspace.slots.RefreshDocuments();
    const ReadResult read = readWithProgress(
        workspace, [&](const DecodeProgress &progress) { return readTextFile(path, FileShare::Shared, progress); });
    if (read.error != ErrorCode::None) {
        tellFailure(workspace, Way{QString(), Failure::Dialog}, path, read.error);
        return;
    }
    if (read.decoded.cancelled || !target || (read.decoded.binary && !openAnyway(workspace, pass, path)))
        return;
    EditingSurface &text = *target->Text;
    ApplyClassFont(text, false);
    text.setSelText(read.decoded.text);
    target->state().setDirty(true);
}

void FindLocalNames(Workspace &workspace, frmDoc &document, QString walked)
{
    EditingSurface &text = *document.Text;
    auto &names = document.state().LocalNames;
    constexpr int Full = DocumentState::LocalNameCount - 1; // 21: at most 20 names are kept

    for (int i = 1; i < DocumentState::LocalNameCount; ++i)
        names[size_t(i)].clear();
    // One copy of the text searched through, not a search of the document per name: a page
    // without names is read once.
    const QString all = walked.isNull() ? text.Text() : std::move(walked);
    const QStringView view(all);
    const QLatin1String rest("A NAME=\""); // after the '<', any case
    // Each '<' is looked at (a scan for one character is far quicker than a search ignoring case;
    // QString's goes straight to it).
    const auto next = [&](qsizetype from) {
        for (qsizetype at = all.indexOf(QLatin1Char('<'), from); at >= 0; at = all.indexOf(QLatin1Char('<'), at + 1))
            if (at + 1 < view.size() && (view[at + 1] == QLatin1Char('A') || view[at + 1] == QLatin1Char('a'))
                && view.mid(at + 1).startsWith(rest, Qt::CaseInsensitive))
                return at;
        return qsizetype(-1);
    };
    // From position 1, so an anchor at the very start is not found.
    qsizetype found = next(1);
    int counter = 1;
    while (found >= 0 && counter < Full) {
        const qsizetype start = found + 1 + rest.size();
        const qsizetype quote = all.indexOf(QLatin1Char('"'), start);
        // A name whose quote never closes is no name.
        if (quote >= 0)
            names[size_t(counter++)] = all.mid(start, quote - start);
        found = next(found + 1);
        if (workspace.platform.escapePressed())
            break;
    }
    text.setSelLength(0);
    text.setSelStart(0);
}

} // namespace pw
