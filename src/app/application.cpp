#include "app/application.h"

#include "app/action_states.h"
#include "app/commands.h"
#include "app/document_wiring.h"
#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/settings_store.h"
#include "core/title_window.h"
#include "core/workspace.h"
#include "files/autosave.h"
#include "files/new_document.h"
#include "files/open_document.h"
#include "files/previous_lists.h"
#include "platform/platform.h"
#include "spell/word_store.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QMdiArea>
#include <QMenu>
#include <QWindow>

namespace pw {

namespace {

QAction *findIn(const QList<QMenu *> &menus, const QString &name)
{
    for (QMenu *menu : menus)
        if (auto *action = menu->findChild<QAction *>(name))
            return action;
    return nullptr;
}

} // namespace

Application::Application(Platform &platform) : m_main(std::make_unique<frmMDIMain>(platform))
{
    frmMDIMain &main = *m_main;
    Workspace &ws = main.workspace();
    m_autoSave = new AutoSave(ws, *main.tmrAutoSave);
    RegisterCommands(m_commands, CommandContext{main, ws, *m_autoSave});
    m_commands.buildToolbars(main);
    main.setMainMenus(m_commands.buildMenus(CommandTable::mainMenuRows(), &main, nullptr, ws.options));
    m_actions = new ActionStates(main, ws, m_commands);
    addDocumentKeys();
    QObject::connect(&ws.slots, &DocumentSlots::documentCreated, &main,
                     [this](frmDoc *document) { onDocumentCreated(document); });
    QObject::connect(&ws, &Workspace::previousFilesChanged, &main, [this] { showPreviousFiles(); });
    QObject::connect(&main, &frmMDIMain::unloaded, &main, [this] { MDIForm_Unload(); });
}

Application::~Application() = default;

Workspace &Application::workspace()
{
    return m_main->workspace();
}

void Application::onDocumentCreated(frmDoc *document)
{
    Workspace &ws = workspace();
    document->menus() = m_commands.buildMenus(CommandTable::documentMenuRows(), document, document, ws.options);
    ShowPreviousFiles([document](const QString &name) { return document->item(name); }, ws.previousFiles());
    if (QMenu *window = document->menu(QStringLiteral("mnuWindow")))
        QObject::connect(window, &QMenu::aboutToShow, document, [this, document] { listWindows(document); });
    WireDocument(ws, *document);
}

void Application::showPreviousFiles()
{
    Workspace &ws = workspace();
    const QList<QMenu *> &mainMenus = m_main->mainMenus();
    ShowPreviousFiles([&mainMenus](const QString &name) { return findIn(mainMenus, name); }, ws.previousFiles());
    for (int slot : ws.slots.openSlots()) {
        frmDoc *document = ws.slots.document(slot);
        ShowPreviousFiles([document](const QString &name) { return document->item(name); }, ws.previousFiles());
    }
}

// The Window menu lists the open documents below its own items, the one in front checked.
void Application::listWindows(frmDoc *document)
{
    QMenu *menu = document->menu(QStringLiteral("mnuWindow"));
    for (QAction *old : menu->actions())
        if (old->property("windowListItem").toBool())
            delete old;
    QMdiArea *area = m_main->mdiArea;
    const QList<QMdiSubWindow *> windows = area->subWindowList();
    QAction *separator = menu->addSeparator();
    separator->setProperty("windowListItem", true);
    for (qsizetype i = 0; i < windows.size(); ++i) {
        auto *window = qobject_cast<frmDoc *>(windows[i]);
        if (!window)
            continue;
        QString caption = window->Caption();
        caption.replace(QLatin1Char('&'), QLatin1String("&&"));
        const QString text = i < 9 ? QStringLiteral("&%1 %2").arg(i + 1).arg(caption)
                                   : QStringLiteral("%1 %2").arg(i + 1).arg(caption);
        QAction *item = menu->addAction(text);
        item->setObjectName(QStringLiteral("mnuWindowList(%1)").arg(i + 1));
        item->setProperty("windowListItem", true);
        item->setCheckable(true);
        item->setChecked(window == area->currentSubWindow());
        QObject::connect(item, &QAction::triggered, area, [area, window] { area->setActiveSubWindow(window); });
    }
}

// Ctrl+Tab and Ctrl+F6 go to the next document, Ctrl+Shift+Tab to the one before.
void Application::addDocumentKeys()
{
    QMdiArea *area = m_main->mdiArea;
    auto *next = new QAction(m_main.get());
    next->setObjectName(QStringLiteral("actNextDocument"));
    next->setShortcuts({QKeySequence(Qt::CTRL | Qt::Key_Tab), QKeySequence(Qt::CTRL | Qt::Key_F6)});
    QObject::connect(next, &QAction::triggered, area, &QMdiArea::activateNextSubWindow);
    auto *previous = new QAction(m_main.get());
    previous->setObjectName(QStringLiteral("actPreviousDocument"));
    previous->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab),
                            QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Tab),
                            QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_F6)});
    QObject::connect(previous, &QAction::triggered, area, &QMdiArea::activatePreviousSubWindow);
    m_main->addActions({next, previous});
}

