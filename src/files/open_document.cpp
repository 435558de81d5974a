#include "files/open_document.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "core/main_window.h"
#include "core/settings_store.h"
#include "core/status_line.h"
#include "files/previous_lists.h"
#include "files/text_file.h"
#include "markup/highlighter.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"
#include "platform/platform.h"

#include <QFileInfo>
#include <QToolBar>

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
    std::function<void()> beforeMessage;
};

QString couldNotOpen(const QString &path, ErrorCode code)
{
    return QStringLiteral("Could not open the file [") + path + QStringLiteral("] Due to the following error!")
           + LineEnd + LineEnd + errorText(code);
}

void exclamation(const QString &text)
{
    MsgBox(text, MsgStyle::OkOnly + MsgStyle::Exclamation, AppTitle());
}

void tellFailure(const Way &way, const QString &path, ErrorCode code)
{
    // No hourglass over a message box.
    HideWaitCursor();
    if (way.beforeMessage)
        way.beforeMessage();
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
            MsgBox(path + LineEnd + QStringLiteral("Not found!"), MsgStyle::OkOnly, AppTitle());
            RemovePreviousFile(way.previousIndex);
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
    bool operator()(qint64 done, qint64 total)
    {
        if (total < ProgressFrom || done >= total)
            return true;
        if (!m_strip)
            m_strip.emplace();
        m_strip->step(done, total);
        return !EscapePressed();
    }

private:
    std::optional<ProgressStrip> m_strip;
};

// Reads while the strip shows how far a large file got.
ReadResult readWithProgress(const std::function<ReadResult(const DecodeProgress &)> &read)
{
    LargeFileProgress progress;
    return read(std::ref(progress));
}

// A read that failed or was cancelled gives the slot back; a failure is told as the way in tells it.
bool readFailed(DocumentSlots &slots, int slot, const ReadResult &read, const Way &way, const QString &path)
{
    if (read.error == ErrorCode::None && !read.decoded.cancelled)
        return false;
    slots.abandon(slot);
    if (read.error != ErrorCode::None)
        tellFailure(way, path, read.error);
    return true;
}

// Fills a window made for slot with the decoded text. A large file goes in piece by piece under
// the progress strip, and Escape there stops the open: the window goes again and the slot is free.
// The load is no undo step.
frmDoc *fillWindow(DocumentSlots &slots, int slot, const QString &caption, const DecodedText &decoded)
{
    frmDoc *document = slots.CreateDocumentWindow(slot, caption);
    document->fileFormat = decoded.format;
    LargeFileProgress progress;
    if (!document->Text->loadText(decoded.text, std::ref(progress))) {
        slots.abandon(slot);
        return nullptr;
    }
    return document;
}

void colourAndName(frmDoc &document)
{
    HighlightDocument(document);
    FindLocalNames(document.slot());
    document.Text->clearUndo();
}

// The load sequence of every way in but the recovery.
frmDoc *loadDocument(const QString &path, const Way &way)
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return nullptr;
    DocumentSlots &slots = main->slots();
    LongPass pass(way.statusText, false);
    if (way.refresh) {
        main->Toolbar1->repaint();
        slots.RefreshDocuments();
    }

    const int slot = slots.FindFreeSlot();
    FileHandles &handles = FileHandles::instance();
    const ReadResult read = readWithProgress(
        [&](const DecodeProgress &progress) { return openDocumentFile(handles, slot, path, progress); });
    if (readFailed(slots, slot, read, way, path))
        return nullptr;

    frmDoc *document = fillWindow(slots, slot, path, read.decoded);
    if (!document)
        return nullptr;
    if (main->options().isChecked(Option::LockFiles))
        handles.lock(slot); // a failed lock still holds the file, shared
    colourAndName(*document);
    slots.state(slot).Dirty = False;
    AddPreviousFile(path);
    if (way.rememberOpen)
        History.Open = path;
    main->setButtonEnabled(QStringLiteral("imgFileSave"), false);
    main->setButtonEnabled(QStringLiteral("imgUndo"), false);
    if (way.showTools && main->markupToolsHidden())
        SetMarkupToolsHidden(false);
    return document;
}

// The open dialog as the open command and the import show it; empty when cancelled.
QString chooseFileToOpen()
{
    CommonDialog &dialog = frmMDIMain::instance()->CMDialog1;
    dialog.Flags = HideReadOnly;
    dialog.DefaultExt = QStringLiteral(".html;*.htm;*.shtml");
    dialog.Filter = QStringLiteral(
        "HTML (*.html; *.htm; *.shtml)|*.html; *.htm; *.shtml|Text (*.txt)|*.txt|All (*.*)|*.*");
    dialog.FileName = History.Open;
    // Before any file came through the dialog, start where the page in front lives.
    dialog.InitDir.clear();
    if (const frmDoc *front = frmMDIMain::instance()->activeDocument();
        front && !front->isUntitled())
        dialog.InitDir = QFileInfo(front->Caption()).absolutePath();
    if (dialog.ShowOpen() == ErrorCode::Cancel)
        return {};
    return dialog.FileName;
}

} // namespace

