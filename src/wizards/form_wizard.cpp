#include "wizards/form_wizard.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/workspace.h"
#include "platform/message_box.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <cmath>

namespace pw {

namespace {

constexpr int NumberMax = 32767;

QString numberText(int value)
{
    return value == 0 ? QString() : QString::number(value);
}

// A multi-line box's text with the document's line ends.
QString linesOf(const QPlainTextEdit *box)
{
    return box->toPlainText().replace(QLatin1Char('\n'), LineEnd);
}

} // namespace

// --- NumberPair ---------------------------------------------------------------------------------

NumberPair::NumberPair(QLineEdit *box, QScrollBar *bar) : QObject(box), m_box(box), m_bar(bar)
{
    connect(box, &QLineEdit::textChanged, this, &NumberPair::box_Change);
    connect(box, &QLineEdit::editingFinished, this, &NumberPair::box_LostFocus);
    connect(bar, &QScrollBar::valueChanged, this, &NumberPair::bar_Change);
}

QString NumberPair::text() const
{
    return numberText(m_bar->value());
}

void NumberPair::box_Change(const QString &text)
{
    if (!IsNumeric(text)) {
        follow(0);
        if (!text.isEmpty())
            m_box->setText(QString());
        return;
    }
    const double typed = std::round(text.trimmed().toDouble());
    if (typed < 0 || typed > NumberMax) {
        // Held at the nearest end; the box's handler runs once more on the corrected text.
        m_box->setText(numberText(typed < 0 ? 0 : NumberMax));
        return;
    }
    follow(int(typed));
}

void NumberPair::follow(int value)
{
    // What is being typed stays as typed ("2." on the way to "2.5"); the box shows the whole
    // number when it is left.
    m_following = true;
    m_bar->setValue(value);
    m_following = false;
}

void NumberPair::bar_Change(int value)
{
    if (!m_following && m_box->text() != numberText(value))
        m_box->setText(numberText(value));
}

void NumberPair::box_LostFocus()
{
    if (m_box->text() != numberText(m_bar->value()))
        m_box->setText(numberText(m_bar->value()));
}

// --- frmForm ------------------------------------------------------------------------------------

frmForm::frmForm(Workspace &workspace, QWidget *parent, FormKind kind)
    : WizardForm(workspace, parent, QStringLiteral("Form Wizard")), m_kind(kind)
{
    buildPages();
    Command1 = new QPushButton(QStringLiteral("&Done"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    layOutTabs(TabStrip1, Command1);

    m_passwordSize = new NumberPair(tbPasswordSize, hsPasswordSize);
    m_selectSize = new NumberPair(tbSelectSize, hsSelectSize);
    m_textSize = new NumberPair(tbTextSize, hsTextSize);
    m_maxLength = new NumberPair(tbMaxLength, hsMaxLength);
    m_rows = new NumberPair(tbTextAreaRows, hsTextAreaRows);
    m_cols = new NumberPair(tbTextAreaCols, hsTextAreaCols);
    tbSelectSize->setText(QStringLiteral("1"));
    tbTextAreaRows->setText(QStringLiteral("10"));
    tbTextAreaCols->setText(QStringLiteral("10"));

    for (int i = 0; i < FormKindCount; ++i) {
        const auto k = FormKind(i + 1);
        connect(placeButton[i], &QPushButton::clicked, this, [this, k] { Place_Click(k); });
        connect(clearButton[i], &QPushButton::clicked, this, [this, k] { ClearTab_Click(k); });
    }
    connect(Command18, &QPushButton::clicked, this, &frmForm::Command18_Click);
    connect(Command19, &QPushButton::clicked, this, &frmForm::Command19_Click);
    connect(Command20, &QPushButton::clicked, this, &frmForm::Command20_Click);
    connect(Command1, &QPushButton::clicked, this, &frmForm::unload);
    connect(TabStrip1, &QTabWidget::currentChanged, this, &frmForm::TabStrip1_Click);
}

void frmForm::Form_Load()
{
    if (m_kind != FormKind::Form) {
        // One kind only: its tab is the one left, and no other kind can be reached.
        const int keep = int(m_kind) - 1;
        const QString tip = TabStrip1->tabToolTip(keep);
        for (int i = FormKindCount - 1; i >= 0; --i)
            if (i != keep)
                TabStrip1->removeTab(i);
        TabStrip1->setTabText(0, FormKindCaption(m_kind));
        TabStrip1->setTabToolTip(0, tip);
        setWindowTitle(QStringLiteral("Form: ") + FormKindCaption(m_kind));
    }
    if (m_kind == FormKind::Select)
        if (const frmDoc *document = m_workspace.current())
            m_found = SelectAround(document->Text->Text(), document->Text->SelStart());
    if (m_found) {
        const FormElementOptions &o = m_found->options;
        tbSelectName->setText(o.name);
        tbSelectSize->setText(o.size);
        ckbSelectMultiple->setChecked(o.multiple);
        for (const QString &entry : o.entries) {
            lstSelectionOptions->addItem(entry);
            if (IsSelectedOptionEntry(entry))
                ckbSelectOptionSelected->setEnabled(false);
        }
    }
    TabStrip1->setCurrentWidget(Picture1[int(m_kind) - 1]);
    TabStrip1_Click();
}

FormKind frmForm::kindOfTab(int index) const
{
    QWidget *page = TabStrip1->widget(index);
    for (int i = 0; i < FormKindCount; ++i)
        if (Picture1[i] == page)
            return FormKind(i + 1);
    return m_kind;
}

void frmForm::TabStrip1_Click()
{
    const FormKind shown = kindOfTab(TabStrip1->currentIndex());
    // Enter places, but on the Select tab it adds the option being typed.
    (shown == FormKind::Select ? Command18 : placeButton[int(shown) - 1])->setDefault(true);
    firstField(shown)->setFocus();
}

QWidget *frmForm::firstField(FormKind kind) const
{
    QWidget *const fields[FormKindCount] = {tbAction,     tbCheckboxName, tbHiddenName,  tbOptionText,
                                            tbPasswordName, tbRadioName,  tbResetValue,  tbSelectName,
                                            tbSubmitValue,  tbTextName,   tbTextAreaName};
    return fields[int(kind) - 1];
}

QWidget *frmForm::faultField(FormKind kind, FormField field) const
{
    switch (field) {
    case FormField::Action:
        return tbAction;
    case FormField::Value:
        switch (kind) {
        case FormKind::Checkbox: return tbCheckboxValue;
        case FormKind::Radio: return tbRadioValue;
        case FormKind::Hidden: return tbHiddenValue;
        case FormKind::Reset: return tbResetValue;
        case FormKind::Submit: return tbSubmitValue;
        default: return nullptr;
        }
    case FormField::Name:
    case FormField::None:
        break;
    }
    return firstField(kind); // every kind that needs a name has it first
}

FormElementOptions frmForm::options(FormKind kind) const
{
    FormElementOptions o;
    o.kind = kind;
    switch (kind) {
    case FormKind::Form:
        o.action = tbAction->text();
        o.name = tbName->text();
        o.encType = tbEncType->text();
        o.post = opMethod[0]->isChecked();
        o.extraTag = tbFormExtraTag->text();
        break;
    case FormKind::Checkbox:
        o.name = tbCheckboxName->text();
        o.value = tbCheckboxValue->text();
        o.text = tbCheckboxText->text();
        o.extraTag = tbCheckboxExtraTag->text();
        o.checked = ckbCheckboxChecked->isChecked();
        break;
    case FormKind::Hidden:
        o.name = tbHiddenName->text();
        o.value = tbHiddenValue->text();
        o.extraTag = tbHiddenExtraTag->text();
        break;
    case FormKind::Option:
        o.text = tbOptionText->text();
        o.extraTag = tbOptionExtraTag->text();
        o.checked = ckbOptionSelected->isChecked();
        break;
    case FormKind::Password:
        o.name = tbPasswordName->text();
        o.value = tbPasswordValue->text();
        o.extraTag = tbPasswordExtraTag->text();
        o.size = m_passwordSize->text();
        break;
    case FormKind::Radio:
        o.name = tbRadioName->text();
        o.value = tbRadioValue->text();
        o.text = tbRadioText->text();
        o.extraTag = tbRadioExtraTag->text();
        o.checked = ckbRadioChecked->isChecked();
        break;
    case FormKind::Reset:
        o.value = tbResetValue->text();
        o.extraTag = tbResetExtraTag->text();
        break;
    case FormKind::Select:
        o.name = tbSelectName->text();
        o.size = m_selectSize->text();
        o.multiple = ckbSelectMultiple->isChecked();
        o.entries.reserve(lstSelectionOptions->count());
        for (int i = 0; i < lstSelectionOptions->count(); ++i)
            o.entries.append(lstSelectionOptions->item(i)->text());
        break;
    case FormKind::Submit:
        o.value = tbSubmitValue->text();
        o.extraTag = tbSubmitExtraTag->text();
        break;
    case FormKind::Text:
        o.name = tbTextName->text();
        o.value = tbTextValue->text();
        o.extraTag = tbTextExtraTag->text();
        o.size = m_textSize->text();
        o.maxLength = m_maxLength->text();
        break;
    case FormKind::Textarea:
        o.name = tbTextAreaName->text();
        o.value = linesOf(tbTextAreaValue);
        o.extraTag = tbTextAreaExtraTag->text();
        o.rows = m_rows->text();
        o.cols = m_cols->text();
        break;
    }
    return o;
}

void frmForm::Place_Click(FormKind kind)
{
    const FormElementOptions o = options(kind);
    const FormFault fault = CheckFormElement(o);
    if (fault.field != FormField::None) {
        refuse(fault.message, MsgStyle::Exclamation, faultField(kind, fault.field));
        return;
    }
    if (frmDoc *document = m_workspace.current()) {
        const FormMarkup markup = FormElementMarkup(o);
        if (m_found && kind == FormKind::Select) {
            document->Text->setSelStart(m_found->from);
            document->Text->setSelLength(m_found->length);
            m_found.reset();
        }
        PlacePieces(m_workspace, *document, markup.pieces);
        if (markup.caretBack)
            document->Text->setSelStart(document->Text->SelStart() - markup.caretBack);
    }
    ClearTab_Click(kind);
}

void frmForm::ClearTab_Click(FormKind kind)
{
    const auto empty = [](std::initializer_list<QLineEdit *> boxes) {
        for (QLineEdit *box : boxes)
            box->clear();
    };
    switch (kind) {
    case FormKind::Form:
        empty({tbAction, tbEncType, tbFormExtraTag}); // the form's name stays for the next form
        opMethod[0]->setChecked(true);
        break;
    case FormKind::Checkbox:
        empty({tbCheckboxName, tbCheckboxValue, tbCheckboxText, tbCheckboxExtraTag});
        ckbCheckboxChecked->setChecked(false);
        break;
    case FormKind::Hidden:
        empty({tbHiddenName, tbHiddenValue, tbHiddenExtraTag});
        break;
    case FormKind::Option:
        empty({tbOptionText, tbOptionExtraTag});
        ckbOptionSelected->setChecked(false);
        break;
    case FormKind::Password:
        empty({tbPasswordName, tbPasswordValue, tbPasswordExtraTag, tbPasswordSize});
        break;
    case FormKind::Radio:
        empty({tbRadioName, tbRadioValue, tbRadioText, tbRadioExtraTag});
        ckbRadioChecked->setChecked(false);
        break;
    case FormKind::Reset:
        empty({tbResetValue, tbResetExtraTag});
        break;
    case FormKind::Select:
        empty({tbSelectName}); // the size stays
        ckbSelectMultiple->setChecked(false);
        Command20_Click();
        m_found.reset(); // a new select goes in at the caret
        break;
    case FormKind::Submit:
        empty({tbSubmitValue, tbSubmitExtraTag});
        break;
    case FormKind::Text:
        empty({tbTextName, tbTextValue, tbTextExtraTag, tbTextSize, tbMaxLength});
        break;
    case FormKind::Textarea:
        empty({tbTextAreaName, tbTextAreaExtraTag, tbTextAreaRows, tbTextAreaCols});
        tbTextAreaValue->clear();
        break;
    }
    firstField(kind)->setFocus();
}

void frmForm::Command18_Click()
{
    const bool selected = ckbSelectOptionSelected->isChecked();
    if (selected) {
        // One option of a list is marked selected, multiple selections or not.
        ckbSelectOptionSelected->setChecked(false);
        ckbSelectOptionSelected->setEnabled(false);
    }
    lstSelectionOptions->addItem(SelectOptionEntry(tbSelectOptionText->text(), selected));
    tbSelectOptionText->clear();
    tbSelectOptionText->setFocus();
}

void frmForm::Command19_Click()
{
    QListWidgetItem *entry = lstSelectionOptions->currentItem();
    if (!entry || !entry->isSelected())
        return;
    if (IsSelectedOptionEntry(entry->text()))
        ckbSelectOptionSelected->setEnabled(true);
    delete entry;
}

void frmForm::Command20_Click()
{
    tbSelectOptionText->clear();
    ckbSelectOptionSelected->setChecked(false);
    ckbSelectOptionSelected->setEnabled(true);
    lstSelectionOptions->clear();
}

void ShowFormWizard(Workspace &workspace, QWidget *parent, FormKind kind)
{
    OpenWizard<frmForm>(workspace, parent, kind);
}

} // namespace pw
