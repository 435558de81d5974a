#include "files/file_locks.h"

#include "core/main_window.h"
#include "files/stamps.h"
#include "platform/file_handles.h"

namespace pw {

void ToggleLockFiles()
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return;
    // Every menu shows the one shared state; untitled documents hold nothing to lock.
    main->options().toggle(Option::LockFiles);
    FileHandles::instance().lockAll(main->options().isChecked(Option::LockFiles)); // errors are not reported
}

void CloseDocumentFile(int slot)
{
    FileHandles &handles = FileHandles::instance();
    frmMDIMain *main = frmMDIMain::instance();
    if (main && main->options().isChecked(Option::LockFiles))
        handles.unlock(slot);
    StampOnClose(slot);
    handles.close(slot);
}

} // namespace pw
