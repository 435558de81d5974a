#pragma once

#include "app/command_table.h"

#include <QString>

#include <memory>

namespace pw {

class ActionStates;
class AutoSave;
class Platform;
class Workspace;
class frmDoc;
class frmMDIMain;

// The running program: the main window, its command table, the owner of what is enabled, autosave,
// the wiring of every new document window to its menus and handlers, and the order of the start
// and the end.
class Application
{
public:
    explicit Application(Platform &platform);
    ~Application();

    frmMDIMain &main() { return *m_main; }
    Workspace &workspace();
    CommandTable &commands() { return m_commands; }
    ActionStates &actions() { return *m_actions; }
    AutoSave &autoSave() { return *m_autoSave; }

    // The main window's load: settings, the recovery of autosaved files, then the first document
    // (the file of the command line, else an untitled one), autosave, and the focus in the document
    // in front. Any box it shows stands over the splash, which goes at the end.
    void MDIForm_Load(const QString &commandLine);

    // A command handed over by a second start: "open <path>" or "jump"; anything else sets
    // *cancel, refusing it. It runs once no pass or box is busy.
    void MDIForm_LinkExecute(const QString &command, bool *cancel);

    // The program became active (or inactive): the keyboard focus goes back to the document,
    // except the first time after the start or after "Highlight open documents?" was answered No.
    void Msghook1_Message(bool becomingActive);

    // A termination request: the program closes as its close box would, once nothing is busy.
    void requestTermination();

private:
    void onDocumentCreated(frmDoc *document);
    void showPreviousFiles();
    void listWindows(frmDoc *document);
    void addDocumentKeys();
    void settleMainWindow();
    void MDIForm_Unload();

    // The table outlives the main window, whose end still asks it what is enabled.
    CommandTable m_commands;
    std::unique_ptr<frmMDIMain> m_main;
    AutoSave *m_autoSave = nullptr;
    ActionStates *m_actions = nullptr;
};

} // namespace pw
