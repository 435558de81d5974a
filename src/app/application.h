#pragma once

#include "app/command_table.h"

#include <memory>

namespace pw {

class frmDoc;
class frmMDIMain;

// The running program: the main window, its command table, and the wiring of every new
// document window to its menus and handlers.
class Application
{
public:
    Application();
    ~Application();

    frmMDIMain &main() { return *m_main; }
    CommandTable &commands() { return m_commands; }

    // Shows the main window with its first document, "Untitled: 1".
    void start();

private:
    void onDocumentWindowCreated(frmDoc *document);

    std::unique_ptr<frmMDIMain> m_main;
    CommandTable m_commands;
};

} // namespace pw
