#include "core/document_window.h"

#include "core/app_state.h"
#include "core/editing_surface.h"
#include "core/workspace.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenu>

namespace pw {

frmDoc::frmDoc(Workspace &workspace, int slot, const QString &untitledName)
    : QMdiSubWindow(nullptr), m_workspace(workspace), m_state(this)
{
    setObjectName(QStringLiteral("frmDoc"));
    setAttribute(Qt::WA_DeleteOnClose);
    Tag = QString::number(slot);
    Text = new EditingSurface(this);
    Text->setClassFonts(&workspace.fonts);
    Text->setBackColor(workspace.backColor);
    setWidget(Text);
    Text->installEventFilter(this);
    Text1 = new QLineEdit(this);
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->hide();
    // The program's icon is the application's (see the main window): one of its own would be
    // drawn anew for each document.
    m_state.setUntitledName(untitledName);
    showTitle();
    connect(&m_state, &DocumentState::captionChanged, this, &frmDoc::showTitle);
    connect(&m_state, &DocumentState::dirtyChanged, this, &QWidget::setWindowModified);
}

frmDoc::~frmDoc()
{
    qDeleteAll(m_menus);
}

bool frmDoc::eventFilter(QObject *watched, QEvent *event)
{
    if (watched != Text || (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride))
        return QMdiSubWindow::eventFilter(watched, event);
    auto *key = static_cast<QKeyEvent *>(event);
    // Ctrl+F6 stays the key that goes to the next document.
    if (key->key() < Qt::Key_F1 || key->key() > Qt::Key_F12
        || (key->key() == Qt::Key_F6 && key->modifiers().testFlag(Qt::ControlModifier)))
        return QMdiSubWindow::eventFilter(watched, event);
    // The document takes the function keys before any shortcut or the surface.
    if (event->type() == QEvent::ShortcutOverride) {
        event->accept();
        return true;
    }
    const Qt::KeyboardModifiers m = key->modifiers();
    const int shift = (m & Qt::ShiftModifier ? 1 : 0) | (m & Qt::ControlModifier ? 2 : 0) | (m & Qt::AltModifier ? 4 : 0);
    int keyCode = 0x70 + (key->key() - Qt::Key_F1);
    Q_EMIT KeyDown(&keyCode, shift);
    return keyCode == 0;
}

void frmDoc::showTitle()
{
    // "[*]" shows "*" while modified; one standing in a path is doubled so that it stays as written.
    QString title = Caption();
    title.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
    setWindowTitle(title + QLatin1String("[*]"));
}

QMenu *frmDoc::menu(const QString &name) const
{
    for (QMenu *m : m_menus)
        if (m->objectName() == name)
            return m;
    for (QMenu *m : m_menus)
        if (auto *sub = m->findChild<QMenu *>(name))
            return sub;
    return nullptr;
}

QAction *frmDoc::item(const QString &name) const
{
    for (QMenu *m : m_menus) {
        if (m->menuAction()->objectName() == name)
            return m->menuAction();
        if (auto *a = m->findChild<QAction *>(name))
            return a;
    }
    return nullptr;
}

void frmDoc::Form_Load()
{
    DocumentSlots &slots = m_workspace.slots;
    const QWidget *viewport = slots.area().viewport();
    // A new window takes three quarters of the area's width and two thirds of its height.
    const QSize size(viewport->width() * 3 / 4, viewport->height() * 2 / 3);
    resize(size.expandedTo(QSize(320, 200)));

    if (!isMaximized() && !isMinimized()) {
        const double h = pixelsToTwips(height()), w = pixelsToTwips(width());
        const double p = pixelsToTwips(viewport->height());
        const double m = pixelsToTwips(viewport->width());
        if (slots.CascadeOffset + h + 450 > p || m - 200 < slots.CascadeOffset + w)
            slots.CascadeOffset = 0;
        const int at = twipsToPixels(slots.CascadeOffset);
        move(at, at);
        slots.CascadeOffset += 400;
    }
    if (m_workspace.options.isChecked(Option::MaximizeDocs))
        showMaximized();
}

void frmDoc::Form_Activate()
{
    DocumentSlots &slots = m_workspace.slots;
    slots.CurrentDocument = slot();
    slots.ActivationSelStart = Text->SelStart();
    if (!isMinimized())
        Text->SetFocus();
    Q_EMIT Activated();
}

void frmDoc::unloadQuietly()
{
    m_quiet = true;
    close();
}

void frmDoc::unloadForShutdown()
{
    m_unloadMode = UnloadByMainWindow;
    close();
    // Nothing may keep the window at shutdown.
    if (!m_unloaded) {
        m_quiet = true;
        close();
    }
}

void frmDoc::closeEvent(QCloseEvent *event)
{
    if (!m_quiet && !m_unloaded) {
        bool cancel = false;
        Q_EMIT QueryUnload(&cancel, m_unloadMode);
        if (cancel && m_unloadMode == UnloadByUser) {
            event->ignore();
            return;
        }
    }
    Form_Unload();
    QMdiSubWindow::closeEvent(event);
}

void frmDoc::Form_Unload()
{
    if (std::exchange(m_unloaded, true))
        return;
    DocumentSlots &slots = m_workspace.slots;
    slots.release(slot());
    if (slots.openSlots().isEmpty())
        slots.CascadeOffset = 0;
    // Compared in pixels: the window was placed at a twips value that pixels only approximate.
    if (!isMaximized() && !isMinimized() && y() == twipsToPixels(slots.CascadeOffset - 400))
        slots.CascadeOffset -= 400;
    Q_EMIT Unloaded();
}

void frmDoc::resizeEvent(QResizeEvent *event)
{
    QMdiSubWindow::resizeEvent(event);
    if (!isMinimized() && Text->height() > 0)
        Text->setRightMargin(Text->Width() - 400);
}

} // namespace pw
