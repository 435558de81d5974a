#include "wizards/anchor_wizard.h"

#include "core/document_window.h"
#include "core/workspace.h"
#include "markup/tag_placement.h"
#include "platform/message_box.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace pw {

QString AnchorTag(const QString &name)
{
    return QStringLiteral("<A NAME=\"") + name + QStringLiteral("\">");
}

frmAnchor::frmAnchor(Workspace &workspace, QWidget *parent)
    : WizardForm(workspace, parent, QStringLiteral("Anchor Name"))
{
    tbAnchor = new QLineEdit(this);
    tbAnchor->setObjectName(QStringLiteral("tbAnchor"));
    tbAnchor->setMinimumWidth(260);
    Command1 = new QPushButton(QStringLiteral("&OK"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setDefault(true);
    Command2 = new QPushButton(QStringLiteral("&Cancel"), this);
    Command2->setObjectName(QStringLiteral("Command2"));

    auto *fields = new QFormLayout;
    fields->addRow(QStringLiteral("NAME:"), tbAnchor);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(Command1, QDialogButtonBox::AcceptRole);
    buttons->addButton(Command2, QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addWidget(buttons);

    connect(Command1, &QPushButton::clicked, this, &frmAnchor::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::reject);
}

void frmAnchor::Command1_Click()
{
    const QString name = tbAnchor->text();
    if (name.isEmpty()) {
        refuse(QStringLiteral("You must enter an anchor name!"), MsgStyle::Information, tbAnchor);
        return;
    }
    if (frmDoc *document = m_workspace.current()) {
        PlaceSingleTag(m_workspace, *document, AnchorTag(name));
        RememberLocalName(document->state().LocalNames, name);
    }
    unload();
}

void ShowAnchorWizard(Workspace &workspace, frmDoc &document, QWidget *parent)
{
    if (SelectionMayBeReplaced(workspace, document))
        OpenWizard<frmAnchor>(workspace, parent);
}

} // namespace pw
