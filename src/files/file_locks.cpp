#include "files/file_locks.h"

#include "core/main_window.h"
#include "files/stamps.h"
#include "platform/file_handles.h"

namespace pw {

void ToggleLockFiles() {}

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
