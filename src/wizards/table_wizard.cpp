#include "wizards/table_wizard.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "wizards/table_markup.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QVBoxLayout>

#include <cmath>

namespace pw {

namespace {

constexpr int BarMax = 30000;

// A write from code raises the box's handler only when the text changes.
void write(QLineEdit *box, const QString &text)
{
    if (box->text() != text)
        box->setText(text);
}

// A box's value where it is numeric; 0 otherwise, as an empty box reads.
int boxValue(const QLineEdit *box)
{
    return BoxNumber(box->text(), -BarMax, BarMax).value_or(0);
}

// A number outside the bar's range stands in the box as the nearest allowed one; the handler then
// runs again. A fraction is only rounded, so that typing one isn't interrupted.
bool corrected(QLineEdit *box, int value)
{
    if (std::round(box->text().trimmed().toDouble()) == value)
        return false;
    box->setText(QString::number(value));
    return true;
}

class WaitCursor
{
public:
    explicit WaitCursor(StatusPresenter &status) : m_status(status) { m_status.ShowWaitCursor(); }
    ~WaitCursor() { m_status.HideWaitCursor(); }

private:
    StatusPresenter &m_status;
};

} // namespace

frmTable::frmTable(Workspace &workspace, QWidget *parent) : WizardForm(workspace, parent, QStringLiteral("Table Wizard"))
{
    TabStrip1 = new QTabWidget(this);
    TabStrip1->setObjectName(QStringLiteral("TabStrip1"));
    TabStrip1->setUsesScrollButtons(false); // all three tabs in sight
    static const char *const captions[] = {"Table Definition", "Row Definition", "Element Definition "};
    static const char *const tips[] = {"Define the <TABLE> tag", "Define the <TR> tag", "Define Individual Table elements"};
    for (int i = 0; i < 3; ++i) {
        Picture1[i] = new QWidget(TabStrip1);
        Picture1[i]->setObjectName(QStringLiteral("Picture1(%1)").arg(i));
        TabStrip1->addTab(Picture1[i], QLatin1String(captions[i]));
        TabStrip1->setTabToolTip(i, QLatin1String(tips[i]));
    }
    buildTablePage();
    buildRowPage();
    buildElementPage();

    Command1 = new QPushButton(QStringLiteral("&OK"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setDefault(true);
    Command2 = new QPushButton(QStringLiteral("&Cancel"), this);
    Command2->setObjectName(QStringLiteral("Command2"));
    Command3 = new QPushButton(QStringLiteral("&New"), this);
    Command3->setObjectName(QStringLiteral("Command3"));
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(Command1, QDialogButtonBox::AcceptRole);
    buttons->addButton(Command2, QDialogButtonBox::RejectRole);
    buttons->addButton(Command3, QDialogButtonBox::ResetRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(TabStrip1);
    layout->addWidget(buttons);

    // The starting texts, before any handler listens.
    for (QLineEdit *box : {tbRows, tbCols})
        box->setText(QStringLiteral("1"));
    for (QScrollBar *bar : {hsRows, hsCols, hsRowRow, hsElementRow, hsElementCol})
        bar->setValue(1);
    for (QLineEdit *box : {tbRowRow, tbElementRow, tbElementCol})
        box->setText(QStringLiteral("0"));

    // Table values: a bar writes its box unless the box is being typed in.
    connectTableValue(tbWidth, hsWidth, &TableSettings::Width);
    connectTableValue(tbBorder, hsBorder, &TableSettings::Border);
    connectTableValue(tbSpacing, hsSpacing, &TableSettings::Spacing);
    connectTableValue(tbPadding, hsPadding, &TableSettings::Padding);
    connect(opWidth[0], &QRadioButton::toggled, this, [this](bool on) { if (on) model.settings.WidthIsPixels = True; });
    connect(opWidth[1], &QRadioButton::toggled, this, [this](bool on) { if (on) model.settings.WidthIsPixels = False; });
    connect(tbTableExtra, &QLineEdit::textChanged, this, [this](const QString &text) { model.settings.Extra = text; });

    // Shape
    connect(tbRows, &QLineEdit::textChanged, this, &frmTable::tbRows_Change);
    connect(tbCols, &QLineEdit::textChanged, this, &frmTable::tbCols_Change);
    connect(hsRows, &QScrollBar::valueChanged, this, [this](int value) { write(tbRows, QString::number(value)); });
    connect(hsCols, &QScrollBar::valueChanged, this, [this](int value) { write(tbCols, QString::number(value)); });

    // Rows
    connect(tbRowRow, &QLineEdit::textChanged, this, &frmTable::tbRowRow_Change);
    connect(hsRowRow, &QScrollBar::valueChanged, this, &frmTable::hsRowRow_Change);
    connect(tbRowExtra, &QLineEdit::textChanged, this, [this](const QString &text) { rowChanged([&](RowSpec &r) { r.Extra = text; }); });
    for (int i = 0; i < 4; ++i)
        connect(opRowAlign[i], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on)
                rowChanged([i](RowSpec &r) { r.Align = qint16(i); });
        });
    for (int i = 0; i < 5; ++i)
        connect(opRowValign[i], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on)
                rowChanged([i](RowSpec &r) { r.Valign = qint16(i); });
        });
    connect(Command4, &QPushButton::clicked, this, &frmTable::Command4_Click);
    connect(Command6, &QPushButton::clicked, this, &frmTable::Command6_Click);

