#pragma once

#include "wizards/frame_model.h"
#include "wizards/wizard_conduct.h"

#include <optional>
#include <utility>

class QAction;
class QCheckBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QMenu;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace pw
{

class VirtualWindow;

// "Frames Wizard": a page of frames designed by drawing. The design is the run's FrameModel, cut
// back to its first frame when the dialog loads; values reach a frame only by Command3.
class frmFrames : public WizardForm
{
    Q_OBJECT

public:
    frmFrames(Workspace &workspace, QWidget *parent);

    FrameModel &model;

    QTabWidget *TabStrip1 = nullptr;
    QWidget *Picture1[3] = {};
    VirtualWindow *pbVirtualWindow = nullptr;
    QMenu *mnuRightClick = nullptr;
    QAction *mnuSplitV = nullptr, *mnuSplitH = nullptr, *mnuEdit = nullptr, *mnuDelete = nullptr;
    // Edit Current Frame
    QLineEdit *tbFrameName = nullptr, *tbSource = nullptr, *tbMarginWidth = nullptr,
              *tbMarginHeight = nullptr;
    QLineEdit *tbExtraTag = nullptr;
    QRadioButton *opScrolling[3] = {};
    QCheckBox *ckNoResize = nullptr;
    QPushButton *Command3 = nullptr, *Command4 = nullptr, *Command5 = nullptr;
    QLabel *lbSourceCheck = nullptr; // marks a source that reaches no file, or one only in another case
    // Options
    QCheckBox *ckPercentage = nullptr, *ckNewDocument = nullptr, *ckSaveFile = nullptr, *ckBaseURL = nullptr;
    QCheckBox *ckNoFrameTag = nullptr, *ckNoFramesMerge = nullptr;
    QCheckBox *ckInPlace = nullptr; // shown when the design was read from the frame set at the caret
    QGroupBox *Frame1 = nullptr;
    QRadioButton *opScreenSize[3] = {};
    QLineEdit *tbTitle = nullptr, *tbFileName = nullptr, *tbNoFramesFile = nullptr;
    QPushButton *Command2[2] = {};
    // Bottom
    QPushButton *Command6 = nullptr, *Command1 = nullptr;

    void Form_Load() override;

    void TabStrip1_Click(int tab);
    void ResizeVirtualWindow();
    void LoadEditTab();

    void pbVirtualWindow_MouseMove(Qt::MouseButtons buttons, int x, int y);
    void pbVirtualWindow_MouseDown(Qt::MouseButton button, int x, int y, QPoint global);
    void mnuSplitH_Click();
    void mnuSplitV_Click();
    void mnuEdit_Click();
    void mnuDelete_Click();

    void Command3_Click();
    void Command5_Click();
    void Command4_Click();
    void Command2_Click(int index);
    void Command6_Click();
    void margin_LostFocus(QLineEdit *box);
    void tbSource_Change();

    void ckPercentage_Click();
    void ckNewDocument_Click();
    void ckSaveFile_Click();
    void ckNoFrameTag_Click();
    void ckNoFramesMerge_Click();
    void ckInPlace_Click();
    void opScreenSize_Click(int index);

    // The filter of the browse buttons.
    static const QString BrowseFilter;

protected:
    void done(int result) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void buildDesignPage();
    void buildEditPage();
    void buildOptionsPage();
    void connectControls();
    void showDesignStatus();
    void readFromDocument();
    void showFrames(); // after a split or delete: the edit tab's state and the drawing
    QString browse(bool save);

    bool m_checkingMargin = false;
    std::optional<std::pair<int, int>> m_read; // where the design read from the document stands
};

// mnuDesignFrame and imgFrame.
void ShowFrameWizard(Workspace &workspace, QWidget *parent);

} // namespace pw
