#include "markup/highlighter.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "platform/message_box.h"
#include "platform/platform.h"

#include <QPointer>
#include <QTextDocument>

#include <exception>
#include <optional>

namespace pw {

namespace {

// A failure of the pass, reported by the message box at its end.
struct PassFailure {
    int number = 0;
    QString description;
};

constexpr int InvalidPropertyValue = int(ErrorCode::InvalidPropertyValue);

// "<!--" and "-->" are found by their angle bracket, which is scanned for many characters at a
// time; a search for the whole string goes one character at a time. (QString's search for one
// character goes straight to the scan, QStringView's through the search for strings.)
qsizetype findCommentOpen(const QString &text, qsizetype from)
{
    for (qsizetype at = text.indexOf(QLatin1Char('<'), from); at >= 0; at = text.indexOf(QLatin1Char('<'), at + 1))
        if (at + 4 <= text.size() && text[at + 1] == QLatin1Char('!') && text[at + 2] == QLatin1Char('-')
            && text[at + 3] == QLatin1Char('-'))
            return at;
    return -1;
}

qsizetype findCommentClose(const QString &text, qsizetype from)
{
    for (qsizetype at = text.indexOf(QLatin1Char('>'), from + 2); at >= 0; at = text.indexOf(QLatin1Char('>'), at + 1))
        if (text[at - 1] == QLatin1Char('-') && text[at - 2] == QLatin1Char('-'))
            return at - 2;
    return -1;
}

// Upper-cases [begin, end) outside double-quoted values in place, telling `changed` the offset of
// each character that changed.
template<typename F> void uppercaseOutsideQuotes(QChar *begin, QChar *end, F &&changed)
{
    bool inQuote = false;
    for (QChar *c = begin; c != end; ++c) {
        if (*c == QLatin1Char('"'))
            inQuote = !inQuote;
        if (inQuote)
            continue;
        const char16_t u = c->unicode();
        // Tags are mostly ASCII: its letters without the table.
        const QChar upper = u < 0x80 ? QChar(u >= u'a' && u <= u'z' ? char16_t(u - 0x20) : u) : c->toUpper();
        if (upper != *c) {
            *c = upper;
            changed(int(c - begin));
        }
    }
}

// The walk works on a copy of the text and hands its classes and rewrites to the surface in
// batches: classes are bytes the surface writes in one scan, and a batch's rewrites go in as one
// edit.
class Walker
{
public:
    Walker(EditingSurface &surface, const TagWalk &walk, Platform &platform, LongPass *pass)
        : m_surface(surface), m_walk(walk), m_platform(platform), m_pass(pass), m_text(surfaceText(surface))
    {
        m_watch = QObject::connect(surface.document(), &QTextDocument::contentsChange, &surface,
                                   [this] { m_changedOutside = m_changedOutside || !m_applying; });
    }
    ~Walker() { QObject::disconnect(m_watch); }
    Walker(const Walker &) = delete;
    Walker &operator=(const Walker &) = delete;

    WalkResult run()
    {
        try {
            const WalkEnd end = walk();
            flush();
            return {end, std::move(m_comments), std::move(m_text)};
        } catch (...) {
            flush(); // what was done stays done
            throw;
        }
    }

private:
    using Edit = EditingSurface::RangeEdit;

    WalkEnd walk()
    {
        escapePressed(); // an old press doesn't count
        bool aborted = false;

        qsizetype pos = findCommentOpen(m_text, 0);
        while (pos != -1 && !aborted) {
            const qsizetype end = findCommentClose(m_text, pos);
            if (end < 0) {
                // The selection of [pos, end + 3) can't be set; what its length reaches is coloured.
                if (m_walk.commentFont && 2 - pos > 0)
                    queueFont(int(pos), int(2 - pos), m_walk.commentFont);
                return WalkEnd::UnclosedComment;
            }
            if (m_walk.commentFont)
                queueFont(int(pos), int(end - pos + 3), m_walk.commentFont);
            m_comments.append({int(pos), int(end + 2)});
            pos = findCommentOpen(m_text, qMax<qsizetype>(0, end - m_walk.nextCommentBack));
            aborted = poll();
        }

        // Tag starts only grow, so the comment that may hold one is found by moving forward.
        qsizetype span = 0;
        int lastTagStart = -1;
        int tagStart = upTo(QLatin1Char('<'), 0);
        while (tagStart != lastTagStart && !aborted) {
            const int length = int(m_text.size());
            if (m_pass) {
                m_pass->step(tagStart, length);
                // A pass long enough to show its strip shows the page too, as far as it is coloured.
                if (!m_textShown && m_pass->progressShown()) {
                    m_textShown = true;
                    flush();
                    m_surface.Refresh();
                }
            }
            while (span < m_comments.size() && m_comments[span].CommentEnd < tagStart)
                ++span;
            int caret;
            if (span < m_comments.size() && m_comments[span].CommentStart <= tagStart) {
                caret = m_comments[span].CommentEnd;
            } else {
                const int tagEnd = upTo(QLatin1Char('>'), tagStart);
                const int tagLength = qMin(tagEnd - tagStart + 1, length - tagStart);
                if (tagLength > 0) {
                    if (m_walk.tagFont)
                        queueFont(tagStart, tagLength, m_walk.tagFont);
                    if (m_walk.uppercase)
                        rewrite(tagStart, tagLength);
                }
                caret = tagEnd;
            }
            lastTagStart = tagStart;
            tagStart = upTo(QLatin1Char('<'), caret);
            aborted = poll();
        }
        return aborted ? WalkEnd::Escaped : WalkEnd::Done;
    }

