#pragma once

#include "wizards/tag_reading.h"
#include "wizards/wizard_conduct.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace pw {

// What frmHyperLink's start tag is made of, as typed.
struct HyperLinkOptions {
    QString url;
    QString target;
    QString extraTags;
};

// <A HREF="url"> with TARGET and the extra tags when given.
QString HyperLinkStart(const HyperLinkOptions &options);
// The options an <A> start tag of a page was written from; other attributes go to the extra tags.
HyperLinkOptions HyperLinkOptionsFromTag(const ParsedTag &tag);
// The entries of "Resource Types", in order.
QStringList ResourceTypes();
// A resource type goes in front of the URL typed so far ("#" alone for the local one); a local
// name goes behind it, after a "#".
QString WithResourceType(const QString &url, const QString &entry);
QString WithLocalName(const QString &url, const QString &name);
// What the browse button leaves in the URL field: relative to a saved document with the base
// reference on, replacing the field; an untitled one's absolute path, replacing it; without the
// base reference, the chosen path appended, so that a chosen prefix ("file://") stays in front.
QString BrowsedUrl(const QString &present, const QString &chosen, bool useBaseReference,
                   const QString &documentPath, QChar separator = QDir::separator());

// "Hyper Link": a link around the selection (which becomes its caption) or a picture.
class frmHyperLink : public WizardForm
{
    Q_OBJECT

public:
    frmHyperLink(Workspace &workspace, QWidget *parent);

    QComboBox *cbURL = nullptr;
    QComboBox *cbTargetName = nullptr;
    QLineEdit *tbHyperCaption = nullptr;
    EditingSurface *tbimagecaption = nullptr; // not shown: a picture caption in the tag font
    QLineEdit *tbExtraTags = nullptr;
    QCheckBox *chkBaseURL = nullptr;
    QListWidget *lstRecourses = nullptr;
    QListWidget *lstLocalNames = nullptr;
    QPushButton *Command1 = nullptr; // Browse
    QPushButton *Command2 = nullptr; // OK
    QPushButton *Command3 = nullptr; // Cancel
    QPushButton *Command4 = nullptr; // Image
    QLabel *lbTargetCheck = nullptr; // a local target missing, or there in another letter case

    void Form_Load() override;
    void cbURL_Change();
    void lstRecourses_Click();
    void lstLocalNames_Click();
    void Command1_Click();
    void Command2_Click();
    void Command4_Click();

    // Cancel, by any way: a start tag selected to be replaced is left unselected.
    void reject() override;

private:
    // With the caret inside an <A> start tag and nothing selected: the tag selected, the fields from
    // it; OK then replaces only the start tag, and the caption stays as it is.
    void editTagAtCaret();
    bool m_inPlace = false;
    // The Image Wizard closed, by OK or Cancel: the caption box's text becomes the picture caption.
    void imageCaptionBack();
};

void ShowHyperLinkWizard(Workspace &workspace, QWidget *parent);

} // namespace pw
