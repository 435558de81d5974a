#include "core/main_window.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/status_presenter.h"
#include "core/workspace.h"

#include <QApplication>
#include <QCloseEvent>
#include <QWindowStateChangeEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMenuBar>
#include <QProgressBar>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

namespace pw {

frmMDIMain::frmMDIMain(Platform &platform, QWidget *parent) : QMainWindow(parent)
{
    setObjectName(QStringLiteral("frmMDIMain"));
    setWindowTitle(AppTitle());
    // Every window of the program shows its icon, drawn once.
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/pagewright.svg")));

    auto *central = new QWidget(this);
    auto *layout = new QVBoxLayout(central);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    mdiArea = new QMdiArea(central);
    mdiArea->setObjectName(QStringLiteral("mdiArea"));
    mdiArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdiArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    layout->addWidget(mdiArea, 1);

    Picture1 = new QWidget(central);
    Picture1->setObjectName(QStringLiteral("Picture1"));
    auto *strip = new QHBoxLayout(Picture1);
    strip->setContentsMargins(8, 2, 8, 2);
    ProgressBar = new QProgressBar(Picture1);
    ProgressBar->setObjectName(QStringLiteral("ProgressBar"));
    ProgressBar->setRange(0, 100);
    ProgressBar->setTextVisible(false);
    ProgressBar->setMaximumHeight(14);
    strip->addWidget(ProgressBar);
    Picture1->hide();
    layout->addWidget(Picture1);
    setCentralWidget(central);

    Text = new EditingSurface(this);
    Text->hide();

    Toolbar1 = addToolBar(QStringLiteral("Toolbar1"));
    Toolbar1->setObjectName(QStringLiteral("Toolbar1"));
    Toolbar1->setMovable(false);
    addToolBarBreak();
    Toolbar2 = addToolBar(QStringLiteral("Toolbar2"));
    Toolbar2->setObjectName(QStringLiteral("Toolbar2"));
    Toolbar2->setMovable(false);

    StatusBar1 = statusBar();
    StatusBar1->setObjectName(QStringLiteral("StatusBar1"));
    StatusBar1->setSizeGripEnabled(true);
    Panel1 = new QLabel(StatusBar1);
    Panel1->setObjectName(QStringLiteral("Panel1"));
    Panel2 = new QLabel(QStringLiteral("Line: 0 "), StatusBar1);
    Panel2->setObjectName(QStringLiteral("Panel2"));
    Panel3 = new QLabel(QStringLiteral("Size: 0"), StatusBar1);
    Panel3->setObjectName(QStringLiteral("Panel3"));
    Panel2->setMinimumWidth(110);
    Panel3->setMinimumWidth(130);
    StatusBar1->addWidget(Panel1, 1);
    StatusBar1->addPermanentWidget(Panel2);
    StatusBar1->addPermanentWidget(Panel3);
    Panel4 = new QLabel(StatusBar1);
    Panel4->setObjectName(QStringLiteral("Panel4"));
    Panel4->setMinimumWidth(110);
    Panel4->setContentsMargins(0, 0, 8, 0);
    StatusBar1->addPermanentWidget(Panel4);

    tmrAutoSave = new QTimer(this);
    tmrAutoSave->setObjectName(QStringLiteral("tmrAutoSave"));
    tmrAutoSave->setInterval(1000);

    m_status = std::make_unique<StatusPresenter>(*StatusBar1, *Panel1, *Panel2, *Panel3, *Panel4, *Picture1, *ProgressBar);
    m_workspace = std::make_unique<Workspace>(platform, *m_status, *Text, *mdiArea);
    Text->setClassFonts(&m_workspace->fonts);

    connect(mdiArea, &QMdiArea::subWindowActivated, this, &frmMDIMain::onSubWindowActivated);
}

frmMDIMain::~frmMDIMain()
{
    // Documents go first, while the main window's parts still stand.
    for (QMdiSubWindow *w : mdiArea->subWindowList())
        delete w;
}

QAction *frmMDIMain::button(const QString &key) const
{
    return findChild<QAction *>(key, Qt::FindDirectChildrenOnly);
}

void frmMDIMain::setMainMenus(const QList<QMenu *> &menus)
{
    m_mainMenus = menus;
    showMenusFor(activeDocument());
}

void frmMDIMain::showMenusFor(frmDoc *document)
{
    if (document && m_menusOf == document && !menuBar()->actions().isEmpty())
        return;
    m_menusOf = document;
    menuBar()->clear();
    for (QMenu *m : document ? document->menus() : m_mainMenus)
        menuBar()->addMenu(m);
}

frmDoc *frmMDIMain::activeDocument() const
{
    return qobject_cast<frmDoc *>(mdiArea->activeSubWindow());
}

void frmMDIMain::onSubWindowActivated(QMdiSubWindow *window)
{
    if (auto *doc = qobject_cast<frmDoc *>(window)) {
        showMenusFor(doc);
        doc->Form_Activate();
    } else if (m_workspace->slots.openSlots().isEmpty()) {
        showMenusFor(nullptr);
    }
}

void frmMDIMain::restoreFromMinimized()
{
    if (!isMinimized())
        return;
    const Qt::WindowStates before = m_stateBeforeMinimize & ~Qt::WindowMinimized;
    setWindowState((windowState() & ~Qt::WindowMinimized) | before | Qt::WindowActive);
    show();
}

void frmMDIMain::changeEvent(QEvent *event)
{
    if (event->type() == QEvent::WindowStateChange) {
        const Qt::WindowStates old = static_cast<QWindowStateChangeEvent *>(event)->oldState();
        if (isMinimized() && !(old & Qt::WindowMinimized))
            m_stateBeforeMinimize = old;
    }
    QMainWindow::changeEvent(event);
}

void frmMDIMain::closeEvent(QCloseEvent *event)
{
    if (m_unloaded) {
        event->accept();
        return;
    }
    bool cancel = false;
    Q_EMIT queryUnload(&cancel);
    if (cancel) {
        event->ignore();
        return;
    }
    // Each document is asked (Yes and No only) and unloaded, then the main window unloads.
    DocumentSlots &slots = m_workspace->slots;
    for (int slot : slots.openSlots())
        if (frmDoc *document = slots.document(slot))
            document->unloadForShutdown();
    m_unloaded = true;
    event->accept();
    Q_EMIT unloaded();
}

} // namespace pw
