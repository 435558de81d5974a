#pragma once

namespace pw {

// mnuOptionAssociate on both menus: associates the HTML file types and says so on the status line.
void AssociateFilesCommand();

} // namespace pw
