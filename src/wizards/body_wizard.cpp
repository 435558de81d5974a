#include "wizards/body_wizard.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/workspace.h"
#include "markup/font_commands.h"
#include "markup/tag_placement.h"
#include "platform/message_box.h"
#include "wizards/image_wizard.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace pw {

namespace {

const QString EmptyBody = QStringLiteral("<BODY>");
// Black, blue, purple and red text on grey: the sixteen-colour palette's 0, 9, 5, 12 and 7.
constexpr qint32 StartText[4] = {0x000000, 0xFF0000, 0x800080, 0x0000FF};
constexpr qint32 StartBack = 0xC0C0C0;

} // namespace

frmBody::frmBody(Workspace &workspace, QWidget *parent)
    : WizardForm(workspace, parent, QStringLiteral("Body Background Wizard"))
{
    const auto named = [](auto *widget, const QString &name) {
        widget->setObjectName(name);
        return widget;
    };
    lbBodyTag = named(new QLabel(this), QStringLiteral("lbBodyTag"));
    lbBodyTag->setWordWrap(true);
    lbBodyTag->setTextFormat(Qt::PlainText);
    lbBodyTag->setMinimumWidth(420);

    auto *textureFrame = new QGroupBox(QStringLiteral("Background Texture"), this);
    cbTexture = named(new QComboBox(textureFrame), QStringLiteral("cbTexture"));
    cbTexture->setEditable(true);
    cbTexture->setInsertPolicy(QComboBox::NoInsert);
    Command1 = named(new QPushButton(QStringLiteral("&Browse"), textureFrame), QStringLiteral("Command1"));
    Command1->setAutoDefault(false); // Enter in a field still means OK
    chkBaseURL = named(new QCheckBox(BaseReferenceCaption, textureFrame), QStringLiteral("chkBaseURL"));
    auto *textureLayout = new QGridLayout(textureFrame);
    textureLayout->addWidget(cbTexture, 0, 0);
    textureLayout->addWidget(Command1, 0, 1);
    textureLayout->addWidget(chkBaseURL, 1, 0, 1, 2);

    auto *extraFrame = new QGroupBox(QStringLiteral("Extra Tags"), this);
    cbJAVAOnLoad = named(new QComboBox(extraFrame), QStringLiteral("cbJAVAOnLoad"));
    cbJAVAOnLoad->setEditable(true);
    cbJAVAOnLoad->setInsertPolicy(QComboBox::NoInsert);
    (new QVBoxLayout(extraFrame))->addWidget(cbJAVAOnLoad);

    auto *colorFrame = new QGroupBox(QStringLiteral("Colors"), this);
    auto *colorLayout = new QGridLayout(colorFrame);
    static const char *const captions[] = {"Standard Text", "Hyperlinks", "Followed Links", "Pressed Links"};
    for (int i = 0; i < 4; ++i) {
        lbColor[i] = named(new QLabel(QLatin1String(captions[i]), colorFrame), QStringLiteral("lbColor(%1)").arg(i));
        lbColor[i]->setAutoFillBackground(true);
        lbColor[i]->setMinimumWidth(160);
        cmdColorChange[i] = named(new QPushButton(QStringLiteral("< Change"), colorFrame),
                                  QStringLiteral("cmdColorChange(%1)").arg(i));
        colorLayout->addWidget(lbColor[i], i, 0);
        colorLayout->addWidget(cmdColorChange[i], i, 1);
        connect(cmdColorChange[i], &QPushButton::clicked, this, [this, i] { cmdColorChange_Click(i); });
    }
    Command2 = named(new QPushButton(QStringLiteral("Change Background Color"), colorFrame), QStringLiteral("Command2"));
    colorLayout->addWidget(Command2, 4, 0, 1, 2);

    Command3 = named(new QPushButton(QStringLiteral("&OK"), this), QStringLiteral("Command3"));
    Command3->setDefault(true);
    Command4 = named(new QPushButton(QStringLiteral("&Cancel"), this), QStringLiteral("Command4"));
    Command5 = named(new QPushButton(QStringLiteral("Clear &Tag"), this), QStringLiteral("Command5"));
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(Command3, QDialogButtonBox::AcceptRole);
    buttons->addButton(Command4, QDialogButtonBox::RejectRole);
    buttons->addButton(Command5, QDialogButtonBox::ResetRole);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lbBodyTag);
    layout->addWidget(textureFrame);
    layout->addWidget(extraFrame);
    layout->addWidget(colorFrame);
    layout->addWidget(buttons);

    std::copy(std::begin(StartText), std::end(StartText), m_text);
    m_back = StartBack;
    showColors();

    connect(cbTexture, &QComboBox::editTextChanged, this, &frmBody::cbTexture_Change);
    connect(cbTexture, &QComboBox::textActivated, this, &frmBody::cbTexture_Change);
    connect(Command1, &QPushButton::clicked, this, &frmBody::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &frmBody::Command2_Click);
    connect(Command3, &QPushButton::clicked, this, &frmBody::Command3_Click);
    connect(Command4, &QPushButton::clicked, this, &frmBody::reject);
    connect(Command5, &QPushButton::clicked, this, &frmBody::Command5_Click);
}

