#include "wizards/frame_wizard.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "platform/message_box.h"
#include "wizards/frame_generation.h"
#include "wizards/frame_reading.h"
#include "wizards/frame_source.h"
#include "wizards/virtual_window.h"

#include <QApplication>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFileInfo>
#include <QFocusEvent>
#include <QGroupBox>
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

constexpr int HideReadOnly = 4; // the file dialogs' flag that hides the read-only box
constexpr int PointerArrow = 0;
constexpr int PointerUpDown = 7;
constexpr int PointerLeftRight = 9;

// The room a browser leaves on each screen size, in pixels.
constexpr int ScreenRoom[3][2] = {{629, 306}, {789, 426}, {1010, 594}};

// Names chosen in the dialogs get the long extensions: ".htm" becomes ".html", ".sht" ".shtml".
QString longExtension(QString name)
{
    if (name.endsWith(QLatin1Char('m')))
        name += QLatin1Char('l');
    if (name.endsWith(QLatin1String("sht")))
        name += QLatin1String("ml");
    return name;
}

} // namespace

const QString frmFrames::BrowseFilter = QStringLiteral("HTML (*.html)|*.html|Text (*.txt)|*.txt|All (*.*)|*");

frmFrames::frmFrames(Workspace &workspace, QWidget *parent)
    : WizardForm(workspace, parent, QStringLiteral("Frames Wizard")), model(RunFrameModel(workspace))
{
    TabStrip1 = new QTabWidget(this);
    TabStrip1->setObjectName(QStringLiteral("TabStrip1"));
    TabStrip1->setUsesScrollButtons(false);
    static const char *const captions[] = {"Virtual Window", "Edit Current Frame", "Options"};
    for (int i = 0; i < 3; ++i) {
        Picture1[i] = new QWidget(TabStrip1);
        Picture1[i]->setObjectName(QStringLiteral("Picture1(%1)").arg(i));
        TabStrip1->addTab(Picture1[i], QLatin1String(captions[i]));
    }
    buildDesignPage();
    buildEditPage();
    buildOptionsPage();

    Command6 = new QPushButton(QStringLiteral("&Generate "), this);
    Command6->setObjectName(QStringLiteral("Command6"));
    Command6->setDefault(true);
    Command1 = new QPushButton(QStringLiteral("&Cancel"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(Command6, QDialogButtonBox::AcceptRole);
    buttons->addButton(Command1, QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(TabStrip1);
    layout->addWidget(buttons);
    connectControls();
}

void frmFrames::connectControls()
{
    connect(TabStrip1, &QTabWidget::currentChanged, this, &frmFrames::TabStrip1_Click);
    connect(pbVirtualWindow, &VirtualWindow::mouseMoved, this, &frmFrames::pbVirtualWindow_MouseMove);
    connect(pbVirtualWindow, &VirtualWindow::mousePressed, this, &frmFrames::pbVirtualWindow_MouseDown);
    connect(mnuSplitH, &QAction::triggered, this, &frmFrames::mnuSplitH_Click);
    connect(mnuSplitV, &QAction::triggered, this, &frmFrames::mnuSplitV_Click);
    connect(mnuEdit, &QAction::triggered, this, &frmFrames::mnuEdit_Click);
    connect(mnuDelete, &QAction::triggered, this, &frmFrames::mnuDelete_Click);

    connect(Command3, &QPushButton::clicked, this, &frmFrames::Command3_Click);
    connect(Command4, &QPushButton::clicked, this, &frmFrames::Command4_Click);
    connect(Command5, &QPushButton::clicked, this, &frmFrames::Command5_Click);
    connect(Command2[0], &QPushButton::clicked, this, [this] { Command2_Click(0); });
    connect(Command2[1], &QPushButton::clicked, this, [this] { Command2_Click(1); });
    connect(Command6, &QPushButton::clicked, this, &frmFrames::Command6_Click);
    connect(Command1, &QPushButton::clicked, this, &QDialog::reject);
    connect(tbSource, &QLineEdit::textChanged, this, &frmFrames::tbSource_Change);
    tbMarginWidth->installEventFilter(this);
    tbMarginHeight->installEventFilter(this);

    connect(ckPercentage, &QCheckBox::toggled, this, &frmFrames::ckPercentage_Click);
    connect(ckNewDocument, &QCheckBox::toggled, this, &frmFrames::ckNewDocument_Click);
    connect(ckSaveFile, &QCheckBox::toggled, this, &frmFrames::ckSaveFile_Click);
    connect(ckNoFrameTag, &QCheckBox::toggled, this, &frmFrames::ckNoFrameTag_Click);
    connect(ckNoFramesMerge, &QCheckBox::toggled, this, &frmFrames::ckNoFramesMerge_Click);
    connect(ckInPlace, &QCheckBox::toggled, this, &frmFrames::ckInPlace_Click);
    for (int i = 0; i < 3; ++i) {
        connect(opScreenSize[i], &QRadioButton::toggled, this, [this, i](bool on) {
            if (on)
                opScreenSize_Click(i);
        });
        // The option checked from the start takes its scale at a click too.
        connect(opScreenSize[i], &QRadioButton::clicked, this, [this, i] { opScreenSize_Click(i); });
    }
}

void frmFrames::Form_Load()
{
    TabStrip1->setCurrentIndex(0);
    Picture1[1]->setEnabled(false);
    showDesignStatus();
    model.reset();
    readFromDocument();
    pbVirtualWindow->setPointer(PointerArrow);
    ResizeVirtualWindow();
}

// With the caret in a frame set, the designer starts from it, to be written back in its place.
void frmFrames::readFromDocument()
{
    const frmDoc *document = m_workspace.current();
    if (!document)
        return;
    const std::optional<FrameSetRead> read =
        ReadFrameSetAt(document->Text->Text(), document->Text->SelStart(), model.ScaleX, model.ScaleY);
    if (!read)
        return;
    model.load(read->frames);
    m_read = std::pair{read->start, read->end};
    Picture1[1]->setEnabled(model.anyBeyondFirst());
    ckPercentage->setChecked(read->percent);
    ckInPlace->show();
    ckInPlace->setChecked(true);
}

void frmFrames::showDesignStatus()
{
    m_workspace.status.SetStatusText(
        QStringLiteral("Right click in virtual window to create and size frames."));
}

void frmFrames::done(int result)
{
    m_workspace.status.ClearStatusText();
    WizardForm::done(result);
}

// --- Tabs and drawing ----------------------------------------------------------------------------

void frmFrames::TabStrip1_Click(int tab)
{
    if (tab == 0) {
        ResizeVirtualWindow();
    } else if (tab == 1) {
        LoadEditTab();
        if (Picture1[1]->isEnabled())
            tbFrameName->setFocus();
    }
}

void frmFrames::ResizeVirtualWindow()
{
    pbVirtualWindow->clearHeldLine();
}

void frmFrames::LoadEditTab()
{
    const int c = model.CurrentFrame;
    const FrameSpec shown =
        c >= 1 && c <= model.count() && !model.frame(c).isDeleted() ? model.frame(c) : FrameSpec();
    tbFrameName->setText(TrimTrailing(shown.Name));
    tbSource->setText(TrimTrailing(shown.Source));
    tbMarginWidth->setText(TrimTrailing(shown.MarginWidth));
    tbMarginHeight->setText(TrimTrailing(shown.MarginHeight));
    tbExtraTag->setText(TrimTrailing(shown.Extra));
    opScrolling[qBound(0, int(shown.Scrolling), 2)]->setChecked(true);
    ckNoResize->setChecked(shown.NoResize != 0);
}

void frmFrames::showFrames()
{
    Picture1[1]->setEnabled(model.anyBeyondFirst());
    ResizeVirtualWindow();
}

// --- The virtual window ----------------------------------------------------------------------------

void frmFrames::pbVirtualWindow_MouseMove(Qt::MouseButtons buttons, int x, int y)
{
    const int pointer = pbVirtualWindow->pointer();
    if ((buttons & Qt::LeftButton) && (pointer == PointerUpDown || pointer == PointerLeftRight)) {
        const bool horizontal = pointer == PointerUpDown;
        if (!model.dragStep(horizontal ? LineKind::Horizontal : LineKind::Vertical, horizontal ? y : x))
            pbVirtualWindow->setPointer(PointerArrow);
        model.LastX = qint16(x);
        model.LastY = qint16(y);
        ResizeVirtualWindow();
        return;
    }

    const qint16 old = model.CurrentFrame;
    model.CurrentFrame = qint16(model.FrameHit(x, y));
    if (model.CurrentFrame != old && model.count() > 1)
        pbVirtualWindow->update();
    switch (model.LineHit(x, y)) {
    case 1:
        pbVirtualWindow->setPointer(PointerUpDown);
        pbVirtualWindow->setHeldLine(LineKind::Horizontal, y, model.LineLow, model.LineHigh);
        break;
    case 2:
        pbVirtualWindow->setPointer(PointerLeftRight);
        pbVirtualWindow->setHeldLine(LineKind::Vertical, x, model.LineLow, model.LineHigh);
        break;
    default:
        if (pointer != PointerArrow) {
            ResizeVirtualWindow();
            pbVirtualWindow->setPointer(PointerArrow);
        }
    }
    model.LastX = qint16(x);
    model.LastY = qint16(y);
}

void frmFrames::pbVirtualWindow_MouseDown(Qt::MouseButton button, int, int, QPoint global)
{
    if (button != Qt::RightButton)
        return;
    // Without a frame under the pointer there is nothing to act on.
    const bool onFrame = model.CurrentFrame != 0;
    for (QAction *item : {mnuSplitV, mnuSplitH, mnuEdit, mnuDelete})
        item->setEnabled(onFrame);
    mnuRightClick->popup(global);
}

void frmFrames::mnuSplitH_Click()
{
    if (model.splitH())
        showFrames();
}

void frmFrames::mnuSplitV_Click()
{
    if (model.splitV())
        showFrames();
}

void frmFrames::mnuEdit_Click()
{
    if (TabStrip1->currentIndex() == 1)
        TabStrip1_Click(1);
    else
        TabStrip1->setCurrentIndex(1);
}

void frmFrames::mnuDelete_Click()
{
    if (model.CurrentFrame == 0)
        return;
    switch (model.deleteCurrent()) {
    case FrameModel::DeleteResult::FirstFrame:
        m_workspace.MsgBox(QStringLiteral("Can not delete this frame!"), MsgStyle::Exclamation);
        return;
    case FrameModel::DeleteResult::NoNeighbour:
        m_workspace.MsgBox(QStringLiteral("Can not delete this frame!") + LineEnd +
                               QStringLiteral("No one frame can be merged with it!"),
                           MsgStyle::Exclamation);
        return;
    case FrameModel::DeleteResult::Deleted:
        showFrames();
        return;
    }
}

// --- Edit Current Frame ------------------------------------------------------------------------------

void frmFrames::Command3_Click()
{
    const int c = model.CurrentFrame;
    if (c < 1 || c > model.count() || model.frame(c).isDeleted())
        return;
    FrameSpec &f = model.frame(c);
    f.Name = tbFrameName->text();
    f.Source = tbSource->text();
    f.MarginWidth = tbMarginWidth->text();
    f.MarginHeight = tbMarginHeight->text();
    f.Scrolling = opScrolling[1]->isChecked() ? 1 : opScrolling[2]->isChecked() ? 2 : 0;
    f.NoResize = ckNoResize->isChecked() ? -1 : 0;
    f.Extra = tbExtraTag->text();
}

void frmFrames::Command5_Click()
{
    const int c = model.CurrentFrame;
    if (c >= 1 && c <= model.count() && !model.frame(c).isDeleted())
        model.frame(c).clearValues();
    LoadEditTab();
}

bool frmFrames::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut && (watched == tbMarginWidth || watched == tbMarginHeight)) {
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        // Another window taking the focus (the message itself) is no leaving; Cancel drops all.
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason &&
            QApplication::focusWidget() != Command1)
            margin_LostFocus(static_cast<QLineEdit *>(watched));
    }
    return WizardForm::eventFilter(watched, event);
}

