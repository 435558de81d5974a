#include "app/application.h"

#include "app/commands.h"
#include "app/document_wiring.h"
#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/settings_store.h"
#include "core/title_window.h"
#include "files/autosave.h"
#include "files/new_document.h"
#include "files/open_document.h"
#include "files/previous_lists.h"
#include "markup/highlighter.h"
#include "spell/word_store.h"

#include <QApplication>
#include <QMenu>
#include <QTimer>

namespace pw {

Application::Application() : m_main(std::make_unique<frmMDIMain>())
{
    RegisterCommands(m_commands, *m_main);
    m_commands.buildToolbars(*m_main);
    m_main->setMainMenus(m_commands.buildMenus(CommandTable::mainMenuRows(), m_main.get(), nullptr));
    QObject::connect(m_main.get(), &frmMDIMain::documentWindowCreated, m_main.get(),
                     [this](frmDoc *doc) { onDocumentWindowCreated(doc); });
    QObject::connect(m_main.get(), &frmMDIMain::unloaded, m_main.get(), [this] { MDIForm_Unload(); });
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

void Application::MDIForm_Load(const QString &commandLine, const std::function<void()> &beforeMessage)
{
    frmMDIMain &main = *m_main;
    DocumentSlots &slots = main.slots();
    PrintTitleVersion();
    main.SetMarkupToolsHidden(false);
    slots.CurrentDocument = 1;
    QObject::connect(qApp, &QGuiApplication::applicationStateChanged, &main,
                     [this](Qt::ApplicationState state) { Msghook1_Message(state == Qt::ApplicationActive); });
    main.setWindowTitle(AppTitle());

    if (beforeMessage && SettingsStore().readInt(Setting::State) == FirstRunState)
        beforeMessage(); // the first run asks a question
    LoadSettings(main);
    main.show();
    // Without a word store the spell checker stays off for the whole run.
    main.setButtonEnabled(QStringLiteral("imgSpell"), WordStoreAvailable());
    // The program's folder is not made the current one: a relative path on the command line is
    // taken from the folder the program was started in.

    if (commandLine.isEmpty()) {
        const int slot = slots.FindFreeSlot();
        frmDoc *document = slots.CreateDocumentWindow(slot, QStringLiteral("Untitled: 1"));
        if (main.options().isChecked(Option::AddTemplate))
            FillBlankTemplate(*document);
        slots.state(slot).Dirty = False;
    } else {
        OpenFromCommandLine(commandLine, beforeMessage);
    }
    LoadPreviousFileMenus();
    RecoverAutoSavedFiles();
}

void Application::MDIForm_LinkExecute(const QString &command, bool *cancel)
{
    frmMDIMain &main = *m_main;
    *cancel = false;
    const QString head = command.left(4);
    if (head != QLatin1String("open") && head != QLatin1String("jump")) {
        *cancel = true;
        return;
    }
    if (main.isMinimized())
        main.showNormal();
    main.raise();
    main.activateWindow();
    if (head == QLatin1String("open")) {
        OpenFromHandOver(command.mid(5));
        main.SetMarkupToolsHidden(false);
    } else if (frmDoc *document = main.slots().current()) {
        document->Text->SetFocus();
    }
}

void Application::Msghook1_Message(bool becomingActive)
{
    frmMDIMain &main = *m_main;
    bool &answered = HighlightOpenDocuments();
    if (answered && becomingActive && main.slots().AnyDocumentOpen()) {
        frmDoc *document = main.slots().current();
        const QWidget *focus = QApplication::focusWidget();
        const bool onSurface = focus
                               && (qobject_cast<const EditingSurface *>(focus)
                                   || qobject_cast<const EditingSurface *>(focus->parentWidget()));
        if (document && !document->isMinimized() && onSurface)
            document->Text->SetFocus();
    }
    answered = true;
}

void Application::MDIForm_Unload()
{
    SaveSettings(*m_main);
    EmptyAutoSaveFolder();
}

} // namespace pw
