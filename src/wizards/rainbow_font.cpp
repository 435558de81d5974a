#include "wizards/rainbow_font.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/workspace.h"
#include "platform/message_box.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <cmath>

namespace pw {

namespace {

double number(const QString &text)
{
    return text.trimmed().toDouble();
}

int whole(const QString &text)
{
    return int(std::lround(number(text)));
}

bool outside(const QString &text, double low, double high)
{
    const double value = number(text);
    return value < low || value > high;
}

// The characters a run must take along behind its end: a LF behind a CR, the low half of a pair,
// combining marks.
bool mustFollow(QChar before, QChar next)
{
    if (before == QLatin1Char('\r') && next == QLatin1Char('\n'))
        return true;
    if (before.isHighSurrogate() && next.isLowSurrogate())
        return true;
    const auto category = next.category();
    return category == QChar::Mark_NonSpacing || category == QChar::Mark_SpacingCombining
           || category == QChar::Mark_Enclosing;
}

} // namespace

RainbowFault CheckRainbowOptions(const RainbowOptions &o)
{
    using F = RainbowFault;
    if (!IsNumeric(o.min))
        return F::MinNotNumeric;
    if (outside(o.min, 1, 7))
        return F::MinRange;
    if (!IsNumeric(o.max))
        return F::MaxNotNumeric;
    if (outside(o.max, 1, 7))
        return F::MaxRange;
    if (!(o.min < o.max)) // as texts
        return F::MaxNotGreater;
    if (!IsNumeric(o.start))
        return F::StartNotNumeric;
    if (outside(o.start, 1, 7))
        return F::StartRange;
    if (!IsNumeric(o.variance))
        return F::VarianceNotNumeric;
    if (outside(o.variance, 1, 6))
        return F::VarianceRange;
    if (!IsNumeric(o.change))
        return F::ChangeNotNumeric;
    if (number(o.change) < 1)
        return F::StepBelowOne; // a smaller step would never end
    if (o.text.isEmpty())
        return F::NoText;
    if (number(o.change) > o.text.size())
        return F::ChangeTooLong;
    return F::None;
}

QString RainbowMessage(RainbowFault fault)
{
    using F = RainbowFault;
    switch (fault) {
    case F::None: break;
    case F::MinNotNumeric: return QStringLiteral("Minimum size must be numeric!");
    case F::MinRange: return QStringLiteral("Minimum size must between 1 and 7!");
    case F::MaxNotNumeric: return QStringLiteral("Maximum size must be numeric!");
    case F::MaxRange: return QStringLiteral("Maximum size must between 1 and 7!");
    case F::MaxNotGreater: return QStringLiteral("Maximum size must be greater then Minimum size!");
    case F::StartNotNumeric: return QStringLiteral("Starting size must be numeric!");
    case F::StartRange: return QStringLiteral("Starting size must between 1 and 7!");
    case F::VarianceNotNumeric: return QStringLiteral("Variance must be numeric!");
    case F::VarianceRange: return QStringLiteral("Variance must between 1 and 6!");
    case F::ChangeNotNumeric: return QStringLiteral("Change every must be numeric!");
    case F::StepBelowOne: return QStringLiteral("Change every must be at least 1!");
    case F::NoText: return QStringLiteral("No text supplied!");
    case F::ChangeTooLong:
        return QStringLiteral("The current setting for Change every") + LineEnd
               + QStringLiteral("will not result in any font change before") + LineEnd + QStringLiteral("the text will end!");
    }
    return {};
}

QList<MarkupPiece> RainbowPieces(const RainbowOptions &o)
{
    const int min = whole(o.min), max = whole(o.max), variance = whole(o.variance);
    const int step = qMax(1, whole(o.change));
    int size = whole(o.start);
    bool up = true;
    const QString &text = o.text;
    QList<MarkupPiece> pieces;
    pieces.reserve(3 * (text.size() / step + 1));
    for (qsizetype at = 0; at < text.size();) {
        qsizetype end = qMin(at + step, text.size());
        while (end < text.size() && mustFollow(text[end - 1], text[end]))
            ++end;
        pieces.append({QStringLiteral("<FONT SIZE=%1>").arg(size), true});
        pieces.append({text.mid(at, end - at), false});
        pieces.append({QStringLiteral("</FONT>"), true});
        at = end;
        if (up) {
            size += variance;
            if (size > max) {
                size = max;
                up = false;
            }
        } else {
            size -= variance;
            if (size < min) {
                size = min;
                up = true;
            }
        }
    }
    return pieces;
}

frmRainBow::frmRainBow(Workspace &workspace, QWidget *parent)
    : WizardForm(workspace, parent, QStringLiteral("Rainbow Font Wizard"))
{
    const auto box = [this](const char *name) {
        auto *edit = new QLineEdit(this);
        edit->setObjectName(QLatin1String(name));
        return edit;
    };
    tbMin = box("tbMin");
    tbMax = box("tbMax");
    tbStart = box("tbStart");
    tbVar = box("tbVar");
    tbChange = box("tbChange");
    tbText = box("tbText");
    tbText->setMinimumWidth(320);
    Command1 = new QPushButton(QStringLiteral("&OK"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setDefault(true);
    Command2 = new QPushButton(QStringLiteral("&Cancel"), this);
    Command2->setObjectName(QStringLiteral("Command2"));

    auto *frame = new QGroupBox(QStringLiteral("Rainbow Settings"), this);
    auto *fields = new QFormLayout(frame);
    fields->addRow(QStringLiteral("Min. Size:"), tbMin);
    fields->addRow(QStringLiteral("Max. Size:"), tbMax);
    fields->addRow(QStringLiteral("Starting Size:"), tbStart);
    fields->addRow(QStringLiteral("Variance:"), tbVar);
    auto *changeRow = new QHBoxLayout;
    changeRow->addWidget(tbChange);
    changeRow->addWidget(new QLabel(QStringLiteral("Chars."), frame));
    fields->addRow(QStringLiteral("Change every:"), changeRow);
    auto *textRow = new QFormLayout;
    textRow->addRow(QStringLiteral("TEXT:"), tbText);
    auto *buttons = new QDialogButtonBox(this);
    buttons->addButton(Command1, QDialogButtonBox::AcceptRole);
    buttons->addButton(Command2, QDialogButtonBox::RejectRole);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(frame);
    layout->addLayout(textRow);
    layout->addWidget(buttons);

    connect(Command1, &QPushButton::clicked, this, &frmRainBow::Command1_Click);
    connect(Command2, &QPushButton::clicked, this, &QDialog::reject);
}

void frmRainBow::Form_Load()
{
    const RainbowOptions defaults;
    tbMin->setText(defaults.min);
    tbMax->setText(defaults.max);
    tbStart->setText(defaults.start);
    tbVar->setText(defaults.variance);
    tbChange->setText(defaults.change);
    const frmDoc *document = m_workspace.current();
    tbText->setText(document && document->Text->SelLength() != 0 ? document->Text->SelText() : QString());
}

RainbowOptions frmRainBow::options() const
{
    return {tbMin->text(), tbMax->text(), tbStart->text(), tbVar->text(), tbChange->text(), tbText->text()};
}

void frmRainBow::Command1_Click()
{
    const RainbowOptions o = options();
    const RainbowFault fault = CheckRainbowOptions(o);
    if (fault != RainbowFault::None) {
        using F = RainbowFault;
        QLineEdit *field = tbText;
        switch (fault) {
        case F::MinNotNumeric: case F::MinRange: field = tbMin; break;
        case F::MaxNotNumeric: case F::MaxRange: case F::MaxNotGreater: field = tbMax; break;
        case F::StartNotNumeric: case F::StartRange: field = tbStart; break;
        case F::VarianceNotNumeric: case F::VarianceRange: field = tbVar; break;
        case F::ChangeNotNumeric: case F::StepBelowOne: case F::ChangeTooLong: field = tbChange; break;
        default: break;
        }
        refuse(RainbowMessage(fault), MsgStyle::Exclamation, field);
        return;
    }
    if (frmDoc *document = m_workspace.current()) {
        LongGeneration generation(m_workspace, *this, *document, QStringLiteral("Building Rainbow Font structure..."));
        EditingSurface &surface = *document->Text;
        // Tags and text in their class fonts when tags are coloured, else all in the caret's font.
        const bool colour = m_workspace.options.isChecked(Option::Highlight);
        const FontClass plain = surface.caretFont();
        const FontClass &tagFont = colour ? surface.classFonts().html : plain;
        const FontClass &textFont = colour ? surface.classFonts().text : plain;
        FormattedFragment fragment;
        for (const MarkupPiece &piece : RainbowPieces(o))
            fragment.append(QString(piece.text).replace(LineEnd, QStringLiteral("\n")), piece.isTag ? tagFont : textFont);
        surface.setSelRTF(fragment.serialize());
    }
    unload();
}

void ShowRainbowWizard(Workspace &workspace, QWidget *parent)
{
    OpenWizard<frmRainBow>(workspace, parent);
}

} // namespace pw
