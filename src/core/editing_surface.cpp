#include "core/editing_surface.h"

#include "core/display_blocks.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QTextBlock>
#include <QTextLayout>

#include <optional>

namespace pw {

namespace {

constexpr double kTwipsPerPixel = 15.0;

} // namespace

QString normalizeLineEnds(const QString &text)
{
    QString t = text;
    t.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    t.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    t.replace(QLatin1String("\n"), QLatin1String("\r\n"));
    return t;
}

// A user's key, drop or input-method edit. Before it runs, a bounded stretch around the selection
// is kept; each change the control then makes is recorded for undo from that copy, which is kept in
// step by splicing in what was added. A change that reaches outside the copy can't be undone and
// clears the undo. Plain typing, which removes nothing, keeps no copy at all.
struct EditingSurface::UserEdit {
    static constexpr int Reach = 1024; // characters kept on either side of the selection

    int windowStart = 0;
    FormattedFragment window;
    QList<UndoOp> ops;
    bool valid = true;

    void take(const EditingSurface *surface, int position, int removed, int added)
    {
        if (!valid)
            return;
        const int windowEnd = windowStart + int(window.text.size());
        if (removed == 0) {
            ops.append({position, {}, added});
            if (position < windowStart)
                windowStart += added;
            else if (position <= windowEnd)
                splice(surface, position, 0, added);
        } else if (position >= windowStart && position + removed <= windowEnd) {
            ops.append({position, window.mid(position - windowStart, removed), added});
            splice(surface, position, removed, added);
        } else {
            valid = false;
        }
    }

private:
    void splice(const EditingSurface *surface, int position, int removed, int added)
    {
        const int offset = position - windowStart;
        FormattedFragment spliced = window.mid(0, offset);
        spliced.append(surface->capture(position, position + added));
        spliced.append(window.mid(offset + removed, int(window.text.size()) - offset - removed));
        window = std::move(spliced);
    }
};

EditingSurface::EditingSurface(QWidget *parent) : QPlainTextEdit(parent)
{
    setObjectName(QStringLiteral("Text"));
    setContextMenuPolicy(Qt::NoContextMenu);
    static const ClassFonts plainFonts;
    m_fonts = &plainFonts;
    setLineWrapMode(QPlainTextEdit::WidgetWidth);
    // The setting's colour comes from the document window; until then the style's own stands.
    m_backColor = valueFromColor(palette().color(QPalette::Base));
    auto *first = new QTextDocument(this);
    first->setUndoRedoEnabled(false);
    first->setDefaultFont(document()->defaultFont());
    adoptDocument(first);
    m_classes.reset(0, NoClass);
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, &EditingSurface::onCursorMoved);
    connect(this, &QPlainTextEdit::selectionChanged, this, &EditingSurface::onCursorMoved);
}

EditingSurface::~EditingSurface() = default;

// --- Mapping ----------------------------------------------------------------------------------

QTextCursor EditingSurface::cursorFor(int docFrom, int docTo) const
{
    QTextCursor c(document());
    c.setPosition(docFrom);
    c.setPosition(docTo, QTextCursor::KeepAnchor);
    return c;
}

// --- Text -------------------------------------------------------------------------------------

void EditingSurface::textPieces(const std::function<void(QStringView, bool)> &take) const
{
    const QString raw = document()->toRawText();
    const QStringView all(raw);
    auto nextBreak = m_breaks.begin();
    qsizetype from = 0;
    const QChar separator(QChar::ParagraphSeparator); // QString's search for one character: the quickest
    for (qsizetype end = raw.indexOf(separator); end >= 0; end = raw.indexOf(separator, from)) {
        while (nextBreak != m_breaks.end() && *nextBreak < end)
            ++nextBreak;
        const bool lineEnd = nextBreak == m_breaks.end() || *nextBreak != end;
        take(all.mid(from, end - from), lineEnd);
        from = end + 1;
    }
    take(all.mid(from), false);
}

QString EditingSurface::Text() const
{
    QString t;
    t.reserve(TextLength());
    textPieces([&t](QStringView stretch, bool lineEnd) {
        t.append(stretch);
        if (lineEnd)
            t.append(QLatin1String("\r\n"));
    });
    return t;
}

