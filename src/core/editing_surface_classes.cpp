// The class bytes of a surface, and how they reach the screen.
#include "core/editing_surface.h"

#include <QPlainTextDocumentLayout>
#include <QPointer>

#include <algorithm>
#include <climits>
#include <utility>

namespace pw {

// The plain layout, which gives a block its layout formats from the class bytes just before the
// block is laid out or measured, so only blocks that are shown (or asked about) ever get them.
class ClassLayout : public QPlainTextDocumentLayout
{
public:
    ClassLayout(QTextDocument *document, EditingSurface &surface)
        : QPlainTextDocumentLayout(document), m_surface(surface)
    {
    }

    QRectF blockBoundingRect(const QTextBlock &block) const override
    {
        if (block.isValid() && block.userState() != m_surface.m_generation)
            const_cast<ClassLayout *>(this)->restyle(block);
        return QPlainTextDocumentLayout::blockBoundingRect(block);
    }

    void documentChanged(int from, int removed, int added) override
    {
        const int outerFrom = std::exchange(m_changeFrom, from);
        const int outerTo = std::exchange(m_changeTo, from + qMax(removed, added));
        ++m_inChange;
        QPlainTextDocumentLayout::documentChanged(from, removed, added);
        --m_inChange;
        m_changeFrom = outerFrom;
        m_changeTo = outerTo;
        // A handler of the change may have laid the block out before this call, so the base finds
        // its height unchanged and repaints that block alone: the lines below would stay where they
        // were drawn. The shown lines are counted, so a change in them repaints all below.
        const int lines = document()->lineCount();
        if (lines != std::exchange(m_lineCount, lines)) {
            Q_EMIT documentSizeChanged(documentSize());
            Q_EMIT update();
        }
    }

private:
    void restyle(QTextBlock block)
    {
        const bool changing = m_inChange > 0;
        // A block the change in hand lays out again takes the formats as they are; any other is
        // laid out again here, at once (setFormats alone would only mark it for a later change).
        if (changing && (block.position() > m_changeTo || block.position() + block.length() <= m_changeFrom)
            && block.layout()->lineCount() > 0)
            return;
        block.setUserState(m_surface.m_generation);
        ++m_surface.m_restyling;
        // A long line keeps what its layout worked out: otherwise every repaint (each blink of
        // the caret) works the whole line out again to draw a few lines of it.
        constexpr int LongLine = 4096;
        block.layout()->setCacheEnabled(block.length() > LongLine);
        block.layout()->setFormats(m_surface.layoutFormats(block));
        if (!changing)
            document()->markContentsDirty(block.position(), block.length());
        --m_surface.m_restyling;
    }

