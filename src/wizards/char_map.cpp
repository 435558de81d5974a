#include "wizards/char_map.h"

#include "core/document_window.h"
#include "core/workspace.h"
#include "markup/tag_placement.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace pw {

namespace {

// Entity names of 192 to 255 in code order; 215 and 247 (times, divide) have none here.
const char *const LetterNames[] = {
    "Agrave", "Aacute", "Acirc", "Atilde", "Auml", "Aring", "AElig", "Ccedil", "Egrave", "Eacute", "Ecirc",
    "Euml", "Igrave", "Iacute", "Icirc", "Iuml", "ETH", "Ntilde", "Ograve", "Oacute", "Ocirc", "Otilde",
    "Ouml", nullptr, "Oslash", "Ugrave", "Uacute", "Ucirc", "Uuml", "Yacute", "THORN", "szlig", "agrave",
    "aacute", "acirc", "atilde", "auml", "aring", "aelig", "ccedil", "egrave", "eacute", "ecirc", "euml",
    "igrave", "iacute", "icirc", "iuml", "eth", "ntilde", "ograve", "oacute", "ocirc", "otilde", "ouml",
    nullptr, "oslash", "ugrave", "uacute", "ucirc", "uuml", "yacute", "thorn", "yuml"};
static_assert(std::size(LetterNames) == 64);

const char *entityName(int code)
{
    switch (code) {
    case 160: return "nbsp";
    case 169: return "copy";
    case 174: return "reg";
    default: return code >= 192 ? LetterNames[code - 192] : nullptr;
    }
}

} // namespace

QStringList CharMapEntries()
{
    QStringList entries;
    for (int code = 160; code <= 255; ++code) {
        QString entry = QChar(code) + QStringLiteral(" - &#%1;").arg(code);
        if (const char *name = entityName(code))
            entry += QStringLiteral("  &") + QLatin1String(name) + QLatin1Char(';');
        entries.append(entry);
    }
    return entries;
}

QString CharMapCode(const QString &entry, bool descriptive)
{
    if (entry.size() > 13 && descriptive)
        return entry.mid(12);
    return entry.mid(4, 6);
}

frmChar::frmChar(Workspace &workspace, QWidget *parent) : WizardForm(workspace, parent, QStringLiteral("Character Map"))
{
    lstChar = new QListWidget(this);
    lstChar->setObjectName(QStringLiteral("lstChar"));
    lstChar->setMinimumSize(260, 300);
    auto *frame = new QGroupBox(this);
    auto *options = new QHBoxLayout(frame);
    static const char *const captions[] = {"Number code", "Descriptive code"};
    for (int i = 0; i < 2; ++i) {
        Option1[i] = new QRadioButton(QLatin1String(captions[i]), frame);
        Option1[i]->setObjectName(QStringLiteral("Option1(%1)").arg(i));
        options->addWidget(Option1[i]);
    }
    auto *label = new QLabel(QStringLiteral("Double click to paste character code."), this);
    label->setObjectName(QStringLiteral("Label1"));
    Command1 = new QPushButton(QStringLiteral("&Done"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setDefault(true);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(lstChar);
    layout->addWidget(frame);
    layout->addWidget(label);
    layout->addWidget(Command1, 0, Qt::AlignRight);

    connect(lstChar, &QListWidget::itemDoubleClicked, this, &frmChar::lstChar_DblClick);
    connect(Command1, &QPushButton::clicked, this, &QDialog::accept);
}

void frmChar::Form_Load()
{
    lstChar->addItems(CharMapEntries());
    Option1[0]->setChecked(true);
}

void frmChar::lstChar_DblClick()
{
    const QListWidgetItem *item = lstChar->currentItem();
    frmDoc *document = m_workspace.current();
    if (!item || !document)
        return;
    PlaceSingleTag(m_workspace, *document, CharMapCode(item->text(), Option1[1]->isChecked()));
    lstChar->setFocus(); // more characters may follow
}

void ShowCharMap(Workspace &workspace, QWidget *parent)
{
    OpenWizard<frmChar>(workspace, parent);
}

} // namespace pw