// A maximised start gets its real size from the window manager a moment after it shows; the first
// document is sized from the area, so the start waits for that (a second at most).
void Application::settleMainWindow()
{
    frmMDIMain &main = *m_main;
    QWindow *window = main.windowHandle();
    if (!window)
        return;
    const QSize shown = main.size();
    QElapsedTimer waited;
    waited.start();
    const auto settled = [&] {
        if (!window->isExposed())
            return false;
        return !main.isMaximized() || main.size() != shown || waited.elapsed() > 300;
    };
    while (!settled() && waited.elapsed() < 1000)
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents, 20);
}

void Application::MDIForm_Load(const QString &commandLine)
{
    frmMDIMain &main = *m_main;
    Workspace &ws = workspace();
    IdleQueue::Busy starting(ws.platform.idle());
    // A box of the start comes above the splash: the splash goes first.
    ws.platform.beforeModal = [] {
        if (frmTitle *title = TitleWindow())
            title->hide();
    };
    PrintTitleVersion();
    ws.slots.CurrentDocument = 1;
    QObject::connect(qApp, &QGuiApplication::applicationStateChanged, &main,
                     [this](Qt::ApplicationState state) { Msghook1_Message(state == Qt::ApplicationActive); });
    main.setWindowTitle(AppTitle());

    LoadSettings(main, ws);
    main.show();
    settleMainWindow();
    m_actions->setSpellAvailable(WordStoreAvailable());
    // The program's folder is not made the current one: a relative path on the command line is
    // taken from the folder the program was started in.
    showPreviousFiles();

    // Slot 1 is the start's; the files of a run that did not end are read before any document of
    // this run exists, and come back in front of it.
    const int first = ws.slots.FindFreeSlot();
    frmDoc *recovered = m_autoSave->RecoverAutoSavedFiles();
    if (commandLine.isEmpty()) {
        frmDoc *document = ws.slots.CreateDocumentWindow(first, QStringLiteral("Untitled: %1").arg(first));
        if (ws.options.isChecked(Option::AddTemplate))
            FillBlankTemplate(ws, *document);
        document->state().setDirty(false);
    } else {
        ws.slots.abandon(first); // the open takes the lowest free slot
        OpenFromCommandLine(ws, commandLine);
    }
    if (recovered)
        main.mdiArea->setActiveSubWindow(recovered);
    m_autoSave->start();

    UnloadTitle();
    ws.platform.beforeModal = nullptr;
    main.activateWindow();
    ws.FocusCurrentDocument();
}

void Application::MDIForm_LinkExecute(const QString &command, bool *cancel)
{
    const QString head = command.left(4);
    *cancel = head != QLatin1String("open") && head != QLatin1String("jump");
    if (*cancel)
        return;
    Workspace &ws = workspace();
    ws.platform.idle().runWhenIdle([this, &ws, head, path = command.mid(5)] {
        frmMDIMain &main = *m_main;
        main.restoreFromMinimized();
        main.raise();
        main.activateWindow();
        if (head == QLatin1String("open")) {
            OpenFromHandOver(ws, path);
            ws.SetMarkupToolsHidden(false);
        } else if (frmDoc *document = ws.current()) {
            document->Text->SetFocus();
        }
    });
}

void Application::Msghook1_Message(bool becomingActive)
{
    Workspace &ws = workspace();
    bool &answered = ws.HighlightOpenDocuments;
    if (answered && becomingActive && ws.AnyDocumentOpen()) {
        frmDoc *document = ws.current();
        const QWidget *focus = QApplication::focusWidget();
        const bool onSurface = focus
                               && (qobject_cast<const EditingSurface *>(focus)
                                   || qobject_cast<const EditingSurface *>(focus->parentWidget()));
        if (document && !document->isMinimized() && onSurface)
            document->Text->SetFocus();
    }
    answered = true;
}

void Application::requestTermination()
{
    workspace().platform.idle().runWhenIdle([this] { m_main->close(); });
}

void Application::MDIForm_Unload()
{
    SaveSettings(*m_main, workspace());
    EmptyAutoSaveFolder();
}

} // namespace pw