void frmBody::setTag(const QString &tag)
{
    lbBodyTag->setText(tag);
}

void frmBody::showColors()
{
    for (int i = 0; i < 4; ++i)
        lbColor[i]->setStyleSheet(QStringLiteral("color: #%1; background-color: #%2;")
                                      .arg(ColorToHtml(m_text[i]), ColorToHtml(m_back)));
}

void frmBody::Form_Load()
{
    FillFromPreviousList(*cbTexture, m_workspace.previous[PreviousKind::Textures].mid(0, 10));
    FillFromPreviousList(*cbJAVAOnLoad, m_workspace.previous[PreviousKind::ExtraTags].mid(0, 5));
    chkBaseURL->setChecked(true);
    frmDoc *document = m_workspace.current();
    if (!document) {
        setTag(EmptyBody);
        return;
    }
    EditingSurface &surface = *document->Text;
    const int oldStart = surface.SelStart(), oldLength = surface.SelLength();
    QString tag = EmptyBody;
    bool nonStandard = false;
    if (const std::optional<TagSpan> span = FindBodyTag(surface)) {
        if (span->length == 0) {
            nonStandard = true; // "<BODY" with no ">": left as it is
        } else {
            surface.setSelStart(span->start);
            surface.setSelLength(span->length);
            tag = surface.SelText();
        }
    }
    if (!nonStandard && tag.size() > 6) {
        setTag(tag);
        const BodyPreload read = ReadBodyTag(tag);
        nonStandard = read.nonStandard;
        cbTexture->setEditText(read.texture);
        if (read.background)
            m_back = *read.background;
        for (int i = 0; i < 4; ++i)
            if (read.colors[i])
                m_text[i] = *read.colors[i];
        showColors();
    }
    if (nonStandard) {
        m_workspace.MsgBox(QStringLiteral("There seems to be a non-standard code in your BODY tag.") + LineEnd
                               + QStringLiteral("Unable to preload your current BODY tag."),
                           MsgStyle::Exclamation);
        // The broken tag stays as it is; OK places a new one where the caret was.
        surface.setSelStart(oldStart);
        surface.setSelLength(oldLength);
        tag = EmptyBody;
    }
    setTag(tag); // what the texture's change handler did to the copy is undone
}

void frmBody::cbTexture_Change()
{
    const QString texture = cbTexture->currentText();
    const QString name = QStringLiteral("BACKGROUND");
    setTag(texture.isEmpty() ? DeleteSubTag(lbBodyTag->text(), name) : Updatetag(lbBodyTag->text(), name, texture));
}

void frmBody::Command1_Click()
{
    const QString chosen = BrowseForFile(m_workspace, m_workspace.history.IOpen, QString(), PictureFilter);
    if (chosen.isEmpty())
        return;
    const frmDoc *document = m_workspace.current();
    const QString base = document ? document->state().path() : QString();
    cbTexture->setEditText(BrowsedReference(chosen, chkBaseURL->isChecked() && !base.isEmpty(), base));
}

void frmBody::cmdColorChange_Click(int i)
{
    CommonDialog &dialog = m_workspace.CMDialog1;
    dialog.Color = m_text[i];
    if (dialog.ShowColor() != ErrorCode::Cancel)
        m_text[i] = dialog.Color;
    showColors();
    // A cancel still writes the colour on show.
    setTag(Updatetag(lbBodyTag->text(), QLatin1String(BodyColorNames[i]), QLatin1Char('#') + ColorToHtml(m_text[i])));
}

void frmBody::Command2_Click()
{
    CommonDialog &dialog = m_workspace.CMDialog1;
    dialog.Color = m_back;
    if (dialog.ShowColor() != ErrorCode::Cancel)
        m_back = dialog.Color;
    showColors();
    setTag(Updatetag(lbBodyTag->text(), QStringLiteral("BGCOLOR"), QLatin1Char('#') + ColorToHtml(m_back)));
}

void frmBody::Command5_Click()
{
    setTag(EmptyBody);
    std::copy(std::begin(StartText), std::end(StartText), m_text);
    m_back = StartBack;
    showColors();
    cbTexture->setEditText(QString());
    cbJAVAOnLoad->setEditText(QString());
}

void frmBody::Command3_Click()
{
    const QString texture = cbTexture->currentText();
    const QString extra = cbJAVAOnLoad->currentText();
    RememberInPreviousList(m_workspace.previous[PreviousKind::Textures], texture, 10);
    RememberInPreviousList(m_workspace.previous[PreviousKind::ExtraTags], extra, 5);
    QString tag = lbBodyTag->text();
    if (!extra.isEmpty())
        tag = tag.chopped(1) + QLatin1Char(' ') + extra + QLatin1Char('>');
    if (frmDoc *document = m_workspace.current())
        PlaceSingleTag(m_workspace, *document, tag);
    unload();
}

void frmBody::reject()
{
    if (frmDoc *document = m_workspace.current())
        document->Text->setSelLength(0);
    WizardForm::reject();
}

void ShowBodyWizard(Workspace &workspace, QWidget *parent)
{
    OpenWizard<frmBody>(workspace, parent);
}

} // namespace pw
