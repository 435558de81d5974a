#pragma once

#include "core/font_class.h"
#include "core/formatted_fragment.h"

#include <QPlainTextEdit>

#include <functional>

namespace pw {

// The rich text box of a document (and the hidden scratch surface): plain text in which every
// character carries its class's font and colour.
//
// Positions count from 0 over Text, where a line end is CR LF and counts two; inside, the
// document holds one separator per line end, and positions are mapped in O(log n) by block.
// The surface keeps one level of undo of its own: the last edit, typed run, key or edit group can
// be undone, and undoing again undoes the undo. Format-only changes are never an undo step and
// raise no Change: colours are no content.
//
// Signals: Change, KeyDown and KeyPress must reach their handlers before the write or the key goes
// on (a pass restores Dirty after its writes; a key handler changes or drops the key), so they need
// direct connections, which the default gives on the one thread. The others may be queued.
class EditingSurface : public QPlainTextEdit
{
    Q_OBJECT

public:
    // Options of Find, summed.
    enum FindOption { WholeWord = 2, MatchCase = 4, NoHighlight = 8 };
    // Standard editing keys, which go to the program's own operations.
    enum class EditCommand { Copy, Cut, Paste, Undo };

    explicit EditingSurface(QWidget *parent = nullptr);
    ~EditingSurface() override;

    // --- Properties ----------------------------------------------------------------------
    QString Text() const; // the whole text, with CR LF line ends: a full copy
    void setText(const QString &text);
    // setText for a whole file: written in pieces (of about a megabyte), each ending at a line end
    // where there is one, with progress(done, total) after each; returning false stops the load,
    // leaving the surface as it was. The load is no undo step and the caret ends at 0. False when
    // stopped.
    bool loadText(const QString &text, const std::function<bool(qint64 done, qint64 total)> &progress,
                  qsizetype piece = qsizetype(1) << 20);
    int TextLength() const; // Len(Text), without copying
    QString Mid(int start, int length) const; // part of Text, without copying the rest

    int SelStart() const;
    void setSelStart(int position);
    int SelLength() const;
    void setSelLength(int length);
    QString SelText() const;
    void setSelText(const QString &text);
    QString SelRTF() const;
    void setSelRTF(const QString &fragment);

    // The class fonts the surface's characters take (the workspace's); set once, before use.
    void setClassFonts(const ClassFonts *fonts) { m_fonts = fonts; }
    const ClassFonts &classFonts() const { return *m_fonts; }
    // The selection, or what is typed or inserted next, takes a class font (or any font).
    void applyClassFont(bool isTag) { setSelFont(m_fonts->forTag(isTag)); }
    void applyCommentFont() { setSelFont(m_fonts->comment); }
    void setSelFont(const FontClass &font);
    // The format that typed or inserted text takes at the caret.
    FontClass caretFont() const;
    // The class font of the character at a position.
    FontClass fontAt(int position) const;
    // Gives [start, start + length) a font without moving the caret or the selection.
    void formatRange(int start, int length, const FontClass &font);

    // One step of a bulk pass. Ranges are surface positions.
    struct RangeEdit {
        enum Kind {
            MergeFont,      // the range takes `font`, as setSelFont on it would
            TakeLastFormat, // the range takes the format of its last character, as writing SelText would
            Rewrite,        // `text` (same length, no line ends) replaces the range, in its first
                            // character's format; recorded for undo
        };
        Kind kind = MergeFont;
        int start = 0;
        int length = 0;
        const FontClass *font = nullptr;
        QString text;
    };
    // Applies many edits as one: no caret movement, one change event, a single layout update.
    // Rewrites make one undo step (or join the EditGroup that is open). Fastest with ascending
    // ranges.
    void applyEdits(const QList<RangeEdit> &edits);

    qint32 BackColor() const { return m_backColor; }
    void setBackColor(qint32 color);
    double RightMargin() const { return m_rightMargin; }
    void setRightMargin(double twips) { m_rightMargin = twips; }
    double Width() const;
    double Height() const;

    // --- Methods ---------------------------------------------------------------------------
    int Find(const QString &target, int start = -1, int end = -1, int options = 0);
    void Span(const QString &characters, bool forward, bool negate);
    void UpTo(const QString &characters, bool forward = true, bool negate = false);
    // Where UpTo from `from` would stop, without moving the caret (so the view never scrolls).
    int upToStop(int from, const QString &characters, bool forward = true, bool negate = false) const;
    int GetLineFromChar(int position) const;
    void Refresh();
    bool SetFocus(); // false when the window can't take the focus

