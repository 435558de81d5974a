#include "files/save_document.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "files/previous_lists.h"
#include "files/text_file.h"
#include "platform/message_box.h"
#include "platform/platform.h"

#include <QDir>
#include <QFileInfo>

namespace pw {

namespace {

// Hide the read-only box, explorer look, long names.
constexpr int SaveDialogFlags = 0x4 | 0x80000 | 0x200000;

SiteMapEntry &siteMapEntry()
{
    static SiteMapEntry entry;
    return entry;
}

// What a cancelled or refused name leaves: the screen the dialog covered drawn again.
void refreshAfterDialog(Workspace &ws)
{
    ws.slots.RefreshDocuments();
}

// Another open document holding the file: saving over it would leave two windows on one file,
// and the other's next save would undo this one.
bool heldByAnotherDocument(int slot, const QString &path)
{
    const QString target = QFileInfo(path).canonicalFilePath();
    if (target.isEmpty())
        return false;
    const FileHandles &handles = FileHandles::instance();
    for (int other : handles.heldSlots())
        if (other != slot && QFileInfo(handles.path(other)).canonicalFilePath() == target)
            return true;
    return false;
}

void showPermissionDenied(Workspace &ws, const QString &reason)
{
    QString text = QStringLiteral("Permission Denied!");
    if (!reason.isEmpty())
        text += LineEnd + reason;
    ws.MsgBox(text, MsgStyle::Exclamation);
}

// The save dialog and the questions after it; an empty result means nothing is to be saved.
QString chooseSaveName(Workspace &ws, frmDoc &doc)
{
    const QChar separator = QDir::separator();
    const bool untitled = doc.isUntitled();
    const QString defaultDir = PathLessLastComponent(ws.history.Open, separator);

    CommonDialog &dialog = ws.CMDialog1;
    dialog.Filter = SaveDialogFilter;
    dialog.Flags = SaveDialogFlags;
    dialog.DefaultExt.clear();
    dialog.InitDir = defaultDir;
    dialog.FileName = untitled ? defaultDir + QStringLiteral("Untitled") : doc.state().path();
    // The shared dialog may carry an index from another filter; start at the name's own type so
    // that a plain Save As never changes an extension unasked.
    dialog.FilterIndex = untitled ? 1 : FilterIndexForName(doc.state().path());

    if (dialog.ShowSave() != ErrorCode::None || dialog.FileName.isEmpty()) {
        refreshAfterDialog(ws);
        return QString();
    }
    const QString path = ForceExtension(dialog.FileName, dialog.FilterIndex, separator);

    if (heldByAnotherDocument(doc.slot(), path)) {
        showPermissionDenied(ws, QStringLiteral("The file %1 is open in another window.").arg(path));
        refreshAfterDialog(ws);
        return QString();
    }
    if (QFileInfo::exists(path)) {
        const int answer = ws.MsgBox(path + LineEnd + QStringLiteral("Replace existing file?"),
                                     MsgStyle::YesNo + MsgStyle::Question);
        if (answer != MsgAnswer::Yes) {
            refreshAfterDialog(ws);
            return QString();
        }
    }
    return path;
}

// Writes the document to path and, when it worked, leaves it clean and saved. newName: the
// document takes path as its name (a first save, or Save As to another file).
bool writeDocument(Workspace &ws, frmDoc &doc, const QString &path, bool newName, const QString &status)
{
    FileHandles &handles = FileHandles::instance();
    const int slot = doc.slot();
    const bool lockOn = ws.options.isChecked(Option::LockFiles);

    LongPass pass(ws, status, false);

    const QString text = doc.Text->Text();
    FileFormat format = doc.state().format();
    SaveResult result = saveDocumentFile(handles, slot, path, text, format, lockOn);
    if (result.failure == SaveFailure::Unencodable) {
        pass.pauseWaitCursor();
        const int answer = ws.MsgBox(result.message + LineEnd + LineEnd + QStringLiteral("Save the file as UTF-8?"),
                                     MsgStyle::YesNo + MsgStyle::Question);
        if (answer != MsgAnswer::Yes)
            return false;
        pass.resumeWaitCursor();
        format.encoding = TextEncoding::Utf8;
        format.bom = false;
        result = saveDocumentFile(handles, slot, path, text, format, lockOn);
    }
    if (!result.ok()) {
        pass.pauseWaitCursor();
        showPermissionDenied(ws, result.message);
        return false;
    }
    if (!(format == doc.state().format()))
        doc.state().setFormat(format);
    if (lockOn && !handles.isLocked(slot))
        handles.lock(slot); // a lock that can't be had is not reported

    if (newName) {
        doc.state().setPath(path);
        AddToSiteMap(ws, path);
    }
    doc.state().setDirty(false);
    doc.state().setSaved(true);
    if (newName) {
        AddPreviousFile(ws, path);
        refreshAfterDialog(ws);
    }
    doc.Text->SetFocus();
    return true;
}

} // namespace

QString ForceExtension(const QString &fileName, int filterIndex, QChar separator)
{
    static const char *const extensions[] = {"html", "htm", "shtml", "txt"};
    if (filterIndex < 1 || filterIndex > 4)
        return fileName;
    const qsizetype nameStart = fileName.lastIndexOf(separator) + 1;
    if (nameStart == fileName.size())
        return fileName; // no name to give an extension to
    const qsizetype dot = fileName.lastIndexOf(QLatin1Char('.'));
    const QString stem = dot > nameStart ? fileName.left(dot) : fileName;
    return stem + QLatin1Char('.') + QLatin1String(extensions[filterIndex - 1]);
}

QString PathLessLastComponent(const QString &path, QChar separator)
{
    return path.left(path.lastIndexOf(separator) + 1);
}

int FilterIndexForName(const QString &fileName)
{
    const QString suffix = QFileInfo(fileName).suffix().toLower();
    if (suffix == QLatin1String("html"))
        return 1;
    if (suffix == QLatin1String("htm"))
        return 2;
    if (suffix == QLatin1String("shtml"))
        return 3;
    if (suffix == QLatin1String("txt"))
        return 4;
    return 5;
}

bool SaveDocument(Workspace &workspace, frmDoc &document)
{
    if (document.isUntitled()) {
        const QString path = chooseSaveName(workspace, document);
        if (path.isEmpty())
            return false;
        return writeDocument(workspace, document, path, true, QStringLiteral("Saving ") + path);
    }
    const QString path = document.state().path();
    return writeDocument(workspace, document, path, false, QStringLiteral("Saving ") + path);
}

bool SaveDocumentAs(Workspace &workspace, frmDoc &document)
{
    const QString path = chooseSaveName(workspace, document);
    if (path.isEmpty())
        return false;
    // To its own name: a plain save, the document keeps its name and its place on the list.
    const bool newName = path != document.state().path();
    return writeDocument(workspace, document, path, newName, QStringLiteral("Saving As ") + path);
}

void AddToSiteMap(Workspace &workspace, const QString &path)
{
    if (!workspace.options.isChecked(Option::SiteMap))
        return;
    if (const SiteMapEntry &entry = siteMapEntry())
        entry(path);
}

void SetSiteMapEntry(SiteMapEntry entry)
{
    siteMapEntry() = std::move(entry);
}

void Form_QueryUnload(Workspace &workspace, frmDoc &document, bool *cancel, int unloadMode)
{
    if (!document.state().Dirty())
        return;
    const bool cancelOffered = unloadMode == 0 || unloadMode == 1;
    const QString question = QStringLiteral("The text in [") + document.Caption()
                             + QStringLiteral("] has changed.") + LineEnd
                             + QStringLiteral("Do you want to save the changes?");
    for (;;) {
        const int answer = workspace.MsgBox(question, cancelOffered ? MsgStyle::YesNoCancel : MsgStyle::YesNo);
        if (answer == MsgAnswer::Cancel && cancelOffered) {
            *cancel = true;
            return;
        }
        if (answer != MsgAnswer::Yes)
            return;
        workspace.slots.CurrentDocument = document.slot();
        if (SaveDocument(workspace, document))
            return;
        // Yes, yet nothing saved: keep the window, or ask again where it can't be kept.
        if (cancelOffered) {
            *cancel = true;
            return;
        }
    }
}

} // namespace pw
