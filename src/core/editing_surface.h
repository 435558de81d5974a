#pragma once

#include "core/class_bytes.h"
#include "core/font_class.h"
#include "core/formatted_fragment.h"

#include <QPlainTextEdit>
#include <QTextBlock>
#include <QTextLayout>

#include <functional>
#include <vector>

class QStringMatcher;

namespace pw {

// The rich text box of a document (and the hidden scratch surface): plain text in which every
// character carries its class's font and colour.
//
// Positions count from 0 over Text, where a line end is CR LF and counts two; inside, the
// document holds one separator per line end, and positions are mapped in O(log n) by block.
// A loaded line longer than DisplayBlock characters is held in display blocks of bounded length
// (broken after a '>' or a blank where one is near), joined by separators that count nothing in
// Text, SelStart, Find, saving, copying or undo: only the shown blocks of such a line are ever laid
// out, and an edit lays out one block, not the line. The breaks' document positions are kept sorted
// beside the text and moved with every edit.
//
// Character classes: one class byte per character, kept beside the text (a gap buffer over the
// document's characters) and moved with every edit through the document's change signal; the
// document itself holds no character formats. The class fonts reach the screen as layout formats
// of the blocks that are laid out and shown, made from the bytes when a block is laid out, never by
// running a lexer again; a change of the class fonts re-lays out only what is shown. A colour pass is
// a scan that writes bytes: no cursor per tag, no undo step, no layout of hidden blocks. Bytes 1 to
// 3 are the text, tag and comment classes (following the class fonts as they change), 0 the
// surface's own font, and higher ones any other font the surface was given.
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
    // The longest display block a loaded line is held in.
    static constexpr int DisplayBlock = 4096;
    // Standard editing keys, which go to the program's own operations.
    enum class EditCommand { Copy, Cut, Paste, Undo };

    explicit EditingSurface(QWidget *parent = nullptr);
    ~EditingSurface() override;

    // --- Properties ----------------------------------------------------------------------
    QString Text() const; // the whole text, with CR LF line ends: a full copy
    // The text in stretches, each followed by a line end or not, without a copy of the whole.
    void textPieces(const std::function<void(QStringView stretch, bool lineEnd)> &take) const;
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
    void setClassFonts(const ClassFonts *fonts);
    // The class fonts changed: what is shown is laid out again in them.
    void classFontsChanged();
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
            Rewrite,        // `text` replaces the range (lengths may differ, line ends are CR LF),
                            // in its first character's format; recorded for undo
        };
        Kind kind = MergeFont;
        int start = 0;
        int length = 0;
        const FontClass *font = nullptr;
        QString text;
    };
    // Applies many edits as one: one change event, a single layout update. Font edits only write
    // class bytes; the rewrites (ascending, not overlapping) go in as one replacement of the stretch
    // from the first to the last, one undo step (or part of the EditGroup that is open). The caret
    // stays where it stood when the lengths don't change; otherwise it ends behind the last rewrite.
    // Fastest with ascending ranges.
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
    // Where line `line` (from 0; lines end in CR LF, whatever their display blocks) starts in Text;
    // past the last line, the end.
    int lineStart(int line) const;
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
    friend class ClassLayout;
    enum ClassCode : uchar { NoClass = 0, TextClass = 1, TagClass = 2, CommentClass = 3, FirstOther = 4 };
    struct UndoOp {
        int position = 0;            // document position
        FormattedFragment removed;   // what stood there before
        int inserted = 0;            // document characters that replaced it
    };
    struct UserEdit;
    friend class EditGroup;
    friend class EventBatch;

    // --- Classes (editing_surface_classes.cpp) ---
    uchar codeFor(const FontClass &font);
    FontClass fontOf(uchar code) const;
    const QTextCharFormat &formatOf(uchar code) const;
    uchar codeAt(int documentPosition) const; // what a cursor there reports
    uchar caretCode() const;
    QByteArray codesOf(const FormattedFragment &fragment);
    FormattedFragment capture(int from, int to) const;
    void setCodes(int from, int to, uchar code); // document positions
    void restyleAll();
    void restyleAround(int from, int to);
    QList<QTextLayout::FormatRange> layoutFormats(const QTextBlock &block) const;
    void setCursor(const QTextCursor &cursor); // setTextCursor, which drops the caret's own class

    int toDocument(int position) const;
    int toSurface(int documentPosition) const;
    // Display breaks (document positions of separators that are no line end).
    int breaksBefore(int documentPosition) const;
    bool isBreak(int documentPosition) const;
    int surfaceStart(const QTextBlock &block) const; // where the block starts in Text
    // Its length in Text, with its CR LF if any; walks pass the block's document position, which
    // they count as they go (asking the block for it costs a search).
    int lineSpan(const QTextBlock &block, int documentPosition) const;
    void moveBreaks(int position, int removed, int added);
    void addBreaks(int position, const QList<int> &offsets);
    FormattedFragment selectionFragment() const;
    void insertFragment(const FormattedFragment &fragment); // replaces the selection
    void onContentsChange(int position, int removed, int added);
    // A block's text, kept for the next call until the document changes: searches that go on in
    // one long line would otherwise copy the whole line for every hit.
    const QString &lineText(const QTextBlock &block) const;
    // Find's search far from its start: the document read in pieces of FarSearch characters (one
    // allocation per piece, not per line). Document positions in, a Text position or -1 out.
    static constexpr int FarSearch = 1 << 16; // characters read line by line before pieces
    int findInPieces(const QStringMatcher &matcher, int docFrom, int size, int to,
                     const std::function<bool(int)> &accept) const;
    void adoptDocument(QTextDocument *loaded);
    void onCursorMoved();
    void replaceRange(int from, int to, const FormattedFragment &with);
    void recordOp(UndoOp op, bool typing);
    void openStep();
    void closeStep(bool typing);
    void commitStep(QList<UndoOp> ops, bool typing);
    void setUndo(QList<UndoOp> ops);
    template<typename F> void asUserEdit(bool typing, F &&edit);
    void handleKey(QKeyEvent *e);
    bool stepOverBreak(QKeyEvent *e);
    QTextCursor cursorFor(int docFrom, int docTo) const;
    int stopForward(int from, const QString &set, bool stopInSet) const;
    int stopBackward(int from, const QString &set, bool stopInSet) const;

    const ClassFonts *m_fonts = nullptr;
    QList<UndoOp> m_undo;
    QList<UndoOp> m_group;
    int m_groupDepth = 0;
    bool m_lastWasTyping = false;
    int m_internal = 0;             // >0 while the surface itself edits
    ClassBytes m_classes;           // one per document character but the last separator
    std::vector<int> m_breaks;      // display breaks, ascending
    QList<FontClass> m_otherFonts;  // the fonts of codes from FirstOther on
    int m_caretCode = -1;           // the class set at the caret, until the caret moves
    int m_caretCodeAt = -1;
    uchar m_firstLineCode = NoClass; // an empty first line's own class
    int m_insertCode = -1;          // the class of what a user's edit inserts
    const QByteArray *m_incoming = nullptr; // the classes of what the surface inserts
    int m_bytesKept = 0;            // >0 while the surface moves the bytes itself
    int m_restyling = 0;            // >0 while a block's layout formats are set
    int m_generation = 0;           // blocks whose layout formats are older are restyled
    mutable int m_cachedLine = -1; // block number of m_lineText, -1: none
    mutable QString m_lineText;
    mutable int m_formatsGeneration = -1;
    mutable QList<QTextCharFormat> m_formats; // by code
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
