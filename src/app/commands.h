#pragma once

#include <QString>

#include <functional>

namespace pw {

class CommandTable;
class frmMDIMain;

// Registers the handler of every command that exists: each forwards to its operation.
void RegisterCommands(CommandTable &table, frmMDIMain &main);

// A Toolbar1 button: each click first gives the focus to the current document.
void setButtonHandler(CommandTable &table, frmMDIMain &main, const QString &key, std::function<void()> command);

// The command groups, each in its own file; RegisterCommands calls them all.
void RegisterOpenCommands(CommandTable &table, frmMDIMain &main);
void RegisterSaveCommands(CommandTable &table, frmMDIMain &main);
void RegisterPrintAndStampCommands(CommandTable &table, frmMDIMain &main);
void RegisterHelpCommands(CommandTable &table, frmMDIMain &main);

// The enabling rules applied when a document's File and Edit menus open.
void mnuFile_Click(class frmDoc &document);
void mnuEdit_Click(class frmDoc &document);

} // namespace pw