    // Elements
    connect(tbElementRow, &QLineEdit::textChanged, this, &frmTable::tbElementRow_Change);
    connect(tbElementCol, &QLineEdit::textChanged, this, &frmTable::tbElementCol_Change);
    connect(hsElementRow, &QScrollBar::valueChanged, this, &frmTable::hsElementRow_Change);
    connect(hsElementCol, &QScrollBar::valueChanged, this, &frmTable::hsElementCol_Change);
    connect(tbElementWidth, &QLineEdit::textChanged, this, &frmTable::tbElementWidth_Change);
    connect(hsElementWidth, &QScrollBar::valueChanged, this, [this](int value) { write(tbElementWidth, QString::number(value)); });
    connect(tbElementColspan, &QLineEdit::textChanged, this, [this] { tbElementSpan_Change(TableModel::Span::Columns); });
    connect(tbElementRowspan, &QLineEdit::textChanged, this, [this] { tbElementSpan_Change(TableModel::Span::Rows); });
    connect(hsElementColspan, &QScrollBar::valueChanged, this, [this](int v) { hsElementSpan_Change(TableModel::Span::Columns, v); });
    connect(hsElementRowspan, &QScrollBar::valueChanged, this, [this](int v) { hsElementSpan_Change(TableModel::Span::Rows, v); });
    connect(tbElementText, &QLineEdit::textChanged, this, [this](const QString &text) { elementChanged([&](ElementSpec &e) { e.Text = text; }); });
    connect(tbElementExtra, &QLineEdit::textChanged, this, [this](const QString &text) { elementChanged([&](ElementSpec &e) { e.Extra = text; }); });
    for (int i = 0; i < 2; ++i) {
        connect(opElementWidth[i], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on)
                elementChanged([i](ElementSpec &e) { e.WidthIsPixels = i == 1 ? True : False; });
        });
        connect(opElementType[i], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on)
                elementChanged([i](ElementSpec &e) { e.IsHeader = i == 0 ? True : False; });
        });
    }
    for (int i = 0; i < 4; ++i)
        connect(opElementAlign[i], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on)
                elementChanged([i](ElementSpec &e) { e.Align = qint16(i); });
        });
    for (int i = 0; i < 5; ++i)
        connect(opElementValign[i], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on)
                elementChanged([i](ElementSpec &e) { e.Valign = qint16(i); });
        });
    connect(Command5, &QPushButton::clicked, this, &frmTable::Command5_Click);

    connect(Command1, &QPushButton::clicked, this, &frmTable::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::reject);
    connect(Command3, &QPushButton::clicked, this, &frmTable::Command3_Click);
}

