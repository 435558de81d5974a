#include "core/association_command.h"

#include "core/status_line.h"
#include "platform/file_association.h"

namespace pw {

void AssociateFilesCommand()
{
    AssociateFiles();
    SetStatusText(QStringLiteral("Pagewright is now associated with *.htm, *.html, *.shtml."));
}

} // namespace pw
