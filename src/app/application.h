#pragma once

#include "app/command_table.h"

#include <QString>

#include <functional>
#include <memory>

namespace pw {

class frmDoc;
class frmMDIMain;

// The running program: the main window, its command table, the wiring of every new document
// window to its menus and handlers, and the order of the start and the end.
class Application
{
public:
    Application();
    ~Application();

    frmMDIMain &main() { return *m_main; }
    CommandTable &commands() { return m_commands; }

    // The main window's load: settings, the first document (the file of the command line, else
    // "Untitled: 1"), the previous-file menus, then the recovery of autosaved files.
    // beforeMessage runs before the first message box, so that nothing stands over it.
    void MDIForm_Load(const QString &commandLine, const std::function<void()> &beforeMessage = {});

    // A command handed over by a second start: "open <path>" or "jump"; anything else sets
    // *cancel, refusing it.
    void MDIForm_LinkExecute(const QString &command, bool *cancel);

    // The program became active (or inactive): the keyboard focus goes back to the document,
    // except the first time after the start or after "Highlight open documents?" was answered No.
    void Msghook1_Message(bool becomingActive);

private:
    void onDocumentWindowCreated(frmDoc *document);
    void MDIForm_Unload();

    std::unique_ptr<frmMDIMain> m_main;
    CommandTable m_commands;
};

} // namespace pw