void frmFrames::margin_LostFocus(QLineEdit *box)
{
    if (m_checkingMargin)
        return;
    const QString text = TrimTrailing(box->text());
    if (text.isEmpty() || IsNumeric(text))
        return;
    m_checkingMargin = true;
    refuse(QStringLiteral("MarginWidth and MarginHeight") + LineEnd + QStringLiteral("must be numeric!"),
           MsgStyle::Exclamation, box);
    m_checkingMargin = false;
}

void frmFrames::tbSource_Change()
{
    // Seen from where the frame set will stand: its file, else the current document's.
    const frmDoc *current = m_workspace.current();
    QString folder;
    if (!TrimTrailing(tbFileName->text()).isEmpty())
        folder = QFileInfo(FrameFilePath(tbFileName->text(), current)).absolutePath();
    else if (current && !current->isUntitled())
        folder = QFileInfo(current->state().path()).absolutePath();
    const SourceCheck check = CheckFrameSource(tbSource->text(), folder);
    switch (check.kind) {
    case SourceCheck::Missing:
        lbSourceCheck->setText(QStringLiteral("No file at this source."));
        break;
    case SourceCheck::CaseDiffers:
        lbSourceCheck->setText(QStringLiteral("The file is %1: another case.").arg(check.actual));
        break;
    default:
        lbSourceCheck->clear();
    }
}

