#include "wizards/base_font_wizard.h"

#include "core/document_window.h"
#include "core/workspace.h"
#include "markup/tag_placement.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QVBoxLayout>

namespace pw {

QString BaseFontTag(const QString &size)
{
    return QStringLiteral("<BASEFONT SIZE=\"") + size + QStringLiteral("\">");
}

frmBaseFont::frmBaseFont(Workspace &workspace, QWidget *parent)
    : WizardForm(workspace, parent, QStringLiteral("BaseFont"))
{
    tbSize = new QLineEdit(this);
    tbSize->setObjectName(QStringLiteral("tbSize"));
    tbSize->setReadOnly(true);
    tbSize->setFocusPolicy(Qt::NoFocus);
    tbSize->setMaximumWidth(40);
    HScroll1 = new QScrollBar(Qt::Horizontal, this);
    HScroll1->setObjectName(QStringLiteral("HScroll1"));
    HScroll1->setRange(1, 7);
    HScroll1->setPageStep(1);
    HScroll1->setInvertedControls(false); // Right and Up make the size larger
    HScroll1->setMinimumWidth(160);
    HScroll1->setFocusPolicy(Qt::StrongFocus);
    Command1 = new QPushButton(QStringLiteral("&OK"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setAutoDefault(false);
    Command2 = new QPushButton(QStringLiteral("&Cancel"), this);
    Command2->setObjectName(QStringLiteral("Command2"));
    Command2->setDefault(true);

    auto *fields = new QFormLayout;
    auto *sizeRow = new QHBoxLayout;
    sizeRow->addWidget(tbSize);
    sizeRow->addWidget(HScroll1, 1);
    fields->addRow(QStringLiteral("Size:"), sizeRow);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(Command1, QDialogButtonBox::AcceptRole);
    buttons->addButton(Command2, QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addWidget(buttons);

    connect(HScroll1, &QScrollBar::valueChanged, this, &frmBaseFont::HScroll1_Change);
    connect(Command1, &QPushButton::clicked, this, &frmBaseFont::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::reject);
}

void frmBaseFont::Form_Load()
{
    HScroll1->setValue(3);
    HScroll1_Change(HScroll1->value());
    HScroll1->setFocus();
}

void frmBaseFont::HScroll1_Change(int value)
{
    tbSize->setText(QString::number(value));
}

void frmBaseFont::Command1_Click()
{
    if (!MayReplaceSelection(m_workspace))
        return;
    if (frmDoc *document = m_workspace.current())
        PlaceSingleTag(m_workspace, *document, BaseFontTag(tbSize->text()));
    unload();
}

void ShowBaseFontWizard(Workspace &workspace, QWidget *parent)
{
    OpenWizard<frmBaseFont>(workspace, parent);
}

} // namespace pw