QString LongPathOf(const QString &path)
{
    return QFileInfo(path).absoluteFilePath();
}

frmDoc *OpenFromDialog()
{
    if (!frmMDIMain::instance())
        return nullptr;
    const QString path = chooseFileToOpen();
    if (path.isEmpty())
        return nullptr;
    Way way{QStringLiteral("Opening ") + path, Failure::Dialog};
    way.showTools = true;
    way.rememberOpen = true;
    return loadDocument(path, way);
}

frmDoc *OpenFromCommandLine(const QString &commandLine, const std::function<void()> &beforeMessage)
{
    QString path = LongPathOf(commandLine);
    if (path.isEmpty())
        path = commandLine;
    Way way{QStringLiteral("Opening ") + path, Failure::CommandLine};
    way.beforeMessage = beforeMessage;
    frmDoc *document = loadDocument(path, way);
    if (!document)
        SetMarkupToolsHidden(true); // no document is left
    return document;
}

frmDoc *OpenFromHandOver(const QString &path)
{
    const QString longPath = LongPathOf(path);
    return loadDocument(longPath, Way{QStringLiteral("Opening ") + longPath, Failure::Other});
}

frmDoc *OpenFromSiteMap(const QString &path)
{
    return OpenFromHandOver(path); // the same way in
}

frmDoc *OpenPrevious(int index)
{
    const QString path = PreviousFile(index);
    if (path.isEmpty())
        return nullptr;
    Way way{QStringLiteral(" Opening ") + path, Failure::Previous};
    way.refresh = false;
    way.showTools = true;
    way.previousIndex = index;
    return loadDocument(path, way);
}

frmDoc *RecoverFile(const QString &path)
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return nullptr;
    DocumentSlots &slots = main->slots();
    LongPass pass(QStringLiteral("Recovering ") + path, false);
    main->Toolbar1->repaint();
    slots.RefreshDocuments();

    const int slot = slots.FindFreeSlot();
    const ReadResult read = readWithProgress(
        [&](const DecodeProgress &progress) { return readTextFile(path, FileShare::None, progress); });
    if (readFailed(slots, slot, read, Way{QString(), Failure::Other}, path))
        return nullptr;

    // The caller gives it its caption; until then it shows where it came from.
    frmDoc *document = fillWindow(slots, slot, path, read.decoded);
    if (!document)
        return nullptr; // the autosaved file stays for the next start
    colourAndName(*document);
    // It has no file of its own, so what it holds is unsaved.
    slots.state(slot).Dirty = True;
    main->setButtonEnabled(QStringLiteral("imgFileSave"), true);
    main->setButtonEnabled(QStringLiteral("imgUndo"), false);
    SyncDocumentMenus();
    return document;
}

void ImportFile()
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main || !main->slots().AnyDocumentOpen())
        return;
    DocumentSlots &slots = main->slots();
    const QString path = chooseFileToOpen();
    if (path.isEmpty())
        return;
    frmDoc *document = slots.current();
    if (!document)
        return;

    LongPass pass(QStringLiteral("Importing ") + path, false);
    main->Toolbar1->repaint();
    slots.RefreshDocuments();
    EditingSurface &text = *document->Text;
    ApplyClassFont(text, false);
    const ReadResult read = readWithProgress(
        [&](const DecodeProgress &progress) { return readTextFile(path, FileShare::Shared, progress); });
    if (read.error != ErrorCode::None) {
        tellFailure(Way{QString(), Failure::Dialog}, path, read.error);
        return;
    }
    if (read.decoded.cancelled)
        return;
    text.setSelText(read.decoded.text);
    slots.state(document->slot()).Dirty = True;
}

void FindLocalNames(int slot)
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return;
    DocumentSlots &slots = main->slots();
    frmDoc *document = slots.document(slot);
    if (!document)
        return;
    EditingSurface &text = *document->Text;
    const QString target = QStringLiteral("<A NAME=\"");
    constexpr int Full = DocumentSlots::LocalNameCount - 1; // 21: at most 20 names are kept

    for (int i = 1; i < DocumentSlots::LocalNameCount; ++i)
        slots.LocalNames(i, slot).clear();
    // From position 1, so an anchor at the very start is not found.
    int found = text.Find(target, 1, -1, EditingSurface::NoHighlight);
    int counter = 1;
    while (found >= 0 && counter < Full) {
        const int start = found + int(target.size());
        const int quote = text.Find(QStringLiteral("\""), start, -1, EditingSurface::NoHighlight);
        // A name whose quote never closes is no name.
        if (quote >= 0)
            slots.LocalNames(counter++, slot) = text.Mid(start, quote - start);
        found = text.Find(target, found + 1, -1, EditingSurface::NoHighlight);
        if (EscapePressed())
            break;
    }
    text.setSelLength(0);
    text.setSelStart(0);
}

} // namespace pw