void frmTable::Form_Load()
{
    TabStrip1->setCurrentIndex(0);
    model.reset();
    write(tbElementRow, QStringLiteral("1"));
    write(tbElementCol, QStringLiteral("1"));
    write(tbRowRow, QStringLiteral("1"));
    UpdateButton();
    tbRows->setFocus();
    tbRows->selectAll();
}

int frmTable::currentRow() const
{
    return hsRowRow->value();
}

int frmTable::currentElementRow() const
{
    return hsElementRow->value();
}

int frmTable::currentElementCol() const
{
    return hsElementCol->value();
}

void frmTable::connectTableValue(QLineEdit *box, QScrollBar *bar, qint16 TableSettings::*field)
{
    connect(box, &QLineEdit::textChanged, this, [this, box, bar, field](const QString &text) {
        const std::optional<int> value = BoxNumber(text, 0, BarMax);
        if (value && corrected(box, *value))
            return;
        model.settings.*field = value ? qint16(*value) : qint16(-1);
        bar->setValue(value.value_or(0));
        if (!value)
            write(box, QString());
    });
    connect(bar, &QScrollBar::valueChanged, this, [this, box](int value) {
        if (focusWidget() != box)
            write(box, QString::number(value));
    });
}

void frmTable::rowChanged(const std::function<void(RowSpec &)> &store)
{
    if (m_showing || currentRow() < 1 || currentRow() > model.rows())
        return;
    RowSpec &row = model.row(currentRow());
    store(row);
    row.Edited = True;
}

void frmTable::elementChanged(const std::function<void(ElementSpec &)> &store)
{
    const int r = currentElementRow();
    const int c = currentElementCol();
    if (m_showing || r < 1 || r > model.rows() || c < 1 || c > model.columns())
        return;
    ElementSpec &element = model.element(r, c);
    store(element);
    element.Edited = True;
}

// --- Shape -------------------------------------------------------------------------------------

void frmTable::tbRows_Change()
{
    const std::optional<int> value = BoxNumber(tbRows->text(), 1, qMin(BarMax, TableModel::MaxElements / model.columns()));
    if (!value) {
        write(tbRows, QStringLiteral("1"));
    } else if (!corrected(tbRows, *value)) {
        hsRows->setValue(*value);
        model.setRows(*value);
        shapeChanged();
    }
    UpdateButton();
}

void frmTable::tbCols_Change()
{
    const std::optional<int> value = BoxNumber(tbCols->text(), 1, qMin(BarMax, TableModel::MaxElements / model.rows()));
    if (!value) {
        write(tbCols, QStringLiteral("1"));
        return;
    }
    if (corrected(tbCols, *value))
        return;
    hsCols->setValue(*value);
    model.setColumns(*value);
    shapeChanged();
}

// A current row or element left outside the table moves to the last one; the spans' bars reach to
// the table's edge; the element on show is shown again, since contents move with the columns.
void frmTable::shapeChanged()
{
    if (currentRow() > model.rows())
        hsRowRow->setValue(model.rows());
    if (currentElementRow() > model.rows())
        hsElementRow->setValue(model.rows());
    if (currentElementCol() > model.columns())
        hsElementCol->setValue(model.columns());
    ++m_showing;
    hsElementColspan->setMaximum(model.columns() - currentElementCol() + 1);
    hsElementRowspan->setMaximum(model.rows() - currentElementRow() + 1);
    --m_showing;
    ShowElementValues(currentElementRow(), currentElementCol());
}

void frmTable::UpdateButton()
{
    const bool several = boxValue(tbRows) > 1;
    if (several)
        Command6->setText(QStringLiteral("Set all elements in row 2 - ") + tbRows->text() + QStringLiteral(" to row 1 values"));
    Command6->setEnabled(several);
    Command6->setVisible(several);
}

// --- Rows --------------------------------------------------------------------------------------

void frmTable::hsRowRow_Change(int value)
{
    if (value >= 1 && value <= model.rows()) {
        write(tbRowRow, QString::number(value));
        ShowRowValues(value);
    } else {
        hsRowRow->setValue(boxValue(tbRowRow));
    }
}