int EditingSurface::TextLength() const
{
    const QTextDocument *doc = document();
    return doc->characterCount() - 1 + doc->blockCount() - 1 - 2 * int(m_breaks.size());
}

QString EditingSurface::Mid(int start, int length) const
{
    QString out;
    const int end = qMin(start + qMax(0, length), TextLength());
    if (start >= end)
        return out;
    QTextBlock block = document()->findBlock(toDocument(start));
    int blockStart = surfaceStart(block);
    for (int at = block.position(); block.isValid() && blockStart < end; at += block.length(), block = block.next()) {
        const QString line = lineText(block);
        const int lineEnd = int(line.size());
        const int span = lineSpan(block, at);
        const int a = qMax(start, blockStart) - blockStart;
        const int b = qMin(end, blockStart + span) - blockStart;
        if (a < lineEnd)
            out += QStringView(line).mid(a, qMin(b, lineEnd) - a);
        for (int i = qMax(a, lineEnd); i < b; ++i)
            out += QLatin1Char(i == lineEnd ? '\r' : '\n');
        blockStart += span;
    }
    return out;
}

void EditingSurface::setText(const QString &text)
{
    replaceRange(0, document()->characterCount() - 1, FormattedFragment::plain(text, fontOf(caretCode())));
    setSelStart(0);
}

bool EditingSurface::loadText(const QString &text, const std::function<bool(qint64, qint64)> &progress,
                             qsizetype piece)
{
    piece = qMax<qsizetype>(piece, 2);
    const uchar code = caretCode();
    // The text goes into a document with no layout and no view, which is then shown: the inserts
    // cost about a tenth less than into the shown document.
    auto *loaded = new QTextDocument(this);
    loaded->setUndoRedoEnabled(false);
    loaded->setDefaultFont(document()->defaultFont());
    loaded->setDocumentMargin(document()->documentMargin());
    DisplayBlocks blocks(DisplayBlock);
    for (qsizetype from = 0; from < text.size();) {
        qsizetype to = qMin(text.size(), from + piece);
        if (to < text.size()) {
            // Never split a CR LF or a surrogate pair between two pieces.
            if (const qsizetype lineEnd = text.lastIndexOf(QLatin1Char('\n'), to - 1); lineEnd >= from)
                to = lineEnd + 1;
            else if (text[to - 1] == QLatin1Char('\r') || text[to - 1].isHighSurrogate())
                --to;
        }
        QTextCursor end(loaded);
        end.movePosition(QTextCursor::End);
        end.insertText(blocks.convert(QStringView(text).mid(from, to - from)));
        from = to;
        if (progress && !progress(from, text.size())) {
            delete loaded;
            return false;
        }
    }
    EventBatch batch(*this);
    m_classes.reset(loaded->characterCount() - 1, code);
    adoptDocument(loaded);
    m_breaks = std::move(blocks.breaks);
    clearUndo();
    setSelStart(0);
    m_batchedChange = true;
    return true;
}

// --- Selection ----------------------------------------------------------------------------------

int EditingSurface::SelStart() const
{
    return toSurface(textCursor().selectionStart());
}

void EditingSurface::setSelStart(int position)
{
    QTextCursor c = textCursor();
    c.setPosition(toDocument(position));
    setCursor(c);
}

int EditingSurface::SelLength() const
{
    const QTextCursor c = textCursor();
    if (!c.hasSelection())
        return 0;
    return toSurface(c.selectionEnd()) - toSurface(c.selectionStart());
}

void EditingSurface::setSelLength(int length)
{
    QTextCursor c = textCursor();
    const int start = c.selectionStart();
    const int end = toDocument(toSurface(start) + qMax(0, length));
    c.setPosition(start);
    c.setPosition(end, QTextCursor::KeepAnchor);
    setCursor(c);
}

QString EditingSurface::SelText() const
{
    if (m_breaks.empty()) {
        QString t = textCursor().selectedText();
        t.replace(QChar::ParagraphSeparator, QLatin1String("\r\n"));
        return t;
    }
    return Mid(SelStart(), SelLength());
}

void EditingSurface::setSelText(const QString &text)
{
    insertFragment(FormattedFragment::plain(text, fontOf(caretCode())));
}

