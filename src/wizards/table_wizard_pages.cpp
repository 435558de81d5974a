#include "wizards/table_wizard.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>
#include <QVBoxLayout>

// The three pages of frmTable and their controls; what the controls do is in table_wizard.cpp.

namespace pw {

namespace {

constexpr int BarMax = 30000;
constexpr int FixedTextLength = 200;

template<typename W>
W *named(W *widget, const QString &name)
{
    widget->setObjectName(name);
    return widget;
}

QLineEdit *numberBox(QWidget *page, const QString &name)
{
    auto *box = named(new QLineEdit(page), name);
    box->setMaximumWidth(80);
    return box;
}

QScrollBar *bar(QWidget *page, const QString &name, int min, int max)
{
    auto *bar = named(new QScrollBar(Qt::Horizontal, page), name);
    bar->setRange(min, max);
    bar->setPageStep(1);
    bar->setInvertedControls(false); // Right makes a number larger
    bar->setMinimumWidth(140);
    bar->setFocusPolicy(Qt::StrongFocus);
    return bar;
}

QLineEdit *textBox(QWidget *page, const QString &name)
{
    auto *box = named(new QLineEdit(page), name);
    box->setMaxLength(FixedTextLength);
    return box;
}

// One row of a grid: label, box, bar.
void addPair(QGridLayout *grid, int row, QLabel *label, QLineEdit *box, QScrollBar *scroll)
{
    label->setBuddy(box);
    grid->addWidget(label, row, 0);
    grid->addWidget(box, row, 1);
    grid->addWidget(scroll, row, 2);
}

// Option buttons in a framed group, one under the other.
QGroupBox *options(QWidget *page, const QString &frameName, const QString &caption, QRadioButton **buttons,
                   const QString &name, const QStringList &captions)
{
    auto *frame = named(new QGroupBox(caption, page), frameName);
    auto *layout = new QVBoxLayout(frame);
    for (int i = 0; i < captions.size(); ++i) {
        buttons[i] = named(new QRadioButton(captions[i], frame), QStringLiteral("%1(%2)").arg(name).arg(i));
        layout->addWidget(buttons[i]);
    }
    layout->addStretch();
    buttons[0]->setChecked(true);
    return frame;
}

} // namespace

void frmTable::buildTablePage()
{
    QWidget *page = Picture1[0];
    auto *grid = new QGridLayout(page);
    tbRows = numberBox(page, QStringLiteral("tbRows"));
    hsRows = bar(page, QStringLiteral("hsRows"), 1, BarMax);
    addPair(grid, 0, new QLabel(QStringLiteral("Rows:"), page), tbRows, hsRows);
    tbCols = numberBox(page, QStringLiteral("tbCols"));
    hsCols = bar(page, QStringLiteral("hsCols"), 1, BarMax);
    addPair(grid, 1, new QLabel(QStringLiteral("Cols:"), page), tbCols, hsCols);
    tbWidth = numberBox(page, QStringLiteral("tbWidth"));
    hsWidth = bar(page, QStringLiteral("hsWidth"), 0, BarMax);
    addPair(grid, 2, new QLabel(QStringLiteral("Width:"), page), tbWidth, hsWidth);
    opWidth[1] = named(new QRadioButton(QStringLiteral("Percent"), page), QStringLiteral("opWidth(1)"));
    opWidth[0] = named(new QRadioButton(QStringLiteral("Pixels"), page), QStringLiteral("opWidth(0)"));
    opWidth[1]->setChecked(true);
    auto *units = new QHBoxLayout;
    units->addWidget(opWidth[1]);
    units->addWidget(opWidth[0]);
    units->addStretch();
    grid->addLayout(units, 3, 1, 1, 2);
    tbBorder = numberBox(page, QStringLiteral("tbBorder"));
    hsBorder = bar(page, QStringLiteral("hsBorder"), 0, BarMax);
    addPair(grid, 4, new QLabel(QStringLiteral("Border:"), page), tbBorder, hsBorder);
    tbSpacing = numberBox(page, QStringLiteral("tbSpacing"));
    hsSpacing = bar(page, QStringLiteral("hsSpacing"), 0, BarMax);
    addPair(grid, 5, new QLabel(QStringLiteral("Cell Spacing:"), page), tbSpacing, hsSpacing);
    tbPadding = numberBox(page, QStringLiteral("tbPadding"));
    hsPadding = bar(page, QStringLiteral("hsPadding"), 0, BarMax);
    addPair(grid, 6, new QLabel(QStringLiteral("Cell Padding:"), page), tbPadding, hsPadding);
    tbTableExtra = textBox(page, QStringLiteral("tbTableExtra"));
    grid->addWidget(new QLabel(QStringLiteral("Extra Sub-tags:"), page), 7, 0);
    grid->addWidget(tbTableExtra, 7, 1, 1, 2);
    tbCaption = textBox(page, QStringLiteral("tbCaption"));
    grid->addWidget(new QLabel(QStringLiteral("Caption:"), page), 8, 0);
    grid->addWidget(tbCaption, 8, 1, 1, 2);
    grid->setRowStretch(9, 1);
    grid->setColumnStretch(2, 1);
}

void frmTable::buildRowPage()
{
    QWidget *page = Picture1[1];
    auto *grid = new QGridLayout(page);
    tbRowRow = numberBox(page, QStringLiteral("tbRowRow"));
    hsRowRow = bar(page, QStringLiteral("hsRowRow"), 0, BarMax);
    addPair(grid, 0, new QLabel(QStringLiteral("Values for Row:"), page), tbRowRow, hsRowRow);
    tbRowExtra = textBox(page, QStringLiteral("tbRowExtra"));
    grid->addWidget(new QLabel(QStringLiteral("Extra Sub-tags:"), page), 1, 0);
    grid->addWidget(tbRowExtra, 1, 1, 1, 2);
    auto *frames = new QHBoxLayout;
    frames->addWidget(options(page, QStringLiteral("Frame1"), QStringLiteral("Align"), opRowAlign,
                              QStringLiteral("opRowAlign"), {"Default", "Left", "Center", "Right"}));
    frames->addWidget(options(page, QStringLiteral("Frame2"), QStringLiteral("VAlign"), opRowValign,
                              QStringLiteral("opRowValign"), {"Default", "Top", "Middle", "Bottom", "Baseline"}));
    grid->addLayout(frames, 2, 0, 1, 3);
    Command4 = named(new QPushButton(QStringLiteral("Set all following rows with these values"), page),
                     QStringLiteral("Command4"));
    grid->addWidget(Command4, 3, 0, 1, 3);
    Command6 = named(new QPushButton(page), QStringLiteral("Command6"));
    grid->addWidget(Command6, 4, 0, 1, 3);
    grid->setRowStretch(5, 1);
    grid->setColumnStretch(2, 1);
}

void frmTable::buildElementPage()
{
    QWidget *page = Picture1[2];
    auto *grid = new QGridLayout(page);
    tbElementRow = numberBox(page, QStringLiteral("tbElementRow"));
    hsElementRow = bar(page, QStringLiteral("hsElementRow"), 0, BarMax);
    addPair(grid, 0, new QLabel(QStringLiteral("Value for Row:"), page), tbElementRow, hsElementRow);
    tbElementCol = numberBox(page, QStringLiteral("tbElementCol"));
    hsElementCol = bar(page, QStringLiteral("hsElementCol"), 0, BarMax);
    addPair(grid, 1, new QLabel(QStringLiteral("Col:"), page), tbElementCol, hsElementCol);
    lbDisplaced = named(new QLabel(page), QStringLiteral("lbDisplaced"));
    QFont strong = lbDisplaced->font();
    strong.setBold(true);
    lbDisplaced->setFont(strong);
    grid->addWidget(lbDisplaced, 0, 3, 2, 1);

    tbElementWidth = numberBox(page, QStringLiteral("tbElementWidth"));
    hsElementWidth = bar(page, QStringLiteral("hsElementWidth"), 0, BarMax);
    Label13 = named(new QLabel(QStringLiteral("Width:"), page), QStringLiteral("Label13"));
    addPair(grid, 2, Label13, tbElementWidth, hsElementWidth);
    opElementWidth[0] = named(new QRadioButton(QStringLiteral("Percent"), page), QStringLiteral("opElementWidth(0)"));
    opElementWidth[1] = named(new QRadioButton(QStringLiteral("Pixel"), page), QStringLiteral("opElementWidth(1)"));
    opElementWidth[0]->setChecked(true);
    auto *units = new QHBoxLayout;
    units->addWidget(opElementWidth[0]);
    units->addWidget(opElementWidth[1]);
    units->addStretch();
    grid->addLayout(units, 3, 1, 1, 2);
    tbElementColspan = numberBox(page, QStringLiteral("tbElementColspan"));
    hsElementColspan = bar(page, QStringLiteral("hsElementColspan"), 0, 1);
    Label14 = named(new QLabel(QStringLiteral("Colspan:"), page), QStringLiteral("Label14"));
    addPair(grid, 4, Label14, tbElementColspan, hsElementColspan);
    tbElementRowspan = numberBox(page, QStringLiteral("tbElementRowspan"));
    hsElementRowspan = bar(page, QStringLiteral("hsElementRowspan"), 0, 1);
    Label15 = named(new QLabel(QStringLiteral("Rowspan:"), page), QStringLiteral("Label15"));
    addPair(grid, 5, Label15, tbElementRowspan, hsElementRowspan);

    auto *frames = new QHBoxLayout;
    Frame3 = options(page, QStringLiteral("Frame3"), QStringLiteral("Align"), opElementAlign,
                     QStringLiteral("opElementAlign"), {"Default", "Left", "Center", "Right"});
    Frame4 = options(page, QStringLiteral("Frame4"), QStringLiteral("VAlign"), opElementValign,
                     QStringLiteral("opElementValign"), {"Default", "Top", "Middle", "Bottom", "Basline"});
    Frame5 = options(page, QStringLiteral("Frame5"), QStringLiteral("Element Type"), opElementType,
                     QStringLiteral("opElementType"), {"<TH...", "<TD..."});
    opElementType[1]->setChecked(true);
    frames->addWidget(Frame3);
    frames->addWidget(Frame4);
    frames->addWidget(Frame5);
    grid->addLayout(frames, 6, 0, 1, 4);

    tbElementText = textBox(page, QStringLiteral("tbElementText"));
    Label16 = named(new QLabel(QStringLiteral("Element Text:"), page), QStringLiteral("Label16"));
    grid->addWidget(Label16, 7, 0);
    grid->addWidget(tbElementText, 7, 1, 1, 3);
    tbElementExtra = textBox(page, QStringLiteral("tbElementExtra"));
    Label17 = named(new QLabel(QStringLiteral("Extra Sub-tag:"), page), QStringLiteral("Label17"));
    grid->addWidget(Label17, 8, 0);
    grid->addWidget(tbElementExtra, 8, 1, 1, 3);
    ckDataPlace = named(new QCheckBox(QStringLiteral("If empty place Data R,C"), page), QStringLiteral("ckDataPlace"));
    grid->addWidget(ckDataPlace, 9, 0, 1, 4);
    Command5 = named(new QPushButton(QStringLiteral("Set all following elements with these values"), page),
                     QStringLiteral("Command5"));
    grid->addWidget(Command5, 10, 0, 1, 4);
    grid->setRowStretch(11, 1);
    grid->setColumnStretch(2, 1);
}

} // namespace pw
