#include "find/frm_replace.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/workspace.h"
#include "find/find_walk.h"
#include "find/replace.h"
#include "find/search_dialog.h"
#include "platform/message_box.h"

#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QVBoxLayout>

namespace pw {

QString frmReplace::LastReplaceFind;

frmReplace::frmReplace(Workspace &workspace, QWidget *parent) : QDialog(parent), m_workspace(workspace)
{
    SetSearchDialogLook(*this);
    setObjectName(QStringLiteral("frmReplace"));
    setWindowTitle(QStringLiteral("Replace"));

    Label1 = new QLabel(QStringLiteral("Find:"), this);
    Label1->setObjectName(QStringLiteral("Label1"));
    tbFind = new QLineEdit(this);
    tbFind->setObjectName(QStringLiteral("tbFind"));
    tbFind->setMinimumWidth(220);
    Label1->setBuddy(tbFind);
    Label2 = new QLabel(QStringLiteral("Replace:"), this);
    Label2->setObjectName(QStringLiteral("Label2"));
    tbReplace = new QLineEdit(this);
    tbReplace->setObjectName(QStringLiteral("tbReplace"));
    Label2->setBuddy(tbReplace);
    ckCase = new QCheckBox(QStringLiteral("- Match Case"), this);
    ckCase->setObjectName(QStringLiteral("ckCase"));
    chkGlobal = new QCheckBox(QStringLiteral("- All Documents"), this);
    chkGlobal->setObjectName(QStringLiteral("chkGlobal"));
    Command2 = SearchButton(this, "Command2", QStringLiteral("Replace &All"));
    Command3 = SearchButton(this, "Command3", QStringLiteral("&Verify"));
    // Enter asks at each hit: the safe one of the two actions.
    Command3->setDefault(true);
    Command1 = SearchButton(this, "Command1", QStringLiteral("&Cancel"));

    auto *fields = new QVBoxLayout;
    for (QWidget *w : {static_cast<QWidget *>(Label1), static_cast<QWidget *>(tbFind), static_cast<QWidget *>(Label2),
                       static_cast<QWidget *>(tbReplace), static_cast<QWidget *>(ckCase), static_cast<QWidget *>(chkGlobal)})
        fields->addWidget(w);
    auto *buttons = new QVBoxLayout;
    for (QPushButton *b : {Command2, Command3, Command1})
        buttons->addWidget(b);
    buttons->addStretch(1);
    auto *layout = new QGridLayout(this);
    layout->addLayout(fields, 0, 0);
    layout->addLayout(buttons, 0, 1);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    setTabOrder(tbFind, tbReplace);
    setTabOrder(tbReplace, ckCase);
    setTabOrder(ckCase, chkGlobal);
    setTabOrder(chkGlobal, Command2);
    setTabOrder(Command2, Command3);
    setTabOrder(Command3, Command1);

    connect(Command1, &QPushButton::clicked, this, &frmReplace::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &frmReplace::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &frmReplace::Command3_Click);
}

frmReplace::~frmReplace() = default;

void frmReplace::Form_Load()
{
    const frmDoc *document = m_workspace.current();
    const QString selected = document ? document->Text->SelText() : QString();
    tbFind->setText(!selected.isEmpty() ? selected : LastReplaceFind);
    tbFind->selectAll();
}

void frmReplace::changeEvent(QEvent *event)
{
    QDialog::changeEvent(event);
    // Form_Activate: the search string takes the focus, as long as no action runs.
    if (event->type() == QEvent::ActivationChange && isActiveWindow() && !m_running)
        tbFind->setFocus(Qt::ActiveWindowFocusReason);
}

void frmReplace::Command1_Click()
{
    close();
}

void frmReplace::Command2_Click()
{
    if (m_running || !CurrentOrActiveDocument(m_workspace))
        return;
    const SearchRequest request = takeRequest();
    m_running = true;
    setEnabled(false);
    const QPointer<frmReplace> self(this);
    const int count = ReplaceAll(m_workspace, request, tbReplace->text());
    if (self)
        reportCount(count);
}

void frmReplace::Command3_Click()
{
    if (m_running || !CurrentOrActiveDocument(m_workspace))
        return;
    const SearchRequest request = takeRequest();
    m_running = true;
    const QPointer<frmReplace> self(this);
    hide();
    VerifyWalk walk(m_workspace, request, tbReplace->text());
    walk.start();
    while (walk.isWaiting())
        walk.answer(m_workspace.MsgBox(QStringLiteral("Replace highlighted selection."),
                                       MsgStyle::YesNoCancel + MsgStyle::Question));
    if (self)
        reportCount(walk.count());
}

SearchRequest frmReplace::takeRequest()
{
    LastReplaceFind = tbFind->text();
    return {tbFind->text(), ckCase->isChecked() ? int(EditingSurface::MatchCase) : 0, chkGlobal->isChecked()};
}

void frmReplace::reportCount(int count)
{
    hide();
    m_workspace.MsgBox(QString::number(qMax(count, 0)) + QStringLiteral(" occurrences replaced."),
                       MsgStyle::Information);
    close();
}

void frmReplace::Form_Unload()
{
    if (std::exchange(m_unloaded, true))
        return;
    if (frmDoc *document = m_workspace.current())
        document->Text->setSelLength(0);
    hide();
    m_workspace.FocusCurrentDocument();
}

void frmReplace::closeEvent(QCloseEvent *event)
{
    Form_Unload();
    event->accept();
}

void frmReplace::reject()
{
    if (!m_running)
        close();
}

frmReplace *ReplaceDialog(QWidget *parent)
{
    const auto forms = parent ? parent->findChildren<frmReplace *>(QString(), Qt::FindDirectChildrenOnly)
                              : QList<frmReplace *>();
    for (frmReplace *form : forms)
        if (!form->unloaded())
            return form;
    return nullptr;
}

void ShowReplace(Workspace &workspace, QWidget *parent)
{
    frmReplace *form = ReplaceDialog(parent);
    if (!form) {
        form = new frmReplace(workspace, parent);
        form->Form_Load();
    }
    ShowSearchDialog(*form);
}

} // namespace pw
