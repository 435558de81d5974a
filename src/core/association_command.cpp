#include "core/association_command.h"

#include "core/status_presenter.h"
#include "core/workspace.h"
#include "platform/file_association.h"

namespace pw {

void AssociateFilesCommand(Workspace &workspace)
{
    AssociateFiles(workspace.platform);
    workspace.status.SetStatusText(QStringLiteral("Pagewright is now associated with *.htm, *.html, *.shtml."));
}

} // namespace pw
