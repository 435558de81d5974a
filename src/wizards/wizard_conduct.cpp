#include "wizards/wizard_conduct.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/status_line.h"
#include "core/workspace.h"
#include "markup/tag_placement.h"
#include "platform/dialog_look.h"
#include "platform/message_box.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QWidget>

#include <cmath>

namespace pw {

namespace {

constexpr int HideReadOnly = 4; // the open dialog's flag that hides the read-only box

} // namespace

WizardForm::WizardForm(Workspace &workspace, QWidget *parent, const QString &caption)
    : QDialog(parent), m_workspace(workspace)
{
    SetDialogLook(*this);
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(caption);
}

void WizardForm::Form_Unload()
{
    hide();
    m_workspace.FocusCurrentDocument();
}

void WizardForm::done(int result)
{
    QDialog::done(result);
    Form_Unload();
}

void WizardForm::layOutTabs(QWidget *tabs, QPushButton *close)
{
    auto *bottom = new QHBoxLayout;
    bottom->addStretch();
    bottom->addWidget(close);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(tabs);
    layout->addLayout(bottom);
    for (QPushButton *button : findChildren<QPushButton *>())
        button->setAutoDefault(false);
}

void WizardForm::refuse(const QString &text, int style, QWidget *field)
{
    m_workspace.MsgBox(text, style);
    if (field)
        field->setFocus();
}

void ShowWizard(WizardForm &form)
{
    form.Form_Load();
    ShowCentred(form);
}

bool MayReplaceSelection(Workspace &workspace)
{
    const frmDoc *document = workspace.current();
    if (!document || document->Text->SelLength() < 1)
        return true;
    return ConfirmSelectionReplace(workspace) != MsgAnswer::No;
}

void WritePiece(EditingSurface &surface, const MarkupPiece &piece)
{
    ApplyClassFont(surface, piece.isTag);
    surface.setSelText(piece.text);
}

PieceBatch::PieceBatch(EditingSurface &surface)
    : m_surface(surface), m_tag(surface.classFonts().html), m_text(surface.classFonts().text)
{
}

void PieceBatch::add(const MarkupPiece &piece)
{
    m_fragment.append(QString(piece.text).replace(LineEnd, QStringLiteral("\n")), piece.isTag ? m_tag : m_text);
}

void PieceBatch::write()
{
    m_surface.setSelRTF(m_fragment.serialize());
}

void PlacePieces(Workspace &workspace, frmDoc &document, const QList<MarkupPiece> &pieces)
{
    EditingSurface &surface = *document.Text;
    EditingSurface::EditGroup oneStep(surface);
    if (!workspace.options.isChecked(Option::Highlight)) {
        QString all;
        for (const MarkupPiece &piece : pieces)
            all += piece.text;
        surface.setSelText(all);
        return;
    }
    // One fragment instead of a write per piece: a long list stays one change of the document.
    PieceBatch batch(surface);
    for (const MarkupPiece &piece : pieces)
        batch.add(piece);
    batch.write();
    ApplyClassFont(surface, false);
}

LongGeneration::LongGeneration(Workspace &workspace, QDialog &dialog, frmDoc &document, const QString &statusText)
    : m_pass(workspace, statusText), m_oneStep(*document.Text)
{
    dialog.hide();
    document.repaint();
}

LongGeneration::~LongGeneration() = default;

void FillFromPreviousList(QComboBox &combo, const QStringList &list)
{
    combo.clear();
    for (const QString &entry : list) {
        if (entry.isEmpty())
            break;
        combo.addItem(entry);
    }
    combo.setCurrentIndex(-1);
    combo.setEditText(QString());
}

void RememberInPreviousList(QStringList &list, const QString &value, int capacity)
{
    if (value.isEmpty())
        return; // an empty entry would end the list for every reader
    qsizetype used = 0;
    while (used < list.size() && used < capacity && !list.at(used).isEmpty())
        ++used;
    if (list.first(used).contains(value))
        return;
    list = list.first(used);
    list.prepend(value);
    if (list.size() > capacity)
        list.resize(capacity);
}

QString BrowseForFile(Workspace &workspace, QString &history, const QString &title, const QString &filter)
{
    CommonDialog &dialog = workspace.CMDialog1;
    dialog.Flags = HideReadOnly;
    dialog.DialogTitle = title;
    dialog.Filter = filter;
    dialog.FilterIndex = 1;
    dialog.InitDir.clear();
    dialog.FileName = history;
    if (dialog.ShowOpen() == ErrorCode::Cancel)
        return {};
    history = dialog.FileName;
    return dialog.FileName;
}

QString BrowsedReference(const QString &chosen, bool useBaseReference, const QString &basePath, QChar separator)
{
    if (useBaseReference)
        return UrlFromPath(MakeRelativeUrl(basePath, chosen, separator), separator);
    return UrlFromPath(chosen, separator);
}

std::optional<int> BoxNumber(const QString &text, int low, int high)
{
    if (!IsNumeric(text))
        return std::nullopt;
    const double value = std::round(text.trimmed().toDouble());
    return int(qBound(double(low), value, double(high)));
}

} // namespace pw