FormattedFragment EditingSurface::selectionFragment() const
{
    const QTextCursor c = textCursor();
    return capture(c.selectionStart(), c.selectionEnd()).withoutBreaks();
}

QString EditingSurface::SelRTF() const
{
    return selectionFragment().serialize();
}

void EditingSurface::setSelRTF(const QString &fragment)
{
    FormattedFragment f;
    if (!FormattedFragment::parse(fragment, &f))
        f = FormattedFragment::plain(fragment, fontOf(caretCode()));
    insertFragment(f);
}

void EditingSurface::insertFragment(const FormattedFragment &fragment)
{
    const QTextCursor c = textCursor();
    replaceRange(c.selectionStart(), c.selectionEnd(), fragment);
}

void EditingSurface::replaceRange(int from, int to, const FormattedFragment &with)
{
    UndoOp op;
    op.position = from;
    const bool record = !m_userEdit;
    if (record) {
        op.removed = capture(from, to);
        ++m_internal;
    }
    const QByteArray codes = codesOf(with);
    m_incoming = &codes;
    QTextCursor c = cursorFor(from, to);
    c.beginEditBlock();
    c.removeSelectedText();
    c.insertText(with.text);
    const int end = c.position();
    c.endEditBlock();
    m_incoming = nullptr;
    addBreaks(from, with.breaks);
    if (record) {
        --m_internal;
        op.inserted = end - from;
        recordOp(std::move(op), false);
    }
    QTextCursor caret = textCursor();
    caret.setPosition(end);
    setCursor(caret);
}

void EditingSurface::setBackColor(qint32 color)
{
    m_backColor = color;
    QPalette p = palette();
    p.setColor(QPalette::Base, colorFromValue(color));
    setPalette(p);
}

double EditingSurface::Width() const
{
    return width() * kTwipsPerPixel;
}

double EditingSurface::Height() const
{
    return height() * kTwipsPerPixel;
}

void EditingSurface::Refresh()
{
    viewport()->repaint();
}

bool EditingSurface::SetFocus()
{
    if (!isVisible() || window()->isMinimized())
        return false;
    setFocus(Qt::OtherFocusReason);
    return true;
}

// --- Undo ---------------------------------------------------------------------------------------

void EditingSurface::recordOp(UndoOp op, bool typing)
{
    if (m_groupDepth > 0)
        m_group.append(std::move(op));
    else
        commitStep({std::move(op)}, typing);
}

void EditingSurface::openStep()
{
    if (m_groupDepth++ == 0)
        m_group.clear();
}

void EditingSurface::closeStep(bool typing)
{
    if (--m_groupDepth == 0)
        commitStep(std::exchange(m_group, {}), typing);
}

// One step's ops become the undo; a typed character right behind the last typed one joins it.
void EditingSurface::commitStep(QList<UndoOp> ops, bool typing)
{
    // An insertion right where the op before it ended is part of that op (a selection typed over).
    QList<UndoOp> joined;
    for (UndoOp &op : ops) {
        if (!joined.isEmpty() && op.removed.isEmpty()
            && op.position == joined.last().position + joined.last().inserted)
            joined.last().inserted += op.inserted;
        else
            joined.append(std::move(op));
    }
    if (joined.isEmpty())
        return;
    if (typing && m_lastWasTyping && joined.size() == 1 && joined.first().removed.isEmpty() && !m_undo.isEmpty()
        && joined.first().position == m_undo.last().position + m_undo.last().inserted) {
        m_undo.last().inserted += joined.first().inserted;
        return;
    }
    setUndo(std::move(joined));
    m_lastWasTyping = typing;
}

void EditingSurface::setUndo(QList<UndoOp> ops)
{
    const bool before = CanUndo();
    m_undo = std::move(ops);
    if (CanUndo() != before)
        Q_EMIT CanUndoChanged(CanUndo());
}

void EditingSurface::clearUndo()
{
    setUndo({});
}