void frmTable::tbRowRow_Change()
{
    const std::optional<int> value = BoxNumber(tbRowRow->text(), 0, BarMax);
    if (value && *value >= 1 && *value <= model.rows())
        hsRowRow->setValue(*value);
    else
        write(tbRowRow, QStringLiteral("1"));
}

void frmTable::ShowRowValues(int index)
{
    if (index < 1 || index > model.rows())
        return;
    const RowSpec &row = model.row(index);
    ++m_showing;
    write(tbRowExtra, row.Extra);
    opRowAlign[qBound(0, int(row.Align), 3)]->setChecked(true);
    opRowValign[qBound(0, int(row.Valign), 4)]->setChecked(true);
    --m_showing;
}

// --- Elements ----------------------------------------------------------------------------------

void frmTable::hsElementRow_Change(int value)
{
    if (value >= 1 && value <= model.rows()) {
        write(tbElementRow, QString::number(value));
        ShowElementValues(currentElementRow(), currentElementCol());
    } else {
        hsElementRow->setValue(boxValue(tbElementRow));
    }
}

void frmTable::hsElementCol_Change(int value)
{
    if (value >= 1 && value <= model.columns()) {
        write(tbElementCol, QString::number(value));
        ShowElementValues(currentElementRow(), currentElementCol());
    } else {
        hsElementCol->setValue(boxValue(tbElementCol));
    }
}

void frmTable::tbElementRow_Change()
{
    chooseElement(tbElementRow, hsElementRow, TableModel::Span::Rows);
}

void frmTable::tbElementCol_Change()
{
    chooseElement(tbElementCol, hsElementCol, TableModel::Span::Columns);
}

// Moving to another element changes no record: the span box of that direction is emptied of what
// was on show, the span's bar reaches to the table's edge, and the element's own values are shown.
void frmTable::chooseElement(QLineEdit *box, QScrollBar *bar, TableModel::Span direction)
{
    const bool rows = direction == TableModel::Span::Rows;
    const int last = rows ? model.rows() : model.columns();
    const std::optional<int> value = BoxNumber(box->text(), 0, BarMax);
    if (!value || *value < 1 || *value > last) {
        write(box, QStringLiteral("1"));
        return;
    }
    ++m_showing;
    write(rows ? tbElementRowspan : tbElementColspan, QString());
    (rows ? hsElementRowspan : hsElementColspan)->setMaximum(last - *value + 1);
    --m_showing;
    if (bar->value() != *value)
        bar->setValue(*value);
    else
        ShowElementValues(currentElementRow(), currentElementCol());
}

void frmTable::ShowElementValues(int rindex, int cindex)
{
    if (rindex < 1 || rindex > model.rows() || cindex < 1 || cindex > model.columns())
        return;
    const ElementSpec &e = model.element(rindex, cindex);
    const bool shown = !e.Displaced;
    QWidget *const controls[] = {tbElementWidth, hsElementWidth, tbElementColspan, hsElementColspan,
                                 tbElementRowspan, hsElementRowspan, tbElementText, tbElementExtra,
                                 opElementWidth[0], opElementWidth[1], Frame3, Frame4, Frame5, Command5,
                                 Label13, Label14, Label15, Label16, Label17};
    for (QWidget *control : controls)
        control->setEnabled(shown);
    // A displaced element keeps the old values on show.
    lbDisplaced->setText(shown ? QString() : QStringLiteral("Displaced"));
    if (!shown)
        return;

    ++m_showing;
    if (e.Width != -1) {
        hsElementWidth->setValue(e.Width);
        write(tbElementWidth, QString::number(e.Width));
    } else {
        write(tbElementWidth, QString());
    }
    hsElementColspan->setValue(e.Colspan != -1 ? e.Colspan : 0);
    write(tbElementColspan, e.Colspan != -1 ? QString::number(e.Colspan) : QString());
    hsElementRowspan->setValue(e.Rowspan != -1 ? e.Rowspan : 0);
    write(tbElementRowspan, e.Rowspan != -1 ? QString::number(e.Rowspan) : QString());
    write(tbElementText, e.Text);
    write(tbElementExtra, e.Extra);
    opElementAlign[qBound(0, int(e.Align), 3)]->setChecked(true);
    opElementValign[qBound(0, int(e.Valign), 4)]->setChecked(true);
    opElementWidth[e.WidthIsPixels ? 1 : 0]->setChecked(true);
    opElementType[e.IsHeader ? 0 : 1]->setChecked(true);
    --m_showing;
}