// --- Browse buttons -----------------------------------------------------------------------------------

QString frmFrames::browse(bool save)
{
    CommonDialog &dialog = m_workspace.CMDialog1;
    dialog.Flags = HideReadOnly;
    dialog.DialogTitle.clear();
    dialog.Filter = BrowseFilter;
    dialog.FilterIndex = 1;
    dialog.InitDir.clear();
    dialog.FileName = m_workspace.history.Reference;
    if ((save ? dialog.ShowSave() : dialog.ShowOpen()) != ErrorCode::None || dialog.FileName.isEmpty())
        return {};
    const QString chosen = longExtension(dialog.FileName);
    m_workspace.history.Reference = chosen;
    return chosen;
}

void frmFrames::Command4_Click()
{
    const QString chosen = browse(false);
    if (chosen.isEmpty())
        return;
    const bool useBase = ckBaseURL->isChecked() && ckBaseURL->isEnabled();
    const QString base = FrameFilePath(tbFileName->text(), m_workspace.current());
    tbSource->setText(BrowsedReference(chosen, useBase, base));
}

void frmFrames::Command2_Click(int index)
{
    const QString chosen = browse(index == 1);
    if (!chosen.isEmpty())
        (index == 1 ? tbFileName : tbNoFramesFile)->setText(chosen);
}