    // --- One-level undo -------------------------------------------------------------------------
    bool CanUndo() const { return !m_undo.isEmpty(); }
    bool Undo();
    void clearUndo();

    // Groups the writes of one command into one undo step (and one repaint).
    class EditGroup
    {
    public:
        explicit EditGroup(EditingSurface &surface);
        ~EditGroup();
        EditGroup(const EditGroup &) = delete;
        EditGroup &operator=(const EditGroup &) = delete;

    private:
        EditingSurface &m_surface;
    };

    // Holds back change and selection events during a pass; one of each is raised at the end if
    // anything changed.
    class EventBatch
    {
    public:
        explicit EventBatch(EditingSurface &surface);
        ~EventBatch();
        EventBatch(const EventBatch &) = delete;
        EventBatch &operator=(const EventBatch &) = delete;

    private:
        EditingSurface &m_surface;
    };

    // The key code of the platform for a Qt key (F1 = 112, Escape = 27, 'A' = 65, ...), and the
    // shift state (1 Shift, 2 Ctrl, 4 Alt).
    static int keyCodeOf(int qtKey);
    static int shiftStateOf(Qt::KeyboardModifiers modifiers);

Q_SIGNALS:
    void Change();                       // the text changed, by anyone
    void SelChange();                    // selection or caret moved
    void KeyDown(int keyCode, int shift, bool *swallow);
    void KeyPress(int *keyAscii);        // set to 0 to drop the key
    void MouseUp(int button, int shift, int x, int y);
    void GotFocus();
    void editCommand(pw::EditingSurface::EditCommand command);
    // There is an undo step now, or none any more; raised after the step is complete.
    void CanUndoChanged(bool canUndo);

protected:
    bool event(QEvent *e) override;
    void keyPressEvent(QKeyEvent *e) override;
    void inputMethodEvent(QInputMethodEvent *e) override;
    void mouseReleaseEvent(QMouseEvent *e) override;
    void focusInEvent(QFocusEvent *e) override;
    void dropEvent(QDropEvent *e) override;
    bool canInsertFromMimeData(const QMimeData *source) const override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    struct UndoOp {
        int position = 0;            // document position
        FormattedFragment removed;   // what stood there before
        int inserted = 0;            // document characters that replaced it
    };
    struct UserEdit;
    friend class EditGroup;
    friend class EventBatch;

    int toDocument(int position) const;
    int toSurface(int documentPosition) const;
    FormattedFragment selectionFragment() const;
    void insertFragment(const FormattedFragment &fragment); // replaces the selection
    void onContentsChange(int position, int removed, int added);
    void adoptDocument(QTextDocument *loaded);
    void onCursorMoved();
    void replaceRange(int from, int to, const FormattedFragment &with);
    void recordOp(UndoOp op, bool typing);
    void openStep();
    void closeStep(bool typing);
    void commitStep(QList<UndoOp> ops, bool typing);
    void setUndo(QList<UndoOp> ops);
    void mergeFormat(const QTextCharFormat &format);
    template<typename F> void asUserEdit(bool typing, F &&edit);
    void handleKey(QKeyEvent *e);
    QTextCursor cursorFor(int docFrom, int docTo) const;
    int stopForward(int from, const QString &set, bool stopInSet) const;
    int stopBackward(int from, const QString &set, bool stopInSet) const;

    const ClassFonts *m_fonts = nullptr;
    QList<UndoOp> m_undo;
    QList<UndoOp> m_group;
    int m_groupDepth = 0;
    bool m_lastWasTyping = false;
    int m_internal = 0;             // >0 while the surface itself edits
    int m_formatOnly = 0;           // >0 while an edit changes formats only
    UserEdit *m_userEdit = nullptr; // set while a user's key, drop or input method edits
    int m_docChars = 1;             // characterCount() as of the last change
    int m_batchDepth = 0;
    bool m_batchedChange = false;
    bool m_batchedSel = false;
    qint32 m_backColor = 0;
    double m_rightMargin = 0;
};

// ApplyClassFont and ApplyCommentFont act on the selection or the caret of a surface.
inline void ApplyClassFont(EditingSurface &surface, bool isTag) { surface.applyClassFont(isTag); }
inline void ApplyCommentFont(EditingSurface &surface) { surface.applyCommentFont(); }

// Turns any line ends into CR LF, as the surface holds them.
QString normalizeLineEnds(const QString &text);

} // namespace pw