    static QString surfaceText(const EditingSurface &surface) { return surface.Text(); }

    // Adjacent ranges of one font go as one.
    void queueFont(int start, int length, const FontClass *font)
    {
        if (m_lastFont >= 0) {
            Edit &last = m_pending[m_lastFont];
            if (last.font == font && last.start + last.length == start) {
                last.length += length;
                return;
            }
        }
        m_lastFont = int(m_pending.size());
        m_pending.append({Edit::MergeFont, start, length, font, {}});
    }

    // Where UpTo would stop: on the next such character, else at the end.
    int upTo(QChar c, int from) const
    {
        const qsizetype i = m_text.indexOf(c, from);
        return int(i < 0 ? m_text.size() : i);
    }

    // Upper-cases a tag in the copy and queues the runs of characters that changed.
    void rewrite(int start, int length)
    {
        if (m_walk.rewriteAlways)
            m_pending.append({Edit::TakeLastFormat, start, length, nullptr, {}});
        QChar *tag = m_text.data() + start;
        int runStart = -1, runEnd = -1;
        const auto queue = [&] {
            if (runStart >= 0)
                m_pending.append({Edit::Rewrite, start + runStart, runEnd - runStart, nullptr,
                                  QString(tag + runStart, runEnd - runStart)});
        };
        uppercaseOutsideQuotes(tag, tag + length, [&](int offset) {
            if (offset != runEnd) {
                queue();
                runStart = offset;
            }
            runEnd = offset + 1;
        });
        queue();
    }

    // The end of a round: hand over a batch now and then, and poll Escape (which may let events
    // run). A change made meanwhile by someone else is read back in.
    bool poll()
    {
        constexpr qsizetype Batch = 8192;
        if (m_pending.size() >= Batch)
            flush();
        const bool escape = escapePressed();
        if (m_changedOutside) {
            // A rewrite goes in only where its letters still stand.
            m_pending.removeIf([this](const Edit &e) {
                return e.kind == Edit::Rewrite
                       && m_surface.Mid(e.start, e.length).compare(e.text, Qt::CaseInsensitive) != 0;
            });
            m_lastFont = -1;
            flush();
            m_text = m_surface.Text();
            m_changedOutside = false;
        }
        return escape;
    }

    bool escapePressed() { return m_pass ? m_pass->escapePressed() : m_platform.escapePressed(); }

    void flush()
    {
        if (!m_pending.isEmpty()) {
            m_applying = true;
            m_surface.applyEdits(m_pending);
            m_applying = false;
            m_pending.clear();
            m_lastFont = -1;
        }
    }

