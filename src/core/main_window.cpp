#include "core/main_window.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMdiArea>
#include <QMenuBar>
#include <QProgressBar>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

namespace pw {

static frmMDIMain *g_main = nullptr;

frmMDIMain *frmMDIMain::instance()
{
    return g_main;
}

frmDoc *CurrentDocumentWindow()
{
    return g_main ? g_main->slots().current() : nullptr;
}

frmMDIMain::frmMDIMain(QWidget *parent) : QMainWindow(parent), m_slots(this), m_options(this)
{
    g_main = this;
    setObjectName(QStringLiteral("frmMDIMain"));
    setWindowTitle(AppTitle());
    setWindowIcon(QIcon(QStringLiteral(":/icons/pagewright.svg")));

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

    tmrAutoSave = new QTimer(this);
    tmrAutoSave->setObjectName(QStringLiteral("tmrAutoSave"));
    tmrAutoSave->setInterval(1000);

    connect(mdiArea, &QMdiArea::subWindowActivated, this, &frmMDIMain::onSubWindowActivated);
}

frmMDIMain::~frmMDIMain()
{
    // Documents go first, while the main window's parts still stand.
    for (QMdiSubWindow *w : mdiArea->subWindowList())
        delete w;
    if (g_main == this)
        g_main = nullptr;
}

QAction *frmMDIMain::button(const QString &key) const
{
    return findChild<QAction *>(key, Qt::FindDirectChildrenOnly);
}

void frmMDIMain::setButtonEnabled(const QString &key, bool enabled)
{
    if (QAction *a = button(key))
        a->setEnabled(enabled);
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

void frmMDIMain::SetMarkupToolsHidden(bool hide)
{
    const QList<QAction *> buttons = Toolbar1->actions();
    for (qsizetype i = 3; i <= buttons.size() - 4; ++i)
        buttons[i]->setVisible(!hide);
    Toolbar2->setVisible(!hide && m_options.isChecked(Option::Toolbar));
    m_markupToolsHidden = hide;
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
    } else if (m_slots.openSlots().isEmpty()) {
        showMenusFor(nullptr);
    }
}

void frmMDIMain::closeEvent(QCloseEvent *event)
{
    bool cancel = false;
    Q_EMIT queryUnload(&cancel);
    if (cancel) {
        event->ignore();
        return;
    }
    // Each document is asked (Yes and No only) and unloaded, then the main window unloads.
    for (int slot : m_slots.openSlots())
        if (frmDoc *document = m_slots.document(slot))
            document->unloadForShutdown();
    event->accept();
    Q_EMIT unloaded();
}

} // namespace pw
