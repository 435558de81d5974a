#include "wizards/hyperlink_wizard.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/workspace.h"
#include "markup/tag_placement.h"
#include "platform/message_box.h"
#include "wizards/image_wizard.h"
#include "wizards/local_target.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

namespace pw {

namespace {

const QString HtmlFilter =
    QStringLiteral("HTML (*.html; *.htm; *.shtml)|*.html; *.htm; *.shtml|Text (*.txt)|*.txt|All (*.*)|*.*");

} // namespace

QString HyperLinkStart(const HyperLinkOptions &o)
{
    QString tag = QStringLiteral("<A HREF=\"") + o.url + QLatin1Char('"');
    if (!o.target.isEmpty())
        tag += QStringLiteral(" TARGET=\"") + o.target + QLatin1Char('"');
    if (!o.extraTags.isEmpty())
        tag += QLatin1Char(' ') + o.extraTags;
    return tag + QLatin1Char('>');
}

HyperLinkOptions HyperLinkOptionsFromTag(const ParsedTag &tag)
{
    HyperLinkOptions o;
    if (const TagAttribute *href = tag.find("HREF"))
        o.url = href->value;
    if (const TagAttribute *target = tag.find("TARGET"))
        o.target = target->value;
    o.extraTags = tag.othersThan({"HREF", "TARGET"});
    return o;
}

QStringList ResourceTypes()
{
    return {QStringLiteral("http://"), QStringLiteral("ftp://"),  QStringLiteral("telnet://"),
            QStringLiteral("gopher://"), QStringLiteral("wais://"), QStringLiteral("mailto:"),
            QStringLiteral("news:"),   QStringLiteral("file://"), QStringLiteral("# (LOCAL)")};
}

QString WithResourceType(const QString &url, const QString &entry)
{
    const QString prefix = entry.startsWith(QLatin1Char('#')) ? QStringLiteral("#") : entry;
    return prefix + url;
}

QString WithLocalName(const QString &url, const QString &name)
{
    return url + QLatin1Char('#') + name;
}

QString BrowsedUrl(const QString &present, const QString &chosen, bool useBaseReference, const QString &documentPath,
                   QChar separator)
{
    if (!useBaseReference)
        return present + UrlFromPath(chosen, separator);
    if (documentPath.isEmpty())
        return UrlFromPath(chosen, separator);
    return BrowsedReference(chosen, true, documentPath, separator);
}

frmHyperLink::frmHyperLink(Workspace &workspace, QWidget *parent)
    : WizardForm(workspace, parent, QStringLiteral("Hyper Link"))
{
    const auto named = [](auto *widget, const char *name) {
        widget->setObjectName(QLatin1String(name));
        return widget;
    };
    cbURL = named(new QComboBox(this), "cbURL");
    cbURL->setEditable(true);
    cbURL->setInsertPolicy(QComboBox::NoInsert);
    cbURL->setMinimumWidth(320);
    cbTargetName = named(new QComboBox(this), "cbTargetName");
    cbTargetName->setEditable(true);
    cbTargetName->setInsertPolicy(QComboBox::NoInsert);
    tbHyperCaption = named(new QLineEdit(this), "tbHyperCaption");
    tbExtraTags = named(new QLineEdit(this), "tbExtraTags");
    chkBaseURL = named(new QCheckBox(BaseReferenceCaption, this), "chkBaseURL");
    tbimagecaption = named(new EditingSurface(this), "tbimagecaption");
    tbimagecaption->setClassFonts(&workspace.fonts);
    tbimagecaption->hide();
    lbTargetCheck = named(new QLabel(this), "lbTargetCheck");
    lbTargetCheck->setWordWrap(true);

    auto *resourceFrame = new QGroupBox(QStringLiteral("Resource Types"), this);
    lstRecourses = named(new QListWidget(resourceFrame), "lstRecourses");
    (new QVBoxLayout(resourceFrame))->addWidget(lstRecourses);
    auto *namesFrame = new QGroupBox(QStringLiteral("All Local Names"), this);
    lstLocalNames = named(new QListWidget(namesFrame), "lstLocalNames");
    (new QVBoxLayout(namesFrame))->addWidget(lstLocalNames);

    Command1 = named(new QPushButton(QStringLiteral("&Browse"), this), "Command1");

    Command1->setAutoDefault(false); // Enter in a field still means OK
    Command2 = named(new QPushButton(QStringLiteral("&OK"), this), "Command2");
    Command2->setDefault(true);
    Command3 = named(new QPushButton(QStringLiteral("&Cancel"), this), "Command3");
    Command4 = named(new QPushButton(QStringLiteral("&Image"), this), "Command4");
    Command4->setAutoDefault(false); // Enter in a field still means OK

    auto *fields = new QFormLayout;
    auto *urlRow = new QHBoxLayout;
    urlRow->addWidget(cbURL, 1);
    urlRow->addWidget(Command1);
    fields->addRow(QStringLiteral("URL:"), urlRow);
    fields->addRow(QString(), lbTargetCheck);
    fields->addRow(QString(), chkBaseURL);
    fields->addRow(QStringLiteral("Target Name:"), cbTargetName);
    auto *captionRow = new QHBoxLayout;
    captionRow->addWidget(tbHyperCaption, 1);
    captionRow->addWidget(Command4);
    fields->addRow(QStringLiteral("Hyper Link caption:"), captionRow);
    fields->addRow(QStringLiteral("Extra Tags:"), tbExtraTags);
    auto *lists = new QHBoxLayout;
    lists->addWidget(resourceFrame);
    lists->addWidget(namesFrame);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(Command2, QDialogButtonBox::AcceptRole);
    buttons->addButton(Command3, QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addLayout(lists);
    layout->addWidget(buttons);

    connect(cbURL, &QComboBox::editTextChanged, this, &frmHyperLink::cbURL_Change);
    connect(lstRecourses, &QListWidget::itemClicked, this, &frmHyperLink::lstRecourses_Click);
    connect(lstLocalNames, &QListWidget::itemClicked, this, &frmHyperLink::lstLocalNames_Click);
    connect(Command1, &QPushButton::clicked, this, &frmHyperLink::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &frmHyperLink::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &QDialog::reject);
    connect(Command4, &QPushButton::clicked, this, &frmHyperLink::Command4_Click);
}

void frmHyperLink::Form_Load()
{
    FillFromPreviousList(*cbURL, m_workspace.previous[PreviousKind::URLs]);
    cbTargetName->addItems({QStringLiteral("_top"), QStringLiteral("_blank"), QStringLiteral("_parent"), QStringLiteral("_self")});
    cbTargetName->setCurrentIndex(-1);
    cbTargetName->setEditText(QString());
    chkBaseURL->setChecked(true);
    lstRecourses->addItems(ResourceTypes());
    if (const frmDoc *document = m_workspace.current()) {
        if (document->Text->SelLength() != 0)
            tbHyperCaption->setText(document->Text->SelText());
        const auto &names = document->state().LocalNames;
        for (int i = 1; i <= 20 && !names[i].isEmpty(); ++i)
            lstLocalNames->addItem(names[i]);
    }
    editTagAtCaret();
}

void frmHyperLink::editTagAtCaret()
{
    frmDoc *document = m_workspace.current();
    const std::optional<ParsedTag> tag = document ? SelectTagAtCaret(*document->Text, QStringLiteral("A")) : std::nullopt;
    if (!tag)
        return;
    m_inPlace = true;
    const HyperLinkOptions o = HyperLinkOptionsFromTag(*tag);
    cbURL->setEditText(o.url);
    cbTargetName->setEditText(o.target);
    tbExtraTags->setText(o.extraTags);
    tbHyperCaption->setEnabled(false);
    Command4->setEnabled(false);
}

void frmHyperLink::reject()
{
    if (frmDoc *document = m_workspace.current(); document && m_inPlace)
        document->Text->setSelLength(0);
    WizardForm::reject();
}

void frmHyperLink::cbURL_Change()
{
    const frmDoc *document = m_workspace.current();
    lbTargetCheck->setText(
        TargetCheckText(CheckLocalTarget(cbURL->currentText(), document ? document->state().path() : QString())));
}

void frmHyperLink::lstRecourses_Click()
{
    if (const QListWidgetItem *item = lstRecourses->currentItem())
        cbURL->setEditText(WithResourceType(cbURL->currentText(), item->text()));
}

void frmHyperLink::lstLocalNames_Click()
{
    if (const QListWidgetItem *item = lstLocalNames->currentItem())
        cbURL->setEditText(WithLocalName(cbURL->currentText(), item->text()));
}

void frmHyperLink::Command1_Click()
{
    const QString chosen = BrowseForFile(m_workspace, m_workspace.history.Reference, QString(), HtmlFilter);
    if (chosen.isEmpty())
        return;
    const frmDoc *document = m_workspace.current();
    cbURL->setEditText(BrowsedUrl(cbURL->currentText(), chosen, chkBaseURL->isChecked(),
                                  document ? document->state().path() : QString()));
}

void frmHyperLink::Command4_Click()
{
    auto *image = new frmImage(m_workspace, this, tbHyperCaption);
    connect(image, &QDialog::finished, this, &frmHyperLink::imageCaptionBack);
    ShowWizard(*image);
}

void frmHyperLink::imageCaptionBack()
{
    tbimagecaption->setSelStart(0);
    tbimagecaption->setSelLength(tbimagecaption->TextLength());
    if (m_workspace.options.isChecked(Option::Highlight))
        tbimagecaption->setSelFont(m_workspace.fonts.html);
    tbimagecaption->setSelText(tbHyperCaption->text());
}

void frmHyperLink::Command2_Click()
{
    frmDoc *document = m_workspace.current();
    const HyperLinkOptions o{cbURL->currentText(), cbTargetName->currentText(), tbExtraTags->text()};
    if (o.url.isEmpty()
        && m_workspace.MsgBox(QStringLiteral("You have not entered a destination URL.") + LineEnd
                                  + QStringLiteral("Do you wish to place A HREF tag anyway?"),
                              MsgStyle::YesNo + MsgStyle::Information)
               == MsgAnswer::No)
        return;
    if (document && m_inPlace) {
        PlaceSingleTag(m_workspace, *document, HyperLinkStart(o));
        if (!o.url.startsWith(QLatin1Char('#')))
            RememberInPreviousList(m_workspace.previous[PreviousKind::URLs], o.url, 20);
    } else if (document) {
        EditingSurface &surface = *document->Text;
        EditingSurface::EditGroup oneStep(surface);
        PlaceSingleTag(m_workspace, *document, HyperLinkStart(o));
        if (tbimagecaption->TextLength() == 0) {
            surface.setSelText(tbHyperCaption->text());
        } else {
            tbimagecaption->setSelStart(0);
            tbimagecaption->setSelLength(tbimagecaption->TextLength());
            surface.setSelRTF(tbimagecaption->SelRTF());
        }
        if (!o.url.startsWith(QLatin1Char('#')))
            RememberInPreviousList(m_workspace.previous[PreviousKind::URLs], o.url, 20);
        PlaceSingleTag(m_workspace, *document, QStringLiteral("</A>"));
        if (tbHyperCaption->text().isEmpty())
            surface.setSelStart(surface.SelStart() - 4);
    }
    unload();
}

void ShowHyperLinkWizard(Workspace &workspace, QWidget *parent)
{
    OpenWizard<frmHyperLink>(workspace, parent);
}

} // namespace pw
