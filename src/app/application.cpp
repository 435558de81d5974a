#include "app/application.h"

#include "app/commands.h"
#include "app/document_wiring.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/settings_store.h"
#include "files/new_document.h"
#include "spell/word_store.h"

#include <QMenu>

namespace pw {

Application::Application() : m_main(std::make_unique<frmMDIMain>())
{
    RegisterCommands(m_commands, *m_main);
    m_commands.buildToolbars(*m_main);
    m_main->setMainMenus(m_commands.buildMenus(CommandTable::mainMenuRows(), m_main.get(), nullptr));
    QObject::connect(m_main.get(), &frmMDIMain::documentWindowCreated, m_main.get(),
                     [this](frmDoc *doc) { onDocumentWindowCreated(doc); });
}

Application::~Application() = default;

void Application::onDocumentWindowCreated(frmDoc *document)
{
    document->menus() = m_commands.buildMenus(CommandTable::documentMenuRows(), document, document);
    if (QMenu *file = document->menu(QStringLiteral("mnuFile")))
        QObject::connect(file, &QMenu::aboutToShow, document, [document] { mnuFile_Click(*document); });
    if (QMenu *edit = document->menu(QStringLiteral("mnuEdit")))
        QObject::connect(edit, &QMenu::aboutToShow, document, [document] { mnuEdit_Click(*document); });
    WireDocument(*m_main, *document);
}

void Application::start()
{
    LoadSettings(*m_main);
    // Without a word store the spell checker stays off for the whole run.
    m_main->setButtonEnabled(QStringLiteral("imgSpell"), WordStoreAvailable());
    QObject::connect(m_main.get(), &frmMDIMain::unloaded, m_main.get(), [this] { SaveSettings(*m_main); });
    m_main->show();
    NewDocument();
}

} // namespace pw
