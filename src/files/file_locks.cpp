#include "files/file_locks.h"

#include "core/document_window.h"
#include "core/workspace.h"
#include "files/stamps.h"
#include "platform/file_handles.h"

namespace pw {

void ToggleLockFiles(Workspace &workspace)
{
    // Every menu shows the one shared state; untitled documents hold nothing to lock.
    workspace.options.toggle(Option::LockFiles);
    FileHandles::instance().lockAll(workspace.options.isChecked(Option::LockFiles)); // errors are not reported
}

void CloseDocumentFile(Workspace &workspace, frmDoc &document)
{
    FileHandles &handles = FileHandles::instance();
    const int slot = document.slot();
    if (workspace.options.isChecked(Option::LockFiles))
        handles.unlock(slot);
    StampOnClose(workspace, document);
    handles.close(slot);
}

} // namespace pw
