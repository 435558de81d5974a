#pragma once

namespace pw {

class CommandTable;
class frmMDIMain;

// Registers the handler of every command that exists: each forwards to its operation.
void RegisterCommands(CommandTable &table, frmMDIMain &main);

// The enabling rules applied when a document's File and Edit menus open.
void mnuFile_Click(class frmDoc &document);
void mnuEdit_Click(class frmDoc &document);

} // namespace pw