bool EditingSurface::Undo()
{
    if (m_undo.isEmpty())
        return false;
    QList<UndoOp> inverse;
    int caret = 0;
    ++m_internal;
    ++m_bytesKept; // the ops may lie apart: the bytes follow each one
    QTextCursor c(document());
    c.beginEditBlock();
    for (auto it = m_undo.crbegin(); it != m_undo.crend(); ++it) {
        UndoOp back;
        back.position = it->position;
        back.removed = capture(it->position, it->position + it->inserted);
        c.setPosition(it->position);
        c.setPosition(it->position + it->inserted, QTextCursor::KeepAnchor);
        c.removeSelectedText();
        c.insertText(it->removed.text);
        m_classes.replace(it->position, it->inserted, codesOf(it->removed));
        moveBreaks(it->position, it->inserted, int(it->removed.text.size()));
        addBreaks(it->position, it->removed.breaks);
        back.inserted = c.position() - it->position;
        caret = c.position();
        restyleAround(it->position, caret);
        inverse.append(std::move(back));
    }
    c.endEditBlock();
    --m_bytesKept;
    --m_internal;
    setUndo(std::move(inverse));
    m_lastWasTyping = false;
    QTextCursor at = textCursor();
    at.setPosition(caret);
    setCursor(at);
    return true;
}

EditingSurface::EditGroup::EditGroup(EditingSurface &surface) : m_surface(surface)
{
    m_surface.openStep();
}

EditingSurface::EditGroup::~EditGroup()
{
    m_surface.closeStep(false);
}

EditingSurface::EventBatch::EventBatch(EditingSurface &surface) : m_surface(surface)
{
    ++m_surface.m_batchDepth;
}

EditingSurface::EventBatch::~EventBatch()
{
    if (--m_surface.m_batchDepth > 0)
        return;
    const bool change = std::exchange(m_surface.m_batchedChange, false);
    const bool sel = std::exchange(m_surface.m_batchedSel, false);
    if (change)
        Q_EMIT m_surface.Change();
    if (sel)
        Q_EMIT m_surface.SelChange();
}

// --- Events -------------------------------------------------------------------------------------

const QString &EditingSurface::lineText(const QTextBlock &block) const
{
    if (block.blockNumber() != m_cachedLine) {
        m_lineText = block.text();
        m_cachedLine = block.blockNumber();
    }
    return m_lineText;
}

void EditingSurface::onContentsChange(int position, int removed, int added)
{
    m_cachedLine = -1;
    const int oldChars = std::exchange(m_docChars, document()->characterCount());
    // Qt counts the document's closing separator in changes that reach the end; take it off.
    const int overshoot = qMax(0, position + removed - (oldChars - 1));
    removed = qMax(0, removed - overshoot);
    added = qMax(0, added - overshoot);
    if (m_restyling > 0)
        return; // layout formats only
    if (m_bytesKept == 0) {
        moveBreaks(position, removed, added);
        if (m_incoming && m_incoming->size() == added) {
            m_classes.replace(position, removed, *m_incoming);
        } else {
            // What the control inserts takes the class at its caret, as typed text does.
            const uchar fill = m_insertCode >= 0 ? uchar(m_insertCode)
                               : position > 0                  ? m_classes.at(position - 1)
                               : m_classes.size() > removed    ? m_classes.at(removed)
                                                               : uchar(NoClass);
            m_classes.replace(position, removed, added, fill);
        }
    }
    restyleAround(position, position + added);
    if (m_internal == 0) {
        if (m_userEdit)
            m_userEdit->take(this, position, removed, added);
        else if (removed != added || oldChars != m_docChars)
            clearUndo(); // an edit the surface could not see coming
    }
    if (m_batchDepth > 0)
        m_batchedChange = true;
    else
        Q_EMIT Change();
}

void EditingSurface::onCursorMoved()
{
    if (m_caretCode >= 0 && textCursor().position() != m_caretCodeAt)
        m_caretCode = -1;
    if (m_batchDepth > 0)
        m_batchedSel = true;
    else
        Q_EMIT SelChange();
}