// --- Options --------------------------------------------------------------------------------------------

void frmFrames::ckPercentage_Click()
{
    const bool pixels = !ckPercentage->isChecked();
    Frame1->setEnabled(pixels);
    for (QRadioButton *option : opScreenSize)
        option->setEnabled(pixels);
}

void frmFrames::ckNewDocument_Click()
{
    const bool on = ckNewDocument->isChecked();
    tbTitle->setEnabled(on);
    ckSaveFile->setEnabled(on);
    const bool file = on && ckSaveFile->isChecked();
    for (QWidget *control : {static_cast<QWidget *>(tbFileName), static_cast<QWidget *>(Command2[1]),
                             static_cast<QWidget *>(ckBaseURL)})
        control->setEnabled(file);
}

void frmFrames::ckSaveFile_Click()
{
    const bool on = ckSaveFile->isChecked();
    for (QWidget *control : {static_cast<QWidget *>(tbFileName), static_cast<QWidget *>(Command2[1]),
                             static_cast<QWidget *>(ckBaseURL)})
        control->setEnabled(on);
}

void frmFrames::ckNoFrameTag_Click()
{
    const bool on = ckNoFrameTag->isChecked();
    ckNoFramesMerge->setEnabled(on);
    const bool merge = on && ckNoFramesMerge->isChecked();
    tbNoFramesFile->setEnabled(merge);
    Command2[0]->setEnabled(merge);
}

void frmFrames::ckNoFramesMerge_Click()
{
    const bool on = ckNoFramesMerge->isChecked();
    tbNoFramesFile->setEnabled(on);
    Command2[0]->setEnabled(on);
}

void frmFrames::ckInPlace_Click()
{
    // In place only the frame sets are written: no new page, no NOFRAMES section.
    const bool on = ckInPlace->isChecked();
    if (on)
        ckNewDocument->setChecked(false);
    ckNewDocument->setEnabled(!on);
    ckNoFrameTag->setEnabled(!on);
    ckNoFramesMerge->setEnabled(!on && ckNoFrameTag->isChecked());
}

void frmFrames::opScreenSize_Click(int index)
{
    model.ScaleX = float(ScreenRoom[index][0]) / FrameModel::BoxWidth;
    model.ScaleY = float(ScreenRoom[index][1]) / FrameModel::BoxHeight;
}

// --- Generate --------------------------------------------------------------------------------------------

void frmFrames::Command6_Click()
{
    FramePageOptions options;
    options.sets = {ckPercentage->isChecked(), model.ScaleX, model.ScaleY};
    options.newDocument = ckNewDocument->isChecked();
    options.title = tbTitle->text();
    options.saveFile = ckSaveFile->isChecked() && ckSaveFile->isEnabled();
    options.fileName = tbFileName->text();
    options.noFramesTag = ckNoFrameTag->isChecked();
    options.merge = ckNoFramesMerge->isChecked() && ckNoFramesMerge->isEnabled();
    options.mergeFile = tbNoFramesFile->text();
    if (m_read && ckInPlace->isChecked())
        options.replace = m_read;
    if (GenerateFramePage(m_workspace, model, options, *this))
        unload();
    else
        showDesignStatus(); // the dialog is back as it was
}

void ShowFrameWizard(Workspace &workspace, QWidget *parent)
{
    OpenWizard<frmFrames>(workspace, parent);
}

} // namespace pw
