#include "markup/configure_dialog.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "core/settings_store.h"
#include "core/status_line.h"
#include "core/workspace.h"
#include "markup/highlighter.h"
#include "platform/dialog_look.h"

#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>

namespace pw {

namespace {

constexpr int FontDialogFlags = 5;
const char *const Caption = "Configure Editor";

QPushButton *button(const QString &caption, const QString &name, QWidget *parent)
{
    auto *b = new QPushButton(caption, parent);
    b->setObjectName(name);
    return b;
}

} // namespace

frmConfigure::frmConfigure(Workspace &workspace, QWidget *parent) : QDialog(parent), m_workspace(workspace)
{
    setObjectName(QStringLiteral("frmConfigure"));
    SetDialogLook(*this);
    setWindowTitle(QLatin1String(Caption));
    Frame2 = new QGroupBox(QStringLiteral("Change Font for:"), this);
    Frame2->setObjectName(QStringLiteral("Frame2"));
    Command2 = button(QStringLiteral("HTML"), QStringLiteral("Command2"), Frame2);
    Command4 = button(QStringLiteral("TEXT"), QStringLiteral("Command4"), Frame2);
    Command9 = button(QStringLiteral("Comments"), QStringLiteral("Command9"), Frame2);
    Frame1 = new QGroupBox(QStringLiteral("Change Color for:"), this);
    Frame1->setObjectName(QStringLiteral("Frame1"));
    Command5 = button(QStringLiteral("HTML"), QStringLiteral("Command5"), Frame1);
    Command6 = button(QStringLiteral("TEXT"), QStringLiteral("Command6"), Frame1);
    Command8 = button(QStringLiteral("Comments"), QStringLiteral("Command8"), Frame1);
    Command3 = button(QStringLiteral("Change &Background Color"), QStringLiteral("Command3"), this);
    Command1 = button(QStringLiteral("&OK"), QStringLiteral("Command1"), this);
    Command7 = button(QStringLiteral("&Cancel"), QStringLiteral("Command7"), this);
    Command1->setDefault(true);
    Text = new EditingSurface(this);
    Text->setObjectName(QStringLiteral("Text"));
    Text->setClassFonts(&workspace.fonts);
    Text->setMinimumSize(420, 180);

    for (QGroupBox *frame : {Frame2, Frame1}) {
        auto *row = new QHBoxLayout(frame);
        for (QObject *child : frame->children())
            if (auto *b = qobject_cast<QPushButton *>(child))
                row->addWidget(b);
    }
    auto *layout = new QGridLayout(this);
    layout->addWidget(Text, 0, 0, 1, 3);
    layout->addWidget(Frame2, 1, 0, 1, 3);
    layout->addWidget(Frame1, 2, 0, 1, 3);
    layout->addWidget(Command3, 3, 0);
    layout->addWidget(Command1, 3, 1);
    layout->addWidget(Command7, 3, 2);

    connect(Command2, &QPushButton::clicked, this, [this] { chooseFont(Class::Html); });
    connect(Command4, &QPushButton::clicked, this, [this] { chooseFont(Class::Text); });
    connect(Command9, &QPushButton::clicked, this, [this] { chooseFont(Class::Comment); });
    connect(Command5, &QPushButton::clicked, this, [this] { chooseColor(Class::Html); });
    connect(Command6, &QPushButton::clicked, this, [this] { chooseColor(Class::Text); });
    connect(Command8, &QPushButton::clicked, this, [this] { chooseColor(Class::Comment); });
    connect(Command3, &QPushButton::clicked, this, &frmConfigure::Command3_Click);
    connect(Command1, &QPushButton::clicked, this, &frmConfigure::Command1_Click);
    connect(Command7, &QPushButton::clicked, this, &frmConfigure::Command7_Click);
    Form_Load();
}

FontClass &frmConfigure::fontOf(Class which)
{
    ClassFonts &fonts = m_workspace.fonts;
    return which == Class::Html ? fonts.html : which == Class::Text ? fonts.text : fonts.comment;
}

void frmConfigure::Form_Load()
{
    Text->setBackColor(m_workspace.backColor);
    ApplyClassFont(*Text, false);
    const QStringList sample = {QStringLiteral("<HTML>"), QStringLiteral("<HEAD>"),
                                QStringLiteral("<TITLE>This is a sample</TITLE>"), QStringLiteral("</HEAD>"),
                                QStringLiteral("<BODY>"), QStringLiteral("<!-- This is a comment -->"),
                                QStringLiteral("Sample text so you may find a better setting."), QStringLiteral("</BODY>"),
                                QStringLiteral("</HTML>")};
    Text->setText(sample.join(LineEnd));
    HighlightPreview(m_workspace, *Text, m_workspace.fonts, QLatin1String(Caption));
}

void frmConfigure::chooseFont(Class which)
{
    FontClass &font = fontOf(which);
    CommonDialog &dialog = m_workspace.CMDialog1;
    dialog.Flags = FontDialogFlags;
    dialog.FontName = font.Name;
    dialog.FontSize = font.Size;
    dialog.FontBold = font.Bold;
    dialog.FontItalic = font.Italic;
    if (dialog.ShowFont() == ErrorCode::Cancel)
        return;
    Tag += which == Class::Html ? QStringLiteral("CH") : which == Class::Text ? QStringLiteral("CT") : QStringLiteral("CO");
    font.Size = qint16(dialog.FontSize); // whole points
    font.Name = dialog.FontName;
    font.Bold = dialog.FontBold;
    font.Italic = dialog.FontItalic;
    refreshSample(which);
}

void frmConfigure::chooseColor(Class which)
{
    FontClass &font = fontOf(which);
    CommonDialog &dialog = m_workspace.CMDialog1;
    dialog.Flags = 0;
    dialog.Color = font.Color;
    if (dialog.ShowColor() == ErrorCode::Cancel)
        return;
    Tag += which == Class::Html ? QStringLiteral("CH") : which == Class::Text ? QStringLiteral("CT") : QStringLiteral("CO");
    font.Color = dialog.Color;
    refreshSample(which);
}

void frmConfigure::refreshSample(Class which)
{
    if (which != Class::Html) {
        // The text font is under everything; the pass then puts the tags and comments over it.
        Text->setSelStart(0);
        Text->setSelLength(Text->TextLength());
        ApplyClassFont(*Text, false);
        Text->setSelLength(0);
    }
    HighlightPreview(m_workspace, *Text, m_workspace.fonts, QLatin1String(Caption));
    Text->classFontsChanged();
}

void frmConfigure::Command3_Click()
{
    CommonDialog &dialog = m_workspace.CMDialog1;
    dialog.Flags = 0;
    dialog.Color = m_workspace.backColor;
    if (dialog.ShowColor() == ErrorCode::Cancel)
        return;
    Tag += QStringLiteral("CB");
    Text->setBackColor(dialog.Color);
    m_workspace.backColor = Text->BackColor();
}

void frmConfigure::Command1_Click()
{
    hide();
    if (Tag.contains(QLatin1Char('C'), Qt::CaseInsensitive)) {
        LongPass pass(m_workspace, QStringLiteral("Updating documents..."), false);
        const bool text = Tag.contains(QLatin1Char('T'));
        const bool tagsOrComments = Tag.contains(QLatin1Char('H')) || Tag.contains(QLatin1Char('O'));
        for (const int slot : m_workspace.slots.openSlots()) {
            frmDoc *document = m_workspace.slots.document(slot);
            if (!document)
                continue;
            EditingSurface &surface = *document->Text;
            const int caret = surface.SelStart();
            const bool dirty = document->state().Dirty();
            if (text || tagsOrComments)
                surface.classFontsChanged();
            if (text) {
                surface.setSelStart(0);
                surface.setSelLength(surface.TextLength());
                ApplyClassFont(surface, false);
                HighlightDocument(m_workspace, *document);
            } else if (tagsOrComments) {
                HighlightDocument(m_workspace, *document);
            }
            if (Tag.contains(QLatin1Char('B')))
                surface.setBackColor(m_workspace.backColor);
            surface.setSelLength(0);
            surface.setSelStart(caret);
            document->state().setDirty(dirty);
        }
    }
    Form_Unload();
}

void frmConfigure::Command7_Click()
{
    m_workspace.fonts = LoadFontSettings();
    // The documents' classes follow the class fonts, so they show the stored ones again too.
    for (const int slot : m_workspace.slots.openSlots())
        if (frmDoc *document = m_workspace.slots.document(slot))
            document->Text->classFontsChanged();
    Form_Unload();
}

void frmConfigure::reject()
{
    Command7_Click();
}

void frmConfigure::closeEvent(QCloseEvent *event)
{
    if (!m_unloaded)
        Command7_Click();
    event->accept();
}

void frmConfigure::Form_Unload()
{
    if (m_unloaded)
        return;
    m_unloaded = true;
    hide();
    m_workspace.FocusCurrentDocument();
    deleteLater();
}

frmConfigure *ShowConfigure(Workspace &workspace, QWidget *parent)
{
    auto *dialog = new frmConfigure(workspace, parent);
    ShowCentred(*dialog);
    return dialog;
}

} // namespace pw
