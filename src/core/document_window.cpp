#include "core/document_window.h"

#include "core/document_slots.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/status_line.h"

#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenu>

namespace pw {

frmDoc::frmDoc(frmMDIMain *main) : QMdiSubWindow(nullptr), m_main(main)
{
    setObjectName(QStringLiteral("frmDoc"));
    setAttribute(Qt::WA_DeleteOnClose);
    Text = new EditingSurface(this);
    setWidget(Text);
    Text1 = new QLineEdit(this);
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->hide();
    setWindowIcon(QIcon(QStringLiteral(":/icons/pagewright.svg")));
}

frmDoc::~frmDoc()
{
    qDeleteAll(m_menus);
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
    DocumentSlots &slots = m_main->slots();
    QMdiArea *area = m_main->mdiArea;
    // A new window takes three quarters of the area's width and two thirds of its height.
    const QSize size(area->viewport()->width() * 3 / 4, area->viewport()->height() * 2 / 3);
    resize(size.expandedTo(QSize(320, 200)));

    if (!isMaximized() && !isMinimized()) {
        const double h = pixelsToTwips(height()), w = pixelsToTwips(width());
        const double p = pixelsToTwips(area->viewport()->height());
        const double m = pixelsToTwips(area->viewport()->width());
        if (slots.CascadeOffset + h + 450 > p || m - 200 < slots.CascadeOffset + w)
            slots.CascadeOffset = 0;
        const int at = twipsToPixels(slots.CascadeOffset);
        move(at, at);
        slots.CascadeOffset += 400;
    }
    Text->setBackColor(Text->BackColor());
    if (m_main->options().isChecked(Option::MaximizeDocs))
        showMaximized();
}

void frmDoc::Form_Activate()
{
    DocumentSlots &slots = m_main->slots();
    slots.CurrentDocument = slot();
    slots.ActivationSelStart = Text->SelStart();
    m_main->Panel3->setText(SizeText(Text->TextLength()));
    m_main->Panel2->setText(LineText(Text->GetLineFromChar(Text->SelStart() + 1) + 1));
    m_main->setButtonEnabled(QStringLiteral("imgFileSave"),
                             isUntitled() || slots.state(slot()).Dirty);
    const bool selected = Text->SelLength() >= 1;
    m_main->setButtonEnabled(QStringLiteral("imgEditCut"), selected);
    m_main->setButtonEnabled(QStringLiteral("imgEditCopy"), selected);
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
    if (!m_quiet) {
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
    DocumentSlots &slots = m_main->slots();
    const int n = slot();
    if (n < 1 || n > slots.count())
        return;
    slots.state(n).Free = True;
    if (!slots.AnyDocumentOpen()) {
        SetMarkupToolsHidden(true);
        m_main->Panel3->setText(QStringLiteral("Size: 0"));
        m_main->Panel2->setText(QStringLiteral("Line: 0 "));
        slots.CascadeOffset = 0;
    }
    // Compared in pixels: the window was placed at a twips value that pixels only approximate.
    if (!isMaximized() && !isMinimized() && y() == twipsToPixels(slots.CascadeOffset - 400))
        slots.CascadeOffset -= 400;
    for (int i = 1; i < DocumentSlots::LocalNameCount; ++i)
        slots.LocalNames(i, n).clear();
    Q_EMIT Unloaded(n);
}

void frmDoc::resizeEvent(QResizeEvent *event)
{
    QMdiSubWindow::resizeEvent(event);
    if (!isMinimized() && Text->height() > 0)
        Text->setRightMargin(Text->Width() - 400);
}

} // namespace pw