template<typename F> void EditingSurface::asUserEdit(bool typing, F &&edit)
{
    if (m_userEdit || m_internal) {
        edit();
        return;
    }
    const QTextCursor c = textCursor();
    UserEdit ue;
    // Typing at a caret only inserts: nothing needs keeping.
    if (!typing || c.hasSelection() || overwriteMode()) {
        const int last = document()->characterCount() - 1;
        ue.windowStart = qMax(0, c.selectionStart() - UserEdit::Reach);
        ue.window = capture(ue.windowStart, qMin(last, c.selectionEnd() + UserEdit::Reach));
    } else {
        ue.windowStart = c.position();
    }
    m_userEdit = &ue;
    m_insertCode = caretCode();
    openStep();
    edit();
    m_insertCode = -1;
    m_userEdit = nullptr;
    if (!ue.valid) {
        m_group.clear();
        closeStep(typing);
        clearUndo();
        return;
    }
    for (UndoOp &op : ue.ops)
        m_group.append(std::move(op));
    closeStep(typing);
}

namespace {

// Copy, cut, paste and undo in every standard form: they always reach the program's own
// operations, whatever a menu item's state.
std::optional<EditingSurface::EditCommand> standardCommand(const QKeyEvent *e)
{
    using C = EditingSurface::EditCommand;
    const int shift = EditingSurface::shiftStateOf(e->modifiers());
    const bool shiftOnly = shift == 1, ctrlOnly = shift == 2;
    if (e->matches(QKeySequence::Paste) || (e->key() == Qt::Key_Insert && shiftOnly))
        return C::Paste;
    if (e->matches(QKeySequence::Copy) || (e->key() == Qt::Key_Insert && ctrlOnly))
        return C::Copy;
    if (e->matches(QKeySequence::Cut) || (e->key() == Qt::Key_Delete && shiftOnly))
        return C::Cut;
    if (e->matches(QKeySequence::Undo))
        return C::Undo;
    return std::nullopt;
}

} // namespace

bool EditingSurface::event(QEvent *e)
{
    // The program's menu shortcuts win over the control's own (Ctrl+A is Save As here), but the
    // standard editing keys come here, so that a disabled menu item can't swallow them.
    if (e->type() == QEvent::ShortcutOverride) {
        auto *key = static_cast<QKeyEvent *>(e);
        if (standardCommand(key)) {
            key->accept();
            return true;
        }
        return QWidget::event(e);
    }
    return QPlainTextEdit::event(e);
}

void EditingSurface::keyPressEvent(QKeyEvent *e)
{
    const int shift = shiftStateOf(e->modifiers());
    bool swallow = false;
    Q_EMIT KeyDown(keyCodeOf(e->key()), shift, &swallow);
    if (swallow) {
        e->accept();
        return;
    }
    if (const auto command = standardCommand(e)) {
        e->accept();
        Q_EMIT editCommand(*command);
        return;
    }
    if (e->matches(QKeySequence::Redo)) {
        e->accept();
        return;
    }
    handleKey(e);
}

// A display break is no character: Backspace and Delete reach the character beyond it, and a caret
// move that only crossed it goes on by one more. True when the key was handled here.
bool EditingSurface::stepOverBreak(QKeyEvent *e)
{
    const int key = e->key();
    QTextCursor c = textCursor();
    if (!c.hasSelection() && (key == Qt::Key_Backspace || key == Qt::Key_Delete)) {
        const int at = c.position();
        const bool before = key == Qt::Key_Backspace && c.atBlockStart() && isBreak(at - 1);
        const bool after = key == Qt::Key_Delete && c.atBlockEnd() && isBreak(at);
        if (before || after) {
            c.setPosition(before ? at - 1 : at + 1);
            setCursor(c);
        }
        return false;
    }
    if (key != Qt::Key_Left && key != Qt::Key_Right)
        return false;
    const int from = toSurface(c.position());
    QPlainTextEdit::keyPressEvent(e);
    if (toSurface(textCursor().position()) == from)
        QPlainTextEdit::keyPressEvent(e);
    return true;
}