void frmTable::tbElementWidth_Change()
{
    const std::optional<int> value = BoxNumber(tbElementWidth->text(), 0, BarMax);
    if (value && corrected(tbElementWidth, *value))
        return;
    elementChanged([&](ElementSpec &e) { e.Width = value ? qint16(*value) : qint16(-1); });
    hsElementWidth->setValue(value.value_or(0));
    if (!value)
        write(tbElementWidth, QString());
}

void frmTable::tbElementSpan_Change(TableModel::Span direction)
{
    const int r = currentElementRow();
    const int c = currentElementCol();
    if (m_showing || r < 1 || r > model.rows() || c < 1 || c > model.columns())
        return;
    const bool rows = direction == TableModel::Span::Rows;
    QLineEdit *box = rows ? tbElementRowspan : tbElementColspan;
    QScrollBar *bar = rows ? hsElementRowspan : hsElementColspan;
    const std::optional<TableModel::SpanShown> shown = model.enterSpan(r, c, direction, box->text(), bar->maximum());
    if (!shown)
        return;
    bar->setValue(shown->bar);
    write(box, shown->box);
}

void frmTable::hsElementSpan_Change(TableModel::Span direction, int value)
{
    QLineEdit *box = direction == TableModel::Span::Rows ? tbElementRowspan : tbElementColspan;
    write(box, value == 0 ? QString() : QString::number(value));
}

// --- Buttons -----------------------------------------------------------------------------------

void frmTable::Command4_Click()
{
    WaitCursor wait(m_workspace.status);
    if (currentRow() >= 1 && currentRow() <= model.rows())
        model.copyRowDown(currentRow());
}

void frmTable::Command5_Click()
{
    const int r = currentElementRow();
    const int c = currentElementCol();
    if (r >= 1 && r <= model.rows() && c >= 1 && c <= model.columns())
        model.copyElementOn(r, c);
}

void frmTable::Command6_Click()
{
    model.copyFirstRowDown();
}

void frmTable::Command3_Click()
{
    ++m_showing;
    for (QScrollBar *bar : {hsRows, hsCols, hsRowRow, hsElementRow, hsElementCol})
        bar->setValue(1);
    for (QLineEdit *box : {tbWidth, tbBorder, tbSpacing, tbPadding, tbTableExtra, tbRowExtra, tbElementWidth,
                           tbElementColspan, tbElementRowspan, tbElementText, tbElementExtra})
        write(box, QString());
    for (QRadioButton *option : {opRowAlign[0], opRowValign[0], opElementWidth[0], opElementAlign[0],
                                 opElementValign[0], opElementType[1], opWidth[1]})
        option->setChecked(true);
    --m_showing;
    // The records go last, so that nothing written above stays in them; percent, as opWidth shows.
    model.reset();
    shapeChanged();
    UpdateButton();
}

void frmTable::Command1_Click()
{
    frmDoc *document = m_workspace.current();
    if (!document || !MayReplaceSelection(m_workspace))
        return;
    {
        LongGeneration generation(m_workspace, *this, *document, QStringLiteral("Generating table..."));
        PieceBatch pieces(*document->Text);
        GenerateTable(model, {tbCaption->text(), ckDataPlace->isChecked()},
                      [&pieces](const MarkupPiece &piece) { pieces.add(piece); },
                      [&generation](int done, int total) { generation.step(done, total); });
        pieces.write();
    }
    unload();
}

void ShowTableWizard(Workspace &workspace, QWidget *parent)
{
    OpenWizard<frmTable>(workspace, parent);
}

} // namespace pw
