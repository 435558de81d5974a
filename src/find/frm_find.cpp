#include "find/frm_find.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/workspace.h"
#include "find/find_walk.h"
#include "find/search_dialog.h"
#include "platform/message_box.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

namespace pw {

QString frmFind::LastFindText;

frmFind::frmFind(Workspace &workspace, QWidget *parent)
    : QDialog(parent), m_workspace(workspace), m_walk(new FindWalk(workspace, this))
{
    SetSearchDialogLook(*this);
    setObjectName(QStringLiteral("frmFind"));
    setWindowTitle(QStringLiteral("Find"));

    Label1 = new QLabel(QStringLiteral("Find What?:"), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    tbFind = new QLineEdit(this);
    tbFind->setObjectName(QStringLiteral("tbFind"));
    tbFind->setMinimumWidth(220);
    Label1->setBuddy(tbFind);
    chkCase = new QCheckBox(QStringLiteral("- Match case"), this);
    chkCase->setObjectName(QStringLiteral("chkCase"));
    chkGlobal = new QCheckBox(QStringLiteral("- All Documents"), this);
    chkGlobal->setObjectName(QStringLiteral("chkGlobal"));
    Command1 = SearchButton(this, "Command1", QStringLiteral("&OK"));
    Command1->setDefault(true);
    Command2 = SearchButton(this, "Command2", QStringLiteral("&Cancel"));

    auto *layout = new QGridLayout(this);
    layout->addWidget(Label1, 0, 0);
    layout->addWidget(tbFind, 1, 0);
    layout->addWidget(chkCase, 2, 0);
    layout->addWidget(chkGlobal, 3, 0);
    layout->addWidget(Command1, 1, 1);
    layout->addWidget(Command2, 2, 1);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    setTabOrder(tbFind, chkCase);
    setTabOrder(chkCase, chkGlobal);
    setTabOrder(chkGlobal, Command1);
    setTabOrder(Command1, Command2);

    connect(Command1, &QPushButton::clicked, this, &frmFind::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &frmFind::Command2_Click);
    connect(tbFind, &QLineEdit::textChanged, this, &frmFind::tbFind_Change);
    new LostFocusWatch(tbFind, [this] { tbFind_LostFocus(); });
    connect(m_walk, &ResumableWalk::stopped, this, [this] { Tag = QString::number(m_walk->hit()); });
    connect(m_walk, &ResumableWalk::finished, this, [this](bool complete) {
        if (complete)
            notFound();
    });
}

frmFind::~frmFind() = default;

void frmFind::Form_Load()
{
    const frmDoc *document = m_workspace.current();
    const EditingSurface *text = document ? document->Text : nullptr;
    tbFind->setText(text && text->SelLength() >= 1 ? text->SelText() : LastFindText);
    tbFind->selectAll();
    Tag.clear();
}

void frmFind::Form_Activate()
{
    tbFind->setFocus(Qt::ActiveWindowFocusReason);
}

void frmFind::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        Form_Activate();
}

void frmFind::tbFind_Change()
{
    // A changed string starts from the beginning.
    m_walk->stop();
    Tag.clear();
}

void frmFind::tbFind_LostFocus()
{
    LastFindText = tbFind->text();
}

void frmFind::Command1_Click()
{
    // With every document closed under the dialog there is nothing to search.
    if (!CurrentOrActiveDocument(m_workspace))
        return;
    m_walk->request = {tbFind->text(), chkCase->isChecked() ? int(EditingSurface::MatchCase) : 0,
                       chkGlobal->isChecked()};
    if (m_walk->isWaiting())
        m_walk->resume();
    else
        m_walk->start();
}

void frmFind::notFound()
{
    Tag = QStringLiteral("0");
    const QPointer<frmFind> self(this);
    hide();
    m_workspace.MsgBox(QLatin1Char('"') + tbFind->text() + QStringLiteral("\" not found."), MsgStyle::Information);
    if (self && !m_unloaded)
        show();
}

void frmFind::Command2_Click()
{
    close();
}

void frmFind::Form_Unload()
{
    if (std::exchange(m_unloaded, true))
        return;
    if (tbFind->hasFocus())
        tbFind_LostFocus();
    m_walk->stop();
    hide();
    m_workspace.FocusCurrentDocument();
}

void frmFind::closeEvent(QCloseEvent *event)
{
    Form_Unload();
    event->accept();
}

void frmFind::reject()
{
    close();
}

frmFind *FindDialog(QWidget *parent)
{
    // A closed dialog lingers until its deletion; it is no longer the open one.
    const auto forms = parent ? parent->findChildren<frmFind *>(QString(), Qt::FindDirectChildrenOnly)
                              : QList<frmFind *>();
    for (frmFind *form : forms)
        if (!form->unloaded())
            return form;
    return nullptr;
}

void ShowFind(Workspace &workspace, QWidget *parent)
{
    frmFind *form = FindDialog(parent);
    if (!form) {
        form = new frmFind(workspace, parent);
        form->Form_Load();
    }
    ShowSearchDialog(*form);
}

} // namespace pw
