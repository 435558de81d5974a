#pragma once

#include "wizards/table_model.h"
#include "wizards/wizard_conduct.h"

class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QScrollBar;
class QTabWidget;

namespace pw {

// "Table Wizard": a table defined cell by cell on three tabs, written to the model at every change,
// and generated at OK. Each number has a box and a bar kept in step: a write from code raises the
// other's handler at once, unless the value stays the same, so the handlers run nested.
class frmTable : public WizardForm
{
    Q_OBJECT

public:
    frmTable(Workspace &workspace, QWidget *parent);

    TableModel model;

    QTabWidget *TabStrip1 = nullptr;
    QWidget *Picture1[3] = {};
    // Table Definition
    QLineEdit *tbRows = nullptr, *tbCols = nullptr, *tbWidth = nullptr, *tbBorder = nullptr;
    QLineEdit *tbSpacing = nullptr, *tbPadding = nullptr, *tbTableExtra = nullptr, *tbCaption = nullptr;
    QScrollBar *hsRows = nullptr, *hsCols = nullptr, *hsWidth = nullptr, *hsBorder = nullptr;
    QScrollBar *hsSpacing = nullptr, *hsPadding = nullptr;
    QRadioButton *opWidth[2] = {}; // 0 Pixels, 1 Percent
    // Row Definition
    QLineEdit *tbRowRow = nullptr, *tbRowExtra = nullptr;
    QScrollBar *hsRowRow = nullptr;
    QRadioButton *opRowAlign[4] = {};
    QRadioButton *opRowValign[5] = {};
    QPushButton *Command4 = nullptr, *Command6 = nullptr;
    // Element Definition
    QLineEdit *tbElementRow = nullptr, *tbElementCol = nullptr, *tbElementWidth = nullptr;
    QLineEdit *tbElementColspan = nullptr, *tbElementRowspan = nullptr;
    QLineEdit *tbElementText = nullptr, *tbElementExtra = nullptr;
    QScrollBar *hsElementRow = nullptr, *hsElementCol = nullptr, *hsElementWidth = nullptr;
    QScrollBar *hsElementColspan = nullptr, *hsElementRowspan = nullptr;
    QLabel *lbDisplaced = nullptr;
    QRadioButton *opElementWidth[2] = {}; // 0 Percent, 1 Pixel
    QRadioButton *opElementAlign[4] = {};
    QRadioButton *opElementValign[5] = {};
    QRadioButton *opElementType[2] = {}; // 0 TH, 1 TD
    QGroupBox *Frame3 = nullptr, *Frame4 = nullptr, *Frame5 = nullptr;
    QLabel *Label13 = nullptr, *Label14 = nullptr, *Label15 = nullptr, *Label16 = nullptr, *Label17 = nullptr;
    QCheckBox *ckDataPlace = nullptr;
    QPushButton *Command5 = nullptr;
    // Bottom
    QPushButton *Command1 = nullptr, *Command2 = nullptr, *Command3 = nullptr;

    void Form_Load() override;

    int currentRow() const;
    int currentElementRow() const;
    int currentElementCol() const;

    void ShowRowValues(int index);
    void ShowElementValues(int rindex, int cindex);
    void UpdateButton();

    void tbRows_Change();
    void tbCols_Change();
    void tbRowRow_Change();
    void hsRowRow_Change(int value);
    void tbElementRow_Change();
    void tbElementCol_Change();
    void hsElementRow_Change(int value);
    void hsElementCol_Change(int value);
    void tbElementWidth_Change();
    void tbElementSpan_Change(TableModel::Span direction);
    void hsElementSpan_Change(TableModel::Span direction, int value);

    void Command1_Click();
    void Command3_Click();
    void Command4_Click();
    void Command5_Click();
    void Command6_Click();

private:
    void buildTablePage();
    void buildRowPage();
    void buildElementPage();
    void connectTableValue(QLineEdit *box, QScrollBar *bar, qint16 TableSettings::*field);
    void elementChanged(const std::function<void(ElementSpec &)> &store);
    void rowChanged(const std::function<void(RowSpec &)> &store);
    void shapeChanged();
    void chooseElement(QLineEdit *box, QScrollBar *bar, TableModel::Span direction);

    int m_showing = 0; // >0 while a record is put on show: the handlers store nothing
};

// mnuTableDesign and imgTable.
void ShowTableWizard(Workspace &workspace, QWidget *parent);

} // namespace pw