// A key that edits, with what its KeyPress handler wrote first, is one undo step.
void EditingSurface::handleKey(QKeyEvent *e)
{
    const int key = e->key();
    if (!m_breaks.empty() && stepOverBreak(e))
        return;
    const int shift = shiftStateOf(e->modifiers());
    const QString text = e->text();
    int keyAscii = 0;
    if (text.size() == 1) {
        const ushort u = text[0].unicode();
        if (u >= 32 && u != 127)
            keyAscii = (shift & 2) && !(shift & 4) && text[0].isLetter() ? (u & 0x1F) : u;
        else if (u == 8 || u == 9 || u == 13 || u == 27 || (u >= 1 && u <= 26))
            keyAscii = u;
    }
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        keyAscii = 13;
    if (keyAscii == 0) {
        const bool edits = key == Qt::Key_Backspace || key == Qt::Key_Delete || !text.isEmpty();
        if (edits)
            asUserEdit(false, [&] { QPlainTextEdit::keyPressEvent(e); });
        else
            QPlainTextEdit::keyPressEvent(e);
        return;
    }

    const int original = keyAscii;
    openStep();
    Q_EMIT KeyPress(&keyAscii);
    const bool typing = keyAscii >= 32 || keyAscii == 13;
    if (keyAscii == 0) {
        e->accept();
    } else if (keyAscii == original) {
        asUserEdit(typing, [&] { QPlainTextEdit::keyPressEvent(e); });
    } else {
        const QString replacement{QChar(ushort(keyAscii))};
        QKeyEvent changed(e->type(), keyAscii == 13 ? int(Qt::Key_Return) : 0, e->modifiers(), replacement);
        asUserEdit(typing, [&] { QPlainTextEdit::keyPressEvent(&changed); });
        e->setAccepted(changed.isAccepted());
    }
    closeStep(typing);
}

void EditingSurface::inputMethodEvent(QInputMethodEvent *e)
{
    asUserEdit(true, [&] { QPlainTextEdit::inputMethodEvent(e); });
}

void EditingSurface::dropEvent(QDropEvent *e)
{
    asUserEdit(false, [&] { QPlainTextEdit::dropEvent(e); });
}

bool EditingSurface::canInsertFromMimeData(const QMimeData *source) const
{
    return source->hasText();
}

void EditingSurface::insertFromMimeData(const QMimeData *source)
{
    // Drops and middle-click pastes come in as plain text, in the format at the caret.
    setSelText(source->text());
}

void EditingSurface::mouseReleaseEvent(QMouseEvent *e)
{
    QPlainTextEdit::mouseReleaseEvent(e);
    int button = 0;
    switch (e->button()) {
    case Qt::LeftButton: button = 1; break;
    case Qt::RightButton: button = 2; break;
    case Qt::MiddleButton: button = 4; break;
    default: break;
    }
    const QPoint p = e->position().toPoint();
    Q_EMIT MouseUp(button, shiftStateOf(e->modifiers()), int(p.x() * kTwipsPerPixel),
                   int(p.y() * kTwipsPerPixel));
}

void EditingSurface::focusInEvent(QFocusEvent *e)
{
    QPlainTextEdit::focusInEvent(e);
    Q_EMIT GotFocus();
}

int EditingSurface::keyCodeOf(int qtKey)
{
    if (qtKey >= Qt::Key_F1 && qtKey <= Qt::Key_F24)
        return 112 + (qtKey - Qt::Key_F1);
    switch (qtKey) {
    case Qt::Key_Backspace: return 8;
    case Qt::Key_Tab: return 9;
    case Qt::Key_Return:
    case Qt::Key_Enter: return 13;
    case Qt::Key_Shift: return 16;
    case Qt::Key_Control: return 17;
    case Qt::Key_Alt: return 18;
    case Qt::Key_Pause: return 19;
    case Qt::Key_CapsLock: return 20;
    case Qt::Key_Escape: return 27;
    case Qt::Key_PageUp: return 33;
    case Qt::Key_PageDown: return 34;
    case Qt::Key_End: return 35;
    case Qt::Key_Home: return 36;
    case Qt::Key_Left: return 37;
    case Qt::Key_Up: return 38;
    case Qt::Key_Right: return 39;
    case Qt::Key_Down: return 40;
    case Qt::Key_Insert: return 45;
    case Qt::Key_Delete: return 46;
    default: break;
    }
    return qtKey < 0x100 ? qtKey : 0;
}

int EditingSurface::shiftStateOf(Qt::KeyboardModifiers modifiers)
{
    return ((modifiers & Qt::ShiftModifier) ? 1 : 0) | ((modifiers & Qt::ControlModifier) ? 2 : 0)
           | ((modifiers & Qt::AltModifier) ? 4 : 0);
}

} // namespace pw
