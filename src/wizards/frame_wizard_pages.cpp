#include "wizards/frame_wizard.h"

#include "wizards/virtual_window.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QVBoxLayout>

namespace pw
{

namespace
{

template <typename W> W *named(W *widget, const QString &name)
{
    widget->setObjectName(name);
    return widget;
}

QLineEdit *box(QWidget *parent, const char *name, int length)
{
    auto *edit = named(new QLineEdit(parent), QLatin1String(name));
    edit->setMaxLength(length);
    return edit;
}

QPushButton *browseButton(QWidget *parent, const QString &name)
{
    auto *button = named(new QPushButton(QStringLiteral("\u00B7\u00B7\u00B7"), parent), name);
    button->setFixedWidth(button->fontMetrics().horizontalAdvance(QStringLiteral("\u00B7\u00B7\u00B7")) + 24);
    return button;
}

QWidget *withButton(QLineEdit *edit, QPushButton *button)
{
    auto *row = new QWidget(edit->parentWidget());
    auto *layout = new QHBoxLayout(row);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(edit);
    layout->addWidget(button);
    return row;
}

} // namespace

void frmFrames::buildDesignPage()
{
    QWidget *page = Picture1[0];
    pbVirtualWindow = new VirtualWindow(model, page);
    auto *layout = new QVBoxLayout(page);
    layout->addWidget(pbVirtualWindow, 0, Qt::AlignCenter);

    mnuRightClick = named(new QMenu(this), QStringLiteral("mnuRightClick"));
    mnuSplitV = mnuRightClick->addAction(QStringLiteral("&Vertical split"));
    mnuSplitV->setObjectName(QStringLiteral("mnuSplitV"));
    mnuSplitH = mnuRightClick->addAction(QStringLiteral("&Horizontal split"));
    mnuSplitH->setObjectName(QStringLiteral("mnuSplitH"));
    mnuRightClick->addSeparator();
    mnuEdit = mnuRightClick->addAction(QStringLiteral("&Edit"));
    mnuEdit->setObjectName(QStringLiteral("mnuEdit"));
    mnuDelete = mnuRightClick->addAction(QStringLiteral("&Delete"));
    mnuDelete->setObjectName(QStringLiteral("mnuDelete"));
}

void frmFrames::buildEditPage()
{
    QWidget *page = Picture1[1];
    tbFrameName = box(page, "tbFrameName", 30);
    tbSource = box(page, "tbSource", 256);
    Command4 = browseButton(page, QStringLiteral("Command4"));
    tbMarginWidth = box(page, "tbMarginWidth", 3);
    tbMarginHeight = box(page, "tbMarginHeight", 3);
    tbExtraTag = box(page, "tbExtraTag", 256);
    auto *scrolling = named(new QGroupBox(QStringLiteral("Scrolling"), page), QStringLiteral("Frame2"));
    auto *scrollingRow = new QHBoxLayout(scrolling);
    static const char *const scrollCaptions[] = {"Auto", "Yes", "No"};
    for (int i = 0; i < 3; ++i) {
        opScrolling[i] = named(new QRadioButton(QLatin1String(scrollCaptions[i]), scrolling),
                               QStringLiteral("opScrolling(%1)").arg(i));
        scrollingRow->addWidget(opScrolling[i]);
    }
    opScrolling[0]->setChecked(true);
    ckNoResize = named(new QCheckBox(QStringLiteral("No Resize"), page), QStringLiteral("ckNoResize"));
    Command3 = named(new QPushButton(QStringLiteral("&Update Frame"), page), QStringLiteral("Command3"));
    Command5 = named(new QPushButton(QStringLiteral("&Clear Values"), page), QStringLiteral("Command5"));
    lbSourceCheck = named(new QLabel(page), QStringLiteral("lbSourceCheck"));
    lbSourceCheck->setStyleSheet(QStringLiteral("color: #a00000"));

    auto *margins = new QWidget(page);
    auto *marginRow = new QHBoxLayout(margins);
    marginRow->setContentsMargins(0, 0, 0, 0);
    marginRow->addWidget(tbMarginWidth);
    marginRow->addWidget(new QLabel(QStringLiteral("Height:"), margins));
    marginRow->addWidget(tbMarginHeight);
    marginRow->addStretch();
    const int marginWidth = tbMarginWidth->fontMetrics().horizontalAdvance(QStringLiteral("0000")) + 12;
    tbMarginWidth->setFixedWidth(marginWidth);
    tbMarginHeight->setFixedWidth(marginWidth);

    auto *form = new QFormLayout;
    form->addRow(QStringLiteral("Name:"), tbFrameName);
    form->addRow(QStringLiteral("Source:"), withButton(tbSource, Command4));
    form->addRow(QString(), lbSourceCheck);
    form->addRow(QStringLiteral("Margin Width:"), margins);
    form->addRow(scrolling);
    form->addRow(ckNoResize);
    form->addRow(QStringLiteral("Extra Tag:"), tbExtraTag);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(Command3);
    buttons->addWidget(Command5);
    auto *layout = new QVBoxLayout(page);
    layout->addLayout(form);
    layout->addStretch();
    layout->addLayout(buttons);
}

void frmFrames::buildOptionsPage()
{
    QWidget *page = Picture1[2];
    ckPercentage = named(new QCheckBox(QStringLiteral("All Frames in percentages"), page),
                         QStringLiteral("ckPercentage"));
    Frame1 = named(new QGroupBox(QStringLiteral("Design for"), page), QStringLiteral("Frame1"));
    auto *sizes = new QHBoxLayout(Frame1);
    static const char *const sizeCaptions[] = {"640 x 480", "800 x 600", "1024 x 768"};
    for (int i = 0; i < 3; ++i) {
        opScreenSize[i] = named(new QRadioButton(QLatin1String(sizeCaptions[i]), Frame1),
                                QStringLiteral("opScreenSize(%1)").arg(i));
        sizes->addWidget(opScreenSize[i]);
    }
    ckNewDocument =
        named(new QCheckBox(QStringLiteral("Create in New Document"), page), QStringLiteral("ckNewDocument"));
    tbTitle = named(new QLineEdit(page), QStringLiteral("tbTitle"));
    ckSaveFile = named(new QCheckBox(QStringLiteral("Save File As"), page), QStringLiteral("ckSaveFile"));
    tbFileName = named(new QLineEdit(page), QStringLiteral("tbFileName"));
    Command2[1] = browseButton(page, QStringLiteral("Command2(1)"));
    ckBaseURL = named(new QCheckBox(QStringLiteral("Use base reference on frame source paths"), page),
                      QStringLiteral("ckBaseURL"));
    ckNoFrameTag =
        named(new QCheckBox(QStringLiteral("Include NOFRAME tag"), page), QStringLiteral("ckNoFrameTag"));
    ckNoFramesMerge = named(new QCheckBox(QStringLiteral("Merge NOFRAMES section from"), page),
                            QStringLiteral("ckNoFramesMerge"));
    tbNoFramesFile = named(new QLineEdit(page), QStringLiteral("tbNoFramesFile"));
    Command2[0] = browseButton(page, QStringLiteral("Command2(0)"));

    ckInPlace = named(new QCheckBox(QStringLiteral("Replace the frame set at the caret"), page),
                      QStringLiteral("ckInPlace"));
    ckInPlace->hide();

    auto *grid = new QGridLayout;
    int row = 0;
    grid->addWidget(ckInPlace, row++, 0, 1, 2);
    grid->addWidget(ckPercentage, row++, 0, 1, 2);
    grid->addWidget(Frame1, row++, 0, 1, 2);
    grid->addWidget(ckNewDocument, row, 0);
    grid->addWidget(tbTitle, row++, 1);
    grid->addWidget(ckSaveFile, row, 0);
    grid->addWidget(withButton(tbFileName, Command2[1]), row++, 1);
    grid->addWidget(ckBaseURL, row++, 1);
    grid->addWidget(ckNoFrameTag, row++, 0, 1, 2);
    grid->addWidget(ckNoFramesMerge, row, 0);
    grid->addWidget(withButton(tbNoFramesFile, Command2[0]), row++, 1);
    auto *layout = new QVBoxLayout(page);
    layout->addLayout(grid);
    layout->addStretch();

    // The starting state, set before any handler listens.
    ckPercentage->setChecked(true);
    opScreenSize[0]->setChecked(true);
    Frame1->setEnabled(false);
    ckNewDocument->setChecked(true);
    tbTitle->setText(QStringLiteral("Title"));
    ckSaveFile->setChecked(true);
    ckBaseURL->setChecked(true);
    ckNoFramesMerge->setEnabled(false);
    tbNoFramesFile->setEnabled(false);
    Command2[0]->setEnabled(false);
}

} // namespace pw
