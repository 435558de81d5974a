#pragma once

namespace pw {

class Workspace;

// mnuOptionAssociate on both menus: associates the HTML file types and says so on the status line.
void AssociateFilesCommand(Workspace &workspace);

} // namespace pw
