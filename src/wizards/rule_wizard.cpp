#include "wizards/rule_wizard.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/workspace.h"
#include "markup/tag_placement.h"
#include "platform/message_box.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace pw {

HrFault CheckHrOptions(const HrOptions &options)
{
    if (!options.size.isEmpty() && !IsNumeric(options.size))
        return HrFault::Size;
    if (!options.width.isEmpty() && !IsNumeric(options.width))
        return HrFault::Width;
    return HrFault::None;
}

QString HrTag(const HrOptions &options)
{
    static const char *const aligns[] = {"", " ALIGN=LEFT", " ALIGN=RIGHT", " ALIGN=CENTER"};
    QString tag = QStringLiteral("<HR");
    if (!options.size.isEmpty())
        tag += QStringLiteral(" SIZE=") + options.size;
    if (!options.width.isEmpty()) {
        tag += QStringLiteral(" WIDTH=") + options.width;
        if (!options.widthInPixels)
            tag += QLatin1Char('%');
    }
    if (options.alignment >= 1 && options.alignment <= 3)
        tag += QLatin1String(aligns[options.alignment]);
    if (options.noShade)
        tag += QStringLiteral(" NOSHADE");
    return tag + QLatin1Char('>');
}

frmHR::frmHR(Workspace &workspace, QWidget *parent) : WizardForm(workspace, parent, QStringLiteral("Define <HR>"))
{
    const auto named = [](QWidget *widget, const QString &name) {
        widget->setObjectName(name);
        return widget;
    };
    tbSize = new QLineEdit(this);
    named(tbSize, QStringLiteral("tbSize"));
    tbWidth = new QLineEdit(this);
    named(tbWidth, QStringLiteral("tbWidth"));
    chkWidth = new QCheckBox(QStringLiteral("- Width in pixels"), this);
    named(chkWidth, QStringLiteral("chkWidth"));
    auto *frame = new QGroupBox(QStringLiteral("HR Alignment"), this);
    named(frame, QStringLiteral("Frame1"));
    auto *frameLayout = new QVBoxLayout(frame);
    static const char *const captions[] = {"- Default", "- Left", "- Right", "- Center"};
    for (int i = 0; i < 4; ++i) {
        opAlignment[i] = new QRadioButton(QLatin1String(captions[i]), frame);
        named(opAlignment[i], QStringLiteral("opAlignment(%1)").arg(i));
        frameLayout->addWidget(opAlignment[i]);
    }
    opAlignment[0]->setChecked(true);
    chkNoShade = new QCheckBox(QStringLiteral("- No Shade"), this);
    named(chkNoShade, QStringLiteral("chkNoShade"));
    Command1 = new QPushButton(QStringLiteral("&OK"), this);
    named(Command1, QStringLiteral("Command1"));
    Command1->setDefault(true);
    Command2 = new QPushButton(QStringLiteral("&Cancel"), this);
    named(Command2, QStringLiteral("Command2"));

    auto *fields = new QFormLayout;
    fields->addRow(QStringLiteral("Size:"), tbSize);
    auto *widthRow = new QHBoxLayout;
    widthRow->addWidget(tbWidth);
    widthRow->addWidget(chkWidth);
    fields->addRow(QStringLiteral("Width:"), widthRow);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(Command1, QDialogButtonBox::AcceptRole);
    buttons->addButton(Command2, QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addWidget(frame);
    layout->addWidget(chkNoShade);
    layout->addWidget(buttons);

    connect(Command1, &QPushButton::clicked, this, &frmHR::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::reject);
}

HrOptions frmHR::options() const
{
    HrOptions o;
    o.size = tbSize->text();
    o.width = tbWidth->text();
    o.widthInPixels = chkWidth->isChecked();
    for (int i = 0; i < 4; ++i)
        if (opAlignment[i]->isChecked())
            o.alignment = i;
    o.noShade = chkNoShade->isChecked();
    return o;
}

void frmHR::Command1_Click()
{
    const HrOptions o = options();
    switch (CheckHrOptions(o)) {
    case HrFault::Size:
        refuse(QStringLiteral("HR Size must be numeric!"), MsgStyle::Exclamation, tbSize);
        return;
    case HrFault::Width:
        refuse(QStringLiteral("HR Width must be numeric!"), MsgStyle::Exclamation, tbWidth);
        return;
    case HrFault::None:
        break;
    }
    if (frmDoc *document = m_workspace.current())
        PlaceSingleTag(m_workspace, *document, HrTag(o));
    unload();
}

void ShowRuleWizard(Workspace &workspace, frmDoc &document, QWidget *parent)
{
    if (SelectionMayBeReplaced(workspace, document))
        OpenWizard<frmHR>(workspace, parent);
}

} // namespace pw
