#include "wizards/image_wizard.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/workspace.h"
#include "markup/tag_placement.h"
#include "platform/message_box.h"
#include "wizards/local_target.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QImageReader>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <filesystem>

namespace pw {

const QString PictureFilter =
    QStringLiteral("jpeg; gif (*.jpg; *.gif)|*.jpg;*.gif|jpeg (*.jpg)|*.jpg|gif (*.gif)|*.gif|All (*.*)|*.*");

namespace {

struct Alignment {
    const char *caption;
    const char *value;
};
constexpr Alignment Alignments[9] = {
    {"- Default", nullptr}, {"- Top", "TOP"}, {"- Middle", "MIDDLE"}, {"- Bottom", "BOTTOM"}, {"- Left", "LEFT"},
    {"- Right", "RIGHT"}, {"- Texttop", "TEXTOP"}, {"- Absmiddle", "ABSMIDDLE"}, {"- Absbottom", "ABSBOTTOM"}};

// The numeric fields in the order they are checked and written.
struct NumericField {
    QString ImageOptions::*field;
    ImageFault fault;
    const char *attribute;
};
constexpr NumericField NumericFields[] = {
    {&ImageOptions::border, ImageFault::Border, " BORDER="}, {&ImageOptions::height, ImageFault::Height, " HEIGHT="},
    {&ImageOptions::width, ImageFault::Width, " WIDTH="},    {&ImageOptions::vspace, ImageFault::VSpace, " VSPACE="},
    {&ImageOptions::hspace, ImageFault::HSpace, " HSPACE="}};

} // namespace

ImageFault CheckImageOptions(const ImageOptions &options)
{
    if (options.source.isEmpty())
        return ImageFault::Source;
    for (const NumericField &f : NumericFields) {
        const QString &value = options.*(f.field);
        if (!value.isEmpty() && !IsNumeric(value))
            return f.fault;
    }
    return ImageFault::None;
}

QString ImageFaultMessage(ImageFault fault)
{
    switch (fault) {
    case ImageFault::None: break;
    case ImageFault::Source: return QStringLiteral("You must supply an image source!");
    case ImageFault::Border: return QStringLiteral("Border size must be numeric!");
    case ImageFault::Height: return QStringLiteral("Height must be numeric!");
    case ImageFault::Width: return QStringLiteral("Width must be numeric!");
    case ImageFault::VSpace: return QStringLiteral("VSpace must be numeric!");
    case ImageFault::HSpace: return QStringLiteral("HSpace must be numeric!");
    }
    return {};
}

QString ImageTag(const ImageOptions &o)
{
    QString tag = QStringLiteral("<IMG SRC=\"") + o.source + QLatin1Char('"');
    if (!o.alt.isEmpty())
        tag += QStringLiteral(" ALT=\"") + o.alt + QLatin1Char('"');
    for (const NumericField &f : NumericFields)
        if (const QString &value = o.*(f.field); !value.isEmpty())
            tag += QLatin1String(f.attribute) + value;
    if (!o.useMap.isEmpty())
        tag += QStringLiteral(" USEMAP=\"#") + o.useMap + QLatin1Char('"');
    if (o.alignment > 0 && o.alignment < 9)
        tag += QStringLiteral(" ALIGN=\"") + QLatin1String(Alignments[o.alignment].value) + QLatin1Char('"');
    if (o.isMap)
        tag += QStringLiteral(" ISMAP");
    if (!o.extraTags.isEmpty())
        tag += QLatin1Char(' ') + o.extraTags;
    return tag + QLatin1Char('>');
}

ImageOptions ImageOptionsFromTag(const ParsedTag &tag)
{
    ImageOptions o;
    const auto value = [&tag](const char *name) {
        const TagAttribute *attribute = tag.find(name);
        return attribute ? attribute->value : QString();
    };
    o.source = value("SRC");
    o.alt = value("ALT");
    o.border = value("BORDER");
    o.height = value("HEIGHT");
    o.width = value("WIDTH");
    o.vspace = value("VSPACE");
    o.hspace = value("HSPACE");
    o.useMap = value("USEMAP");
    if (o.useMap.startsWith(QLatin1Char('#')))
        o.useMap.remove(0, 1);
    const QString align = value("ALIGN").toUpper();
    for (int i = 1; i < 9; ++i)
        if (align == QLatin1String(Alignments[i].value) || (i == 6 && align == QLatin1String("TEXTTOP")))
            o.alignment = i;
    o.isMap = tag.find("ISMAP") != nullptr;
    o.extraTags = o.alignment > 0 || align.isEmpty()
                      ? tag.othersThan({"SRC", "ALT", "BORDER", "HEIGHT", "WIDTH", "VSPACE", "HSPACE", "USEMAP", "ALIGN", "ISMAP"})
                      : tag.othersThan({"SRC", "ALT", "BORDER", "HEIGHT", "WIDTH", "VSPACE", "HSPACE", "USEMAP", "ISMAP"});
    return o;
}

std::optional<QSize> PictureSize(const QString &path)
{
    // Only plain files: a folder, a pipe or a device would fail or stall the typing.
    std::error_code error;
    if (path.isEmpty() || !std::filesystem::is_regular_file(QFile::encodeName(path).toStdString(), error))
        return std::nullopt;
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    const QSize size = reader.size();
    if (!size.isValid() || size.isEmpty())
        return std::nullopt;
    if (reader.transformation() & QImageIOHandler::TransformationRotate90)
        return size.transposed();
    return size;
}

QString PicturePath(const QString &source, bool useBaseReference, const QString &documentPath, QChar separator)
{
    const QString path = PathFromUrl(source, separator);
    if (!useBaseReference || path.startsWith(separator))
        return path;
    return ResolveRelativeUrl(documentPath, source, separator);
}

frmImage::frmImage(Workspace &workspace, QWidget *parent, QLineEdit *hyperCaption)
    : WizardForm(workspace, parent, QStringLiteral("Image Wizard")), m_hyperCaption(hyperCaption)
{
    if (hyperCaption)
        Tag = QStringLiteral("H");
    const auto named = [](auto *widget, const char *name) {
        widget->setObjectName(QLatin1String(name));
        return widget;
    };
    const auto box = [this, &named](const char *name) { return named(new QLineEdit(this), name); };

    auto *sourceFrame = new QGroupBox(QStringLiteral("Image SRC"), this);
    cbSource = named(new QComboBox(sourceFrame), "cbSource");
    cbSource->setEditable(true);
    cbSource->setInsertPolicy(QComboBox::NoInsert);
    cbSource->setMinimumWidth(300);
    Command1 = named(new QPushButton(QStringLiteral("&Browse"), sourceFrame), "Command1");
    Command1->setAutoDefault(false); // Enter in a field still means OK
    chkBaseURL = named(new QCheckBox(BaseReferenceCaption, sourceFrame), "chkBaseURL");
    lbTargetCheck = named(new QLabel(sourceFrame), "lbTargetCheck");
    lbTargetCheck->setWordWrap(true);
    auto *sourceLayout = new QGridLayout(sourceFrame);
    sourceLayout->addWidget(cbSource, 0, 0);
    sourceLayout->addWidget(Command1, 0, 1);
    sourceLayout->addWidget(lbTargetCheck, 1, 0, 1, 2);
    sourceLayout->addWidget(chkBaseURL, 2, 0, 1, 2);

    tbAlt = box("tbAlt");
    tbBorderSize = box("tbBorderSize");
    tbHeight = box("tbHeight");
    tbWidth = box("tbWidth");
    tbVSpace = box("tbVSpace");
    tbHSpace = box("tbHSpace");
    const auto framed = [this](const QString &caption, const QList<std::pair<QString, QWidget *>> &rows) {
        auto *frame = new QGroupBox(caption, this);
        auto *form = new QFormLayout(frame);
        for (const auto &[label, widget] : rows)
            form->addRow(label, widget);
        return frame;
    };
    auto *altFrame = framed(QStringLiteral("Alternate Text"), {{QString(), tbAlt}});
    auto *borderFrame = framed(QStringLiteral("Border Size"), {{QString(), tbBorderSize}});
    auto *sizeFrame = framed(QStringLiteral("Image Size"), {{QStringLiteral("Height:"), tbHeight}, {QStringLiteral("Width:"), tbWidth}});
    auto *spaceFrame = framed(QStringLiteral("Image Space"), {{QStringLiteral("VSpace:"), tbVSpace}, {QStringLiteral("HSpace:"), tbHSpace}});

    auto *alignFrame = new QGroupBox(QStringLiteral("Alignment"), this);
    auto *alignLayout = new QGridLayout(alignFrame);
    for (int i = 0; i < 9; ++i) {
        opAlignment[i] = new QRadioButton(QLatin1String(Alignments[i].caption), alignFrame);
        opAlignment[i]->setObjectName(QStringLiteral("opAlignment(%1)").arg(i));
        alignLayout->addWidget(opAlignment[i], i % 3, i / 3);
    }

    auto *advanced = new QGroupBox(QStringLiteral(" Advanced "), this);
    chkIsMap = named(new QCheckBox(QStringLiteral("- ISMAP"), advanced), "chkIsMap");
    tbUseMap = named(new QLineEdit(advanced), "tbUseMap");
    tbExtraTags = named(new QLineEdit(advanced), "tbExtraTags");
    auto *advancedLayout = new QFormLayout(advanced);
    advancedLayout->addRow(chkIsMap);
    advancedLayout->addRow(QStringLiteral("Use Map:"), tbUseMap);
    advancedLayout->addRow(QStringLiteral("Extra Tags:"), tbExtraTags);

    Command3 = named(new QPushButton(QStringLiteral("&OK"), this), "Command3");
    Command3->setDefault(true);
    Command2 = named(new QPushButton(QStringLiteral("&Cancel"), this), "Command2");
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(Command3, QDialogButtonBox::AcceptRole);
    buttons->addButton(Command2, QDialogButtonBox::RejectRole);

    auto *grid = new QGridLayout;
    grid->addWidget(altFrame, 0, 0);
    grid->addWidget(borderFrame, 0, 1);
    grid->addWidget(sizeFrame, 1, 0);
    grid->addWidget(spaceFrame, 1, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(sourceFrame);
    layout->addLayout(grid);
    layout->addWidget(alignFrame);
    layout->addWidget(advanced);
    layout->addWidget(buttons);

    connect(cbSource, &QComboBox::editTextChanged, this, &frmImage::cbSource_Change);
    connect(cbSource, &QComboBox::textActivated, this, &frmImage::cbSource_Change);
    connect(Command1, &QPushButton::clicked, this, &frmImage::Command1_Click);
    connect(Command3, &QPushButton::clicked, this, &frmImage::Command3_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::reject);
}

QString frmImage::documentPath() const
{
    const frmDoc *document = m_workspace.current();
    return document ? document->state().path() : QString();
}

void frmImage::Form_Load()
{
    FillFromPreviousList(*cbSource, m_workspace.previous[PreviousKind::Images]);
    opAlignment[0]->setChecked(true);
    chkBaseURL->setChecked(true);
    if (documentPath().isEmpty()) {
        // An untitled page has no folder for a source to be relative to.
        chkBaseURL->setChecked(false);
        chkBaseURL->setEnabled(false);
    }
    if (!m_hyperCaption)
        editTagAtCaret();
}

void frmImage::editTagAtCaret()
{
    frmDoc *document = m_workspace.current();
    const std::optional<ParsedTag> tag = document ? SelectTagAtCaret(*document->Text, QStringLiteral("IMG")) : std::nullopt;
    if (!tag)
        return;
    m_inPlace = true;
    const ImageOptions o = ImageOptionsFromTag(*tag);
    cbSource->setEditText(o.source);
    tbAlt->setText(o.alt);
    tbBorderSize->setText(o.border);
    tbHeight->setText(o.height); // the tag's own sizes, not the picture's
    tbWidth->setText(o.width);
    tbVSpace->setText(o.vspace);
    tbHSpace->setText(o.hspace);
    tbUseMap->setText(o.useMap);
    opAlignment[o.alignment]->setChecked(true);
    chkIsMap->setChecked(o.isMap);
    tbExtraTags->setText(o.extraTags);
}

void frmImage::reject()
{
    if (frmDoc *document = m_workspace.current(); document && m_inPlace)
        document->Text->setSelLength(0);
    WizardForm::reject();
}

void frmImage::cbSource_Change()
{
    const bool relative = chkBaseURL->isEnabled() && chkBaseURL->isChecked();
    const std::optional<QSize> size = PictureSize(PicturePath(cbSource->currentText(), relative, documentPath()));
    tbHeight->setText(size ? QString::number(size->height()) : QString());
    tbWidth->setText(size ? QString::number(size->width()) : QString());
    lbTargetCheck->setText(TargetCheckText(CheckLocalTarget(cbSource->currentText(), documentPath())));
}

void frmImage::Command1_Click()
{
    const QString chosen = BrowseForFile(m_workspace, m_workspace.history.IOpen, QString(), PictureFilter);
    if (chosen.isEmpty())
        return;
    const bool relative = chkBaseURL->isEnabled() && chkBaseURL->isChecked();
    cbSource->setEditText(BrowsedReference(chosen, relative, documentPath()));
}

ImageOptions frmImage::options() const
{
    ImageOptions o;
    o.source = cbSource->currentText();
    o.alt = tbAlt->text();
    o.border = tbBorderSize->text();
    o.height = tbHeight->text();
    o.width = tbWidth->text();
    o.vspace = tbVSpace->text();
    o.hspace = tbHSpace->text();
    o.useMap = tbUseMap->text();
    for (int i = 0; i < 9; ++i)
        if (opAlignment[i]->isChecked())
            o.alignment = i;
    o.isMap = chkIsMap->isChecked();
    o.extraTags = tbExtraTags->text();
    return o;
}

void frmImage::Command3_Click()
{
    const ImageOptions o = options();
    const ImageFault fault = CheckImageOptions(o);
    if (fault != ImageFault::None) {
        QWidget *const fields[] = {nullptr, cbSource, tbBorderSize, tbHeight, tbWidth, tbVSpace, tbHSpace};
        refuse(ImageFaultMessage(fault), MsgStyle::Exclamation, fields[int(fault)]);
        return;
    }
    RememberInPreviousList(m_workspace.previous[PreviousKind::Images], o.source, 20);
    if (Tag == QLatin1String("H") && m_hyperCaption) {
        m_hyperCaption->setText(ImageTag(o));
        Tag.clear();
    } else if (frmDoc *document = m_workspace.current()) {
        PlaceSingleTag(m_workspace, *document, ImageTag(o));
    }
    unload();
}

void frmImage::done(int result)
{
    if (m_hyperCaption) {
        // The Hyperlink Wizard below keeps the focus; the document is not reached yet.
        QDialog::done(result);
        return;
    }
    WizardForm::done(result);
}

void ShowImageWizard(Workspace &workspace, frmDoc &document, QWidget *parent)
{
    if (SelectionMayBeReplaced(workspace, document))
        OpenWizard<frmImage>(workspace, parent);
}

} // namespace pw