    EditingSurface &m_surface;
    const TagWalk &m_walk;
    Platform &m_platform;
    LongPass *m_pass;
    QString m_text;
    QList<CommentSpan> m_comments;
    QList<Edit> m_pending;
    QMetaObject::Connection m_watch;
    int m_lastFont = -1; // the last font range queued, while it can still grow
    bool m_applying = false;
    bool m_textShown = false;
    bool m_changedOutside = false;
};

} // namespace

QString UppercaseOutsideQuotes(const QString &text)
{
    QString out = text;
    uppercaseOutsideQuotes(out.data(), out.data() + out.size(), [](int) {});
    return out;
}

QString UppercaseTags(QString text)
{
    QList<CommentSpan> comments;
    for (qsizetype pos = findCommentOpen(text, 0); pos != -1; pos = findCommentOpen(text, pos)) {
        const qsizetype end = findCommentClose(text, pos);
        if (end < 0)
            return text;
        comments.append({int(pos), int(end + 2)});
        pos = end;
    }
    const qsizetype length = text.size();
    qsizetype span = 0;
    for (qsizetype start = text.indexOf(QLatin1Char('<')); start >= 0;) {
        while (span < comments.size() && comments[span].CommentEnd < start)
            ++span;
        qsizetype caret;
        if (span < comments.size() && comments[span].CommentStart <= start) {
            caret = comments[span].CommentEnd;
        } else {
            const qsizetype end = text.indexOf(QLatin1Char('>'), start);
            caret = end < 0 ? length : end;
            QChar *tag = text.data() + start; // detaches once
            uppercaseOutsideQuotes(tag, tag + (qMin(caret + 1, length) - start), [](int) {});
        }
        if (caret >= length)
            break;
        start = text.indexOf(QLatin1Char('<'), caret);
    }
    return text;
}

WalkResult WalkTags(EditingSurface &text, const TagWalk &walk, Platform &platform, LongPass *pass)
{
    return Walker(text, walk, platform, pass).run();
}

namespace {

QString failureMessage(const PassFailure &failure, const QString &caption)
{
    QStringList lines;
    if (failure.number == InvalidPropertyValue)
        lines << caption << failure.description << QStringLiteral("Error while hightlighting HTML tags!!")
              << QStringLiteral("More then likely you have an open ended tag.")
              << QStringLiteral("Check your document carefully where the") << QStringLiteral("highlighting ended.");
    else
        lines << QStringLiteral("An unforseen error was encountered!")
              << QStringLiteral("The error is ") + failure.description
              << QStringLiteral("Check your document carefully where the")
              << QStringLiteral("highlighting ended.  More than likely")
              << QStringLiteral("something in your document caused this error.");
    return lines.join(LineEnd);
}

// The colouring pass on one surface; `document` is null for the preview, which shows nothing of
// a pass and touches no document state. Returns the text it walked, as the pass leaves it.
QString colourPass(Workspace &ws, EditingSurface &text, const ClassFonts &fonts, frmDoc *document, const QString &caption)
{
    // Not painted here: a short pass shows the page coloured, a long one when its strip appears.
    text.setVisible(true);
    if (!ws.options.isChecked(Option::Highlight))
        return {};

    const QPointer<frmDoc> owner(document);
    const bool dirty = document && document->state().Dirty();
    std::optional<LongPass> pass;
    if (document)
        pass.emplace(ws, QStringLiteral("Highlighting HTML tags...Hit ESC to abort."));
    const int caret = text.SelStart();

    std::optional<PassFailure> failure;
    QString walked;
    {
        EditingSurface::EventBatch oneEvent(text);
        TagWalk walk;
        walk.commentFont = &fonts.comment;
        walk.tagFont = &fonts.html;
        // A file that isn't text is shown, never rewritten.
        walk.uppercase = ws.options.isChecked(Option::UHTML) && !(document && document->state().binary);
        try {
            EditingSurface::EditGroup oneStep(text);
            WalkResult result = WalkTags(text, walk, ws.platform, pass ? &*pass : nullptr);
            if (result.end == WalkEnd::UnclosedComment)
                failure = PassFailure{InvalidPropertyValue, QStringLiteral("Invalid property value")};
            walked = std::move(result.text);
        } catch (const std::exception &e) {
            failure = PassFailure{0, QString::fromLocal8Bit(e.what())};
        }
        if (failure) {
            if (pass)
                pass->pauseWaitCursor();
            ws.MsgBox(failureMessage(*failure, caption), MsgStyle::OkOnly + MsgStyle::Exclamation);
        }
        text.setSelLength(0);
        text.setSelStart(caret);
        text.setSelFont(fonts.text);
    }
    if (owner)
        owner->state().setDirty(dirty);
    return walked;
}

} // namespace

QString HighlightDocument(Workspace &workspace, frmDoc &document)
{
    return colourPass(workspace, *document.Text, workspace.fonts, &document, document.Caption());
}

void HighlightPreview(Workspace &workspace, EditingSurface &sample, const ClassFonts &fonts, const QString &caption)
{
    colourPass(workspace, sample, fonts, nullptr, caption);
}

void ToggleHighlighting(Workspace &ws)
{
    Options &options = ws.options;
    options.toggle(Option::Highlight);
    const bool on = options.isChecked(Option::Highlight);
    if (on && ws.AnyDocumentOpen()) {
        switch (ws.MsgBox(QStringLiteral("Highlight open documents?"), MsgStyle::YesNoCancel + MsgStyle::Exclamation)) {
        case MsgAnswer::Yes: ws.HighlightOpenDocuments = true; break;
        case MsgAnswer::No: ws.HighlightOpenDocuments = false; break;
        default:
            options.toggle(Option::Highlight);
            return;
        }
    }
    for (int slot : ws.slots.openSlots()) {
        frmDoc *document = ws.slots.document(slot);
        EditingSurface &text = *document->Text;
        const bool dirty = document->state().Dirty();
        if (!on) {
            const int caret = text.SelStart();
            text.formatRange(0, text.TextLength(), ws.fonts.text);
            text.setSelStart(caret);
            ApplyClassFont(text, false);
        } else if (ws.HighlightOpenDocuments) {
            HighlightDocument(ws, *document);
        }
        document->state().setDirty(dirty);
    }
    ws.FocusCurrentDocument();
}

} // namespace pw
