#pragma once

#include "wizards/tag_reading.h"
#include "wizards/wizard_conduct.h"

#include <QSize>

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;

namespace pw {

// What frmImage collects, as typed.
struct ImageOptions {
    QString source;
    QString alt;
    QString border, height, width, vspace, hspace;
    QString useMap;
    int alignment = 0; // 0 default, then Top, Middle, Bottom, Left, Right, Texttop, Absmiddle, Absbottom
    bool isMap = false;
    QString extraTags;
};

// The field an image's options fail at, checked in the order of the attributes.
enum class ImageFault { None, Source, Border, Height, Width, VSpace, HSpace };
ImageFault CheckImageOptions(const ImageOptions &options);
QString ImageFaultMessage(ImageFault fault);

// <IMG SRC ALT BORDER HEIGHT WIDTH VSPACE HSPACE USEMAP ALIGN ISMAP extras>: numbers unquoted, the
// map's name behind a "#" the wizard adds.
QString ImageTag(const ImageOptions &options);

// The options an <IMG> tag of a page was written from; what the wizard has no field for goes to the
// extra tags as written.
ImageOptions ImageOptionsFromTag(const ParsedTag &tag);

// A picture's size in pixels as a browser shows it (a JPEG turned by its EXIF mark), read from its
// header alone and known by its content, not its name. Nothing for anything but a readable
// picture file.
std::optional<QSize> PictureSize(const QString &path);
// The file a picture's source names: relative to the document when the base reference is used
// (an absolute path stays one), else the source as a path.
QString PicturePath(const QString &source, bool useBaseReference, const QString &documentPath,
                    QChar separator = QDir::separator());

// "Image Wizard": one <IMG> tag. Given a caption box (the Hyperlink Wizard's), its Tag is "H" and
// the tag goes into that box instead of the document.
class frmImage : public WizardForm
{
    Q_OBJECT

public:
    frmImage(Workspace &workspace, QWidget *parent, QLineEdit *hyperCaption = nullptr);

    QString Tag;
    QComboBox *cbSource = nullptr;
    QCheckBox *chkBaseURL = nullptr;
    QPushButton *Command1 = nullptr; // Browse
    QLabel *lbTargetCheck = nullptr; // the picture missing, or there in another letter case
    QLineEdit *tbAlt = nullptr, *tbBorderSize = nullptr, *tbHeight = nullptr, *tbWidth = nullptr;
    QLineEdit *tbVSpace = nullptr, *tbHSpace = nullptr;
    QRadioButton *opAlignment[9] = {};
    QCheckBox *chkIsMap = nullptr;
    QLineEdit *tbUseMap = nullptr, *tbExtraTags = nullptr;
    QPushButton *Command3 = nullptr; // OK
    QPushButton *Command2 = nullptr; // Cancel

    void Form_Load() override;
    ImageOptions options() const;
    void cbSource_Change();
    void Command1_Click();
    void Command3_Click();

    // Cancel, by any way: a tag selected to be replaced is left unselected.
    void reject() override;

protected:
    void done(int result) override;

private:
    QString documentPath() const;
    // With the caret inside an <IMG> tag and nothing selected: the tag selected, the fields from it.
    void editTagAtCaret();
    QLineEdit *m_hyperCaption;
    bool m_inPlace = false;
};

// mnuHTMLImage and imgImage: asks first about a selection; at No the dialog doesn't open.
void ShowImageWizard(Workspace &workspace, frmDoc &document, QWidget *parent);

// The filter of the picture browse buttons.
extern const QString PictureFilter;

} // namespace pw