    EditingSurface &m_surface;
    int m_inChange = 0;
    int m_lineCount = -1; // the document's shown lines after the last change
    int m_changeFrom = 0;
    int m_changeTo = 0;
};

void EditingSurface::adoptDocument(QTextDocument *loaded)
{
    const QPointer<QTextDocument> old = document();
    disconnect(old, &QTextDocument::contentsChange, this, &EditingSurface::onContentsChange);
    loaded->setDocumentLayout(new ClassLayout(loaded, *this));
    ++m_internal;
    setDocument(loaded);
    --m_internal;
    // The first document belongs to the control, which deletes it; later ones are ours.
    if (old && old->parent() == this)
        delete old;
    m_docChars = loaded->characterCount();
    m_cachedLine = -1;
    m_breaks.clear();
    ++m_generation;
    connect(loaded, &QTextDocument::contentsChange, this, &EditingSurface::onContentsChange);
}

// --- Codes and fonts ------------------------------------------------------------------------------

uchar EditingSurface::codeFor(const FontClass &font)
{
    if (font == m_fonts->text)
        return TextClass;
    if (font == m_fonts->html)
        return TagClass;
    if (font == m_fonts->comment)
        return CommentClass;
    if (font == fontOf(NoClass))
        return NoClass;
    qsizetype i = m_otherFonts.indexOf(font);
    if (i < 0) {
        if (m_otherFonts.size() >= 256 - FirstOther)
            return NoClass;
        i = m_otherFonts.size();
        m_otherFonts.append(font);
    }
    return uchar(FirstOther + i);
}

FontClass EditingSurface::fontOf(uchar code) const
{
    switch (code) {
    case TextClass: return m_fonts->text;
    case TagClass: return m_fonts->html;
    case CommentClass: return m_fonts->comment;
    case NoClass: {
        static const FontClass none = FontClass::fromFormat(QTextCharFormat());
        return none;
    }
    default: return m_otherFonts.value(code - FirstOther);
    }
}

const QTextCharFormat &EditingSurface::formatOf(uchar code) const
{
    if (m_formatsGeneration != m_generation) {
        m_formats.clear();
        m_formatsGeneration = m_generation;
    }
    while (m_formats.size() <= code)
        m_formats.append(m_formats.size() == NoClass ? QTextCharFormat() : fontOf(uchar(m_formats.size())).toFormat());
    return m_formats[code];
}

// A cursor reports the class of the character before it, or at the start of a line that holds
// something, the one after.
uchar EditingSurface::codeAt(int documentPosition) const
{
    const QTextBlock block = document()->findBlock(documentPosition);
    int i = documentPosition;
    // Behind a display break the character before is the one before the break.
    if (documentPosition == block.position() && isBreak(documentPosition - 1))
        i -= 2;
    else if (!(documentPosition == block.position() && block.length() > 1))
        --i;
    if (i < 0)
        return m_firstLineCode;
    return i < m_classes.size() ? m_classes.at(i) : uchar(NoClass);
}

uchar EditingSurface::caretCode() const
{
    if (m_caretCode >= 0)
        return uchar(m_caretCode);
    return codeAt(textCursor().position());
}

QByteArray EditingSurface::codesOf(const FormattedFragment &fragment)
{
    QByteArray codes;
    codes.reserve(fragment.text.size());
    for (const FormattedFragment::Run &run : fragment.runs)
        codes.append(run.length, char(codeFor(run.font)));
    return codes;
}

FormattedFragment EditingSurface::capture(int from, int to) const
{
    FormattedFragment f;
    if (to <= from)
        return f;
    QString text = cursorFor(from, to).selectedText();
    text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
    const QByteArray codes = m_classes.mid(from, to - from);
    int runStart = 0;
    for (int i = 1; i <= to - from; ++i) {
        if (i == to - from || codes[i] != codes[runStart]) {
            f.append(text.mid(runStart, i - runStart), fontOf(uchar(codes[runStart])));
            runStart = i;
        }
    }
    for (auto at = std::lower_bound(m_breaks.begin(), m_breaks.end(), from); at != m_breaks.end() && *at < to; ++at)
        f.breaks.append(*at - from);
    return f;
}

void EditingSurface::setCodes(int from, int to, uchar code)
{
    if (from >= to)
        return;
    m_classes.fill(from, to - from, code);
    if (document()->findBlock(from) == document()->findBlock(to))
        restyleAround(from, to);
    else
        restyleAll();
    viewport()->update();
}

void EditingSurface::restyleAll()
{
    ++m_generation;
    viewport()->update();
}

void EditingSurface::restyleAround(int from, int to)
{
    QTextBlock first = document()->findBlock(from);
    first.setUserState(-1);
    QTextBlock last = document()->findBlock(to);
    if (last != first)
        last.setUserState(-1);
}

QList<QTextLayout::FormatRange> EditingSurface::layoutFormats(const QTextBlock &block) const
{
    QList<QTextLayout::FormatRange> ranges;
    const int start = block.position();
    const int length = qMin(block.length() - 1, m_classes.size() - start);
    const QByteArray codes = m_classes.mid(start, length);
    int runStart = 0;
    for (int i = 1; i <= length; ++i) {
        const uchar code = uchar(codes[runStart]);
        if (i < length && uchar(codes[i]) == code)
            continue;
        if (code != NoClass)
            ranges.append({runStart, i - runStart, formatOf(code)});
        runStart = i;
    }
    return ranges;
}

void EditingSurface::setCursor(const QTextCursor &cursor)
{
    m_caretCode = -1;
    setTextCursor(cursor);
}

void EditingSurface::setClassFonts(const ClassFonts *fonts)
{
    m_fonts = fonts;
    classFontsChanged();
}

void EditingSurface::classFontsChanged()
{
    restyleAll();
}

// --- Formats --------------------------------------------------------------------------------------

void EditingSurface::setSelFont(const FontClass &font)
{
    const uchar code = codeFor(font);
    const QTextCursor c = textCursor();
    if (c.hasSelection()) {
        setCodes(c.selectionStart(), c.selectionEnd(), code);
        return;
    }
    m_caretCode = code;
    m_caretCodeAt = c.position();
    // An empty line keeps the class for good, as the line's own format, wherever the caret goes.
    if (c.block().length() == 1) {
        if (c.position() == 0)
            m_firstLineCode = code;
        else
            m_classes.fill(c.position() - 1, 1, code);
    }
}

FontClass EditingSurface::caretFont() const
{
    return fontOf(caretCode());
}

FontClass EditingSurface::fontAt(int position) const
{
    const int d = toDocument(position);
    const QTextBlock block = document()->findBlock(d);
    return fontOf(d < block.position() + block.length() - 1 ? m_classes.at(d) : codeAt(d));
}

void EditingSurface::formatRange(int start, int length, const FontClass &font)
{
    if (length <= 0)
        return;
    setCodes(toDocument(start), toDocument(start + length), codeFor(font));
}

void EditingSurface::applyEdits(const QList<RangeEdit> &edits)
{
    if (edits.isEmpty())
        return;
    QTextDocument *doc = document();
    // Surface positions are mapped by walking the blocks forward; ranges come mostly ascending,
    // so the whole batch costs one findBlock and one walk.
    QTextBlock block, next;
    int blockStart = 0;  // surface position of block's start
    int blockAt = 0;     // document position of block's start
    int blockLength = 0; // in the document, with its separator
    int span = 0;        // lineSpan of the block; the last one spans all that follows
    auto breakAhead = m_breaks.cbegin(); // the first break not before the block's end
    const auto enter = [&] {
        blockLength = block.length();
        next = block.next();
        const int end = blockAt + blockLength - 1;
        while (breakAhead != m_breaks.cend() && *breakAhead < end)
            ++breakAhead;
        span = !next.isValid() ? INT_MAX
                               : blockLength - 1 + (breakAhead != m_breaks.cend() && *breakAhead == end ? 0 : 2);
    };
    const auto toDoc = [&](int position) {
        if (!block.isValid() || position < blockStart) {
            block = doc->findBlock(toDocument(position));
            blockStart = surfaceStart(block);
            blockAt = block.position();
            breakAhead = std::lower_bound(m_breaks.cbegin(), m_breaks.cend(), blockAt);
            enter();
        }
        while (position - blockStart >= span) {
            blockStart += span;
            blockAt += blockLength;
            block = next;
            enter();
        }
        return blockAt + qMin(position - blockStart, blockLength - 1);
    };
    // Batches come in runs of one font.
    const FontClass *lastFont = nullptr;
    uchar lastCode = NoClass;
    const auto code = [&](const FontClass &font) {
        if (&font != lastFont) {
            lastFont = &font;
            lastCode = codeFor(font);
        }
        return lastCode;
    };

    struct Rewrite {
        int from, to;
        QString text;
    };
    QList<Rewrite> rewrites;
    int fontFrom = INT_MAX, fontTo = -1;
    const int last = TextLength();
    for (const RangeEdit &edit : edits) {
        const int start = qBound(0, edit.start, last);
        const int end = qBound(start, edit.start + edit.length, last);
        const int from = toDoc(start);
        const int to = toDoc(end);
        if (from >= to)
            continue;
        switch (edit.kind) {
        case RangeEdit::MergeFont:
            m_classes.fill(from, to - from, code(*edit.font));
            break;
        case RangeEdit::TakeLastFormat:
            m_classes.fill(from, to - from, codeAt(to));
            break;
        case RangeEdit::Rewrite:
            // The document holds one separator per line end.
            rewrites.append({from, to,
                             edit.text.contains(QLatin1Char('\r'))
                                 ? QString(edit.text).replace(QLatin1String("\r\n"), QLatin1String("\n"))
                                 : edit.text});
            continue;
        }
        fontFrom = qMin(fontFrom, from);
        fontTo = qMax(fontTo, to);
    }
    if (fontTo >= 0) {
        if (doc->findBlock(fontFrom) == doc->findBlock(fontTo))
            restyleAround(fontFrom, fontTo);
        else
            restyleAll();
        viewport()->update();
    }
    if (rewrites.isEmpty())
        return;

    // One replacement of the stretch from the first rewrite to the last, whatever lies between
    // kept as it stands; each changed run takes the class of its first character.
    std::sort(rewrites.begin(), rewrites.end(), [](const Rewrite &a, const Rewrite &b) { return a.from < b.from; });
    const int from = rewrites.first().from;
    int to = from;
    for (const Rewrite &r : std::as_const(rewrites))
        to = qMax(to, r.to);
    const FormattedFragment before = capture(from, to);
    const QByteArray oldCodes = m_classes.mid(from, to - from);
    QString text;
    QByteArray codes;
    QList<int> breaks; // the display breaks of the copied stretches, where they land
    text.reserve(before.text.size());
    codes.reserve(oldCodes.size());
    int done = from; // document position up to which the stretch is copied
    auto nextBreak = before.breaks.cbegin();
    const auto copyUpTo = [&](int until) {
        for (; nextBreak != before.breaks.cend() && from + *nextBreak < until; ++nextBreak)
            if (from + *nextBreak >= done)
                breaks.append(int(text.size()) + from + *nextBreak - done);
        text += QStringView(before.text).mid(done - from, until - done);
        codes += QByteArrayView(oldCodes).sliced(done - from, until - done);
    };
    for (const Rewrite &r : std::as_const(rewrites)) {
        if (r.from < done)
            continue; // overlapping: the earlier one stands
        copyUpTo(r.from);
        text += r.text;
        codes += QByteArray(r.text.size(), oldCodes[r.from - from]);
        done = r.to;
    }
    copyUpTo(to);
    const bool sameLength = text.size() == before.text.size();
    // The stretch keeps its length: the caret and the selection stay where they stood.
    const QTextCursor caret = textCursor();
    const int anchor = caret.anchor(), position = caret.position();
    EditGroup oneStep(*this);
    ++m_internal;
    recordOp({from, before, int(text.size())}, false);
    m_incoming = &codes;
    QTextCursor c = cursorFor(from, to);
    c.beginEditBlock();
    c.removeSelectedText();
    c.insertText(text);
    c.endEditBlock();
    m_incoming = nullptr;
    addBreaks(from, breaks);
    if (sameLength && (textCursor().anchor() != anchor || textCursor().position() != position)) {
        QTextCursor back = textCursor();
        back.setPosition(anchor);
        back.setPosition(position, QTextCursor::KeepAnchor);
        setTextCursor(back);
    }
    --m_internal;
}

} // namespace pw
