#include "wizards/form_wizard.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QVBoxLayout>

namespace pw {

namespace {

struct KindRow {
    const char *caption;
    const char *tip;
    const char *place;
    const char *placeCaption;
    const char *clear;
};
const KindRow Kinds[FormKindCount] = {
    {"Form", "Form Definition", "Command3", "&Place Form", "Command2"},
    {"Checkbox", "Define Checkbox", "Command5", "&Place Checkbox", "Command4"},
    {"Hidden", "Hide values in your form", "Command7", "&Place Hidden", "Command6"},
    {"Option", "Define Options within Select", "Command9", "&Place Option", "Command8"},
    {"Password", "Define Password textbox", "Command11", "&Place Password", "Command10"},
    {"Radio", "Define Radio Buttons", "Command13", "&Place Radio", "Command12"},
    {"Reset", "Define Reset button", "Command15", "&Place Rest", "Command14"},
    {"Select", "Define Selection list", "Command17", "&Place Select", "Command16"},
    {"Submit", "Define Submit Button", "Command22", "&Place Submit", "Command21"},
    {"Text", "Define Textbox", "Command24", "&Place Text", "Command23"},
    {"Textarea", "Define Textarea", "Command25", "&Place Textarea", "Command26"},
};

template<typename W, typename... Args>
W *named(const char *name, Args &&...args)
{
    auto *widget = new W(std::forward<Args>(args)...);
    widget->setObjectName(QLatin1String(name));
    return widget;
}

QLineEdit *box(QFormLayout *fields, const char *label, const char *name)
{
    auto *edit = named<QLineEdit>(name);
    fields->addRow(QLatin1String(label), edit);
    return edit;
}

QScrollBar *numberRow(QFormLayout *fields, const char *label, QLineEdit *&edit, const char *boxName,
                      const char *barName)
{
    edit = named<QLineEdit>(boxName);
    edit->setMaximumWidth(70);
    auto *bar = named<QScrollBar>(barName, Qt::Horizontal);
    bar->setRange(0, 32767);
    bar->setMinimumWidth(120);
    auto *row = new QHBoxLayout;
    row->addWidget(edit);
    row->addWidget(bar, 1);
    fields->addRow(QLatin1String(label), row);
    return bar;
}

QCheckBox *check(QFormLayout *fields, const char *caption, const char *name)
{
    auto *box = named<QCheckBox>(name, QLatin1String(caption));
    fields->addRow(QString(), box);
    return box;
}

} // namespace

QString FormKindCaption(FormKind kind)
{
    return QLatin1String(Kinds[int(kind) - 1].caption);
}

void frmForm::buildPages()
{
    TabStrip1 = named<QTabWidget>("TabStrip1", this);
    TabStrip1->setUsesScrollButtons(false); // all eleven tabs in sight
    QFormLayout *page[FormKindCount];
    for (int i = 0; i < FormKindCount; ++i) {
        const KindRow &row = Kinds[i];
        Picture1[i] = named<QWidget>(qPrintable(QStringLiteral("Picture1(%1)").arg(i)), TabStrip1);
        TabStrip1->addTab(Picture1[i], QLatin1String(row.caption));
        TabStrip1->setTabToolTip(i, QLatin1String(row.tip));
        page[i] = new QFormLayout;
        placeButton[i] = named<QPushButton>(row.place, QLatin1String(row.placeCaption));
        clearButton[i] = named<QPushButton>(row.clear, QStringLiteral("&Clear Tab"));
        auto *buttons = new QHBoxLayout;
        buttons->addStretch();
        buttons->addWidget(placeButton[i]);
        buttons->addWidget(clearButton[i]);
        auto *layout = new QVBoxLayout(Picture1[i]);
        layout->addLayout(page[i]);
        layout->addStretch();
        layout->addLayout(buttons);
    }
    const auto fieldsOf = [&page](FormKind kind) { return page[int(kind) - 1]; };

    QFormLayout *f = fieldsOf(FormKind::Form);
    tbAction = box(f, "Action:", "tbAction");
    tbName = box(f, "Name:", "tbName");
    auto *method = new QHBoxLayout;
    for (int i = 0; i < 2; ++i) {
        opMethod[i] = named<QRadioButton>(qPrintable(QStringLiteral("opMethod(%1)").arg(i)),
                                          i == 0 ? QStringLiteral("Post") : QStringLiteral("Get"));
        method->addWidget(opMethod[i]);
    }
    method->addStretch();
    opMethod[0]->setChecked(true);
    f->addRow(QStringLiteral("Method:"), method);
    tbEncType = box(f, "EncType:", "tbEncType");
    tbFormExtraTag = box(f, "Extra Tag:", "tbFormExtraTag");

    f = fieldsOf(FormKind::Checkbox);
    tbCheckboxName = box(f, "Name:", "tbCheckboxName");
    tbCheckboxValue = box(f, "Value:", "tbCheckboxValue");
    tbCheckboxText = box(f, "Text:", "tbCheckboxText");
    tbCheckboxExtraTag = box(f, "Extra Tag:", "tbCheckboxExtraTag");
    ckbCheckboxChecked = check(f, "Checked", "ckbCheckboxChecked");

    f = fieldsOf(FormKind::Hidden);
    tbHiddenName = box(f, "Name:", "tbHiddenName");
    tbHiddenValue = box(f, "Value:", "tbHiddenValue");
    tbHiddenExtraTag = box(f, "Extra Tag:", "tbHiddenExtraTag");

    f = fieldsOf(FormKind::Option);
    tbOptionText = box(f, "Text:", "tbOptionText");
    tbOptionExtraTag = box(f, "Extra Tag:", "tbOptionExtraTag");
    ckbOptionSelected = check(f, "Selected", "ckbOptionSelected");

    f = fieldsOf(FormKind::Password);
    tbPasswordName = box(f, "Name:", "tbPasswordName");
    tbPasswordValue = box(f, "Initial Value:", "tbPasswordValue");
    tbPasswordExtraTag = box(f, "Extra Tag:", "tbPasswordExtraTag");
    hsPasswordSize = numberRow(f, "Size:", tbPasswordSize, "tbPasswordSize", "hsPasswordSize");

    f = fieldsOf(FormKind::Radio);
    tbRadioName = box(f, "Name:", "tbRadioName");
    tbRadioValue = box(f, "Value:", "tbRadioValue");
    tbRadioText = box(f, "Text:", "tbRadioText");
    tbRadioExtraTag = box(f, "Extra Tag:", "tbRadioExtraTag");
    ckbRadioChecked = check(f, "Checked", "ckbRadioChecked");

    f = fieldsOf(FormKind::Reset);
    tbResetValue = box(f, "Value:", "tbResetValue");
    tbResetExtraTag = box(f, "Extra Tag:", "tbResetExtraTag");

    f = fieldsOf(FormKind::Select);
    tbSelectName = box(f, "Name:", "tbSelectName");
    hsSelectSize = numberRow(f, "Size:", tbSelectSize, "tbSelectSize", "hsSelectSize");
    ckbSelectMultiple = check(f, "Allow Multiple Selections", "ckbSelectMultiple");
    auto *frame = named<QGroupBox>("Frame1", QStringLiteral("Options"));
    auto *options = new QFormLayout;
    tbSelectOptionText = box(options, "Text:", "tbSelectOptionText");
    ckbSelectOptionSelected = check(options, "Selected", "ckbSelectOptionSelected");
    lstSelectionOptions = named<QListWidget>("lstSelectionOptions");
    Command18 = named<QPushButton>("Command18", QStringLiteral("Add"));
    Command19 = named<QPushButton>("Command19", QStringLiteral("Remove"));
    Command20 = named<QPushButton>("Command20", QStringLiteral("Clear &Options"));
    auto *listButtons = new QVBoxLayout;
    for (QPushButton *button : {Command18, Command19, Command20})
        listButtons->addWidget(button);
    listButtons->addStretch();
    auto *listRow = new QHBoxLayout;
    listRow->addWidget(lstSelectionOptions, 1);
    listRow->addLayout(listButtons);
    auto *frameLayout = new QVBoxLayout(frame);
    frameLayout->addLayout(options);
    frameLayout->addLayout(listRow);
    f->addRow(frame);

    f = fieldsOf(FormKind::Submit);
    tbSubmitValue = box(f, "Value:", "tbSubmitValue");
    tbSubmitExtraTag = box(f, "Extra Tag:", "tbSubmitExtraTag");

    f = fieldsOf(FormKind::Text);
    tbTextName = box(f, "Name:", "tbTextName");
    tbTextValue = box(f, "Initial Value:", "tbTextValue");
    tbTextExtraTag = box(f, "Extra Tag:", "tbTextExtraTag");
    hsTextSize = numberRow(f, "Size:", tbTextSize, "tbTextSize", "hsTextSize");
    hsMaxLength = numberRow(f, "Maxlength:", tbMaxLength, "tbMaxLength", "hsMaxLength");

    f = fieldsOf(FormKind::Textarea);
    tbTextAreaName = box(f, "Name:", "tbTextAreaName");
    tbTextAreaValue = named<QPlainTextEdit>("tbTextAreaValue");
    tbTextAreaValue->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    tbTextAreaValue->setTabChangesFocus(true);
    tbTextAreaValue->setMaximumHeight(90);
    f->addRow(QStringLiteral("Initial Value:"), tbTextAreaValue);
    tbTextAreaExtraTag = box(f, "Extra Tag:", "tbTextAreaExtraTag");
    hsTextAreaRows = numberRow(f, "Rows:", tbTextAreaRows, "tbTextAreaRows", "hsTextAreaRows");
    hsTextAreaCols = numberRow(f, "Columns:", tbTextAreaCols, "tbTextAreaCols", "hsTextAreaCols");
}

} // namespace pw
