#pragma once

#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "wizards/path_rule.h"

#include <QDialog>
#include <QPushButton>
#include <QList>
#include <QString>
#include <QStringList>

#include <optional>

class QComboBox;

namespace pw {

class Workspace;
class frmDoc;

// What every wizard does alike. A wizard is a dialog made fresh for each use (its Form_Load sets
// every field), centred and shown window-modal with open(), so that it may hide itself during a
// long generation; it is deleted when it closes. Closing by any way gives the focus back to the
// current document, so that typing goes on at the caret.
class WizardForm : public QDialog
{
    Q_OBJECT

public:
    WizardForm(Workspace &workspace, QWidget *parent, const QString &caption);

    // Runs inside the show, before the form is first drawn.
    virtual void Form_Load() {}

protected:
    // Hides the form and gives the focus back to the current document.
    void Form_Unload();
    // The OK path's end: unloads the form, which goes.
    void unload() { accept(); }
    // A validation failure: the message titled AppTitle, the focus on the field at fault, the
    // dialog left open.
    void refuse(const QString &text, int style, QWidget *field);
    void done(int result) override;
    // A tabbed wizard's layout: the tabs, and under them on the right the button that closes it. Enter
    // presses a tab's own default button only, never one the focus happened to pick.
    void layOutTabs(QWidget *tabs, QPushButton *close);

    Workspace &m_workspace;
};

// Makes a fresh wizard, runs its Form_Load, centres it and shows it modally over parent.
template<typename Form, typename... Args>
Form *OpenWizard(Workspace &workspace, QWidget *parent, Args &&...args)
{
    auto *form = new Form(workspace, parent, std::forward<Args>(args)...);
    ShowWizard(*form);
    return form;
}
void ShowWizard(WizardForm &form);

// Asked when the OK button would replace a selection of the current document: false at No, when
// nothing is placed and the dialog stays open. (Wizards that ask before they open use
// SelectionMayBeReplaced of the tag placement.)
bool MayReplaceSelection(Workspace &workspace);

// One piece of a generated construct: markup goes in the tag font, content in the text font.
struct MarkupPiece {
    QString text;
    bool isTag = true;
    bool operator==(const MarkupPiece &) const = default;
};

// Writes a piece at the caret of a surface in its class font; the caret ends behind it.
void WritePiece(EditingSurface &surface, const MarkupPiece &piece);

// A long construct's pieces, gathered and written at the caret at once: the same text in the same
// class fonts as writing them one by one, for one change of the document instead of thousands.
class PieceBatch
{
public:
    explicit PieceBatch(EditingSurface &surface);
    void add(const MarkupPiece &piece);
    // Replaces the selection with the pieces; the caret ends behind them, in the last one's font.
    void write();

private:
    EditingSurface &m_surface;
    FormattedFragment m_fragment;
    FontClass m_tag;
    FontClass m_text;
};

// Writes pieces at the caret as placing them one by one would: tags as PlaceSingleTag does (in the
// tag font when colouring is on), texts straight into the selection (the text font PlaceSingleTag
// leaves behind), or all of them in the caret's font when colouring is off. They replace the
// selection as one change and one undo step; the caret ends behind them.
void PlacePieces(Workspace &workspace, frmDoc &document, const QList<MarkupPiece> &pieces);

// The long generation of a wizard: wait cursor, the wizard's status text, the progress strip from 0,
// the dialog hidden and the document repainted where the dialog stood. Everything is reset when it
// ends, by any way; the writes between are one undo step.
class LongGeneration
{
public:
    LongGeneration(Workspace &workspace, QDialog &dialog, frmDoc &document, const QString &statusText);
    ~LongGeneration();
    LongGeneration(const LongGeneration &) = delete;
    LongGeneration &operator=(const LongGeneration &) = delete;

    // The strip shows the whole per cent of done / total, repainted only when that changes.
    void step(qint64 done, qint64 total) { m_pass.step(done, total); }

private:
    LongPass m_pass;
    EditingSurface::EditGroup m_oneStep;
};

// Previous lists in combo boxes: filled with the positions in use, up to the first empty one, with
// an empty text to start; after the placing, a value not on the list goes to position 1, the others
// moving down and the last of `capacity` falling off. A value on the list keeps its place; an empty
// one never goes on it.
void FillFromPreviousList(QComboBox &combo, const QStringList &list);
void RememberInPreviousList(QStringList &list, const QString &value, int capacity);

// A browse button: the open dialog of CMDialog1 without its read-only box, starting from the
// remembered name in `history` (a setting of the History section), which takes the chosen file.
// Empty when the dialog was cancelled (32755), and then nothing changes.
QString BrowseForFile(Workspace &workspace, QString &history, const QString &title, const QString &filter);
// What a browse button writes into its field: with the base reference check box on, the chosen
// file relative to the base path, else the chosen file itself, either as a URL.
QString BrowsedReference(const QString &chosen, bool useBaseReference, const QString &basePath,
                         QChar separator = QDir::separator());
// The caption of the base reference check boxes.
inline const QString BaseReferenceCaption = QStringLiteral("Use base reference on paths when possible");

// A numeric box's whole number: numeric text (IsNumeric) rounded to the nearest integer and held in
// [low, high]; nothing for text that isn't numeric.
std::optional<int> BoxNumber(const QString &text, int low, int high);

} // namespace pw
