#pragma once

namespace pw {

class AutoSave;
class CommandTable;
class Workspace;
class frmMDIMain;

// What the handlers forward to: the main window (for its dialogs' parent and its arrangement of
// windows), the workspace and autosave.
struct CommandContext {
    frmMDIMain &main;
    Workspace &workspace;
    AutoSave &autoSave;
};

// Registers the handler of every command that exists: each forwards to its operation.
void RegisterCommands(CommandTable &table, const CommandContext &context);

// The command groups, each in its own file; RegisterCommands calls them all.
void RegisterEditCommands(CommandTable &table, const CommandContext &context);
void RegisterOpenCommands(CommandTable &table, const CommandContext &context);
void RegisterSaveCommands(CommandTable &table, const CommandContext &context);
void RegisterPrintAndStampCommands(CommandTable &table, const CommandContext &context);
void RegisterHelpCommands(CommandTable &table, const CommandContext &context);
void RegisterFontCommands(CommandTable &table, const CommandContext &context);
void RegisterWizardCommands(CommandTable &table, const CommandContext &context);
void RegisterSiteCommands(CommandTable &table, const CommandContext &context);

} // namespace pw
