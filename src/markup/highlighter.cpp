#include "markup/highlighter.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/status_line.h"
#include "platform/message_box.h"
#include "platform/platform.h"

#include <QApplication>
#include <QProgressBar>

#include <exception>
#include <optional>

namespace pw {

namespace {

QList<CommentSpan> g_commentSpans;
bool g_highlightOpenDocuments = false;

// A failure of the pass, reported by the message box at its end.
struct PassFailure {
    int number = 0;
    QString description;
};

constexpr int InvalidPropertyValue = int(ErrorCode::InvalidPropertyValue);

// The progress strip's value, set only when it changes.
class Progress
{
public:
    void set(qint64 done, qint64 total)
    {
        const int value = total > 0 ? int(100 * done / total) : 0;
        if (value == m_value)
            return;
        m_value = value;
        if (frmMDIMain *main = frmMDIMain::instance())
            main->ProgressBar->setValue(value);
    }

private:
    int m_value = -1;
};

} // namespace

const QList<CommentSpan> &CommentSpans()
{
    return g_commentSpans;
}

QString UppercaseOutsideQuotes(const QString &text)
{
    QString out = text;
    bool inQuote = false;
    for (QChar &c : out) {
        if (c == QLatin1Char('"'))
            inQuote = !inQuote;
        if (!inQuote)
            c = c.toUpper();
    }
    return out;
}

bool HighlightOn()
{
    frmMDIMain *main = frmMDIMain::instance();
    return main && main->options().isChecked(Option::Highlight);
}

WalkEnd WalkTags(EditingSurface &text, const TagWalk &walk)
{
    g_commentSpans.clear();
    Progress progress;
    text.setSelStart(0);
    EscapePressed(); // an old press doesn't count
    bool aborted = false;

    int pos = text.Find(QStringLiteral("<!--"));
    while (pos != -1 && !aborted) {
        text.setSelLength(0);
        const int end = text.Find(QStringLiteral("-->"), pos);
        if (end < 0) {
            // The selection of [pos, end + 3) can't be set; what the length reaches first is coloured.
            if (walk.commentFont && 2 - pos > 0)
                text.formatRange(pos, 2 - pos, *walk.commentFont);
            return WalkEnd::UnclosedComment;
        }
        text.setSelStart(pos);
        text.setSelLength(end - pos + 3);
        if (walk.commentFont)
            text.setSelFont(*walk.commentFont);
        text.setSelStart(end);
        g_commentSpans.append({pos, end + 2});
        text.setSelLength(0);
        pos = text.Find(QStringLiteral("<!--"), text.SelStart() - walk.nextCommentBack);
        aborted = EscapePressed();
    }

    int lastTagStart = -1;
    text.setSelStart(0);
    text.UpTo(QStringLiteral("<"));
    int tagStart = text.SelStart();
    while (tagStart != lastTagStart && !aborted) {
        progress.set(tagStart, text.TextLength());
        bool inComment = false;
        for (const CommentSpan &span : std::as_const(g_commentSpans)) {
            if (tagStart >= span.CommentStart && tagStart <= span.CommentEnd) {
                inComment = true;
                text.setSelStart(span.CommentEnd);
                break;
            }
        }
        if (!inComment) {
            text.UpTo(QStringLiteral(">"));
            const int tagEnd = text.SelStart();
            text.setSelStart(tagStart);
            text.setSelLength(tagEnd - tagStart + 1);
            if (walk.tagFont)
                text.setSelFont(*walk.tagFont);
            if (walk.uppercase)
                text.setSelText(UppercaseOutsideQuotes(text.SelText()));
            text.setSelStart(tagEnd);
        }
        lastTagStart = tagStart;
        text.UpTo(QStringLiteral("<"));
        tagStart = text.SelStart();
        aborted = EscapePressed();
    }
    return aborted ? WalkEnd::Escaped : WalkEnd::Done;
}

namespace {

struct ClassFonts {
    FontClass text, html, comment;
};

// The colouring pass on one surface; `document` is null for the preview.
void colourPass(EditingSurface &text, const ClassFonts &fonts, frmDoc *document, const QString &caption)
{
    frmMDIMain *main = frmMDIMain::instance();
    g_commentSpans.clear();
    text.setVisible(true);
    text.Refresh();
    if (!HighlightOn())
        return;

    const bool preview = !document;
    qint16 dirty = 0;
    if (!preview) {
        SetStatusText(QStringLiteral("Highlighting HTML tags...Hit ESC to abort."));
        dirty = main->slots().state(document->slot()).Dirty;
        QApplication::setOverrideCursor(Qt::BusyCursor);
    }
    const int caret = text.SelStart();

    std::optional<PassFailure> failure;
    {
        EditingSurface::EventBatch oneEvent(text);
        if (!preview) {
            main->ProgressBar->setValue(0);
            main->ProgressBar->setFixedWidth(qMax(10, main->Picture1->width() - twipsToPixels(240)));
            main->Picture1->show();
        }
        TagWalk walk;
        walk.commentFont = &fonts.comment;
        walk.tagFont = &fonts.html;
        walk.uppercase = main && main->options().isChecked(Option::UHTML);
        try {
            EditingSurface::EditGroup oneStep(text);
            if (WalkTags(text, walk) == WalkEnd::UnclosedComment)
                failure = PassFailure{InvalidPropertyValue, QStringLiteral("Invalid property value")};
        } catch (const std::exception &e) {
            failure = PassFailure{0, QString::fromLocal8Bit(e.what())};
        }

        if (failure) {
            QStringList lines;
            if (failure->number == InvalidPropertyValue)
                lines << caption << failure->description << QStringLiteral("Error while hightlighting HTML tags!!")
                      << QStringLiteral("More then likely you have an open ended tag.")
                      << QStringLiteral("Check your document carefully where the") << QStringLiteral("highlighting ended.");
            else
                lines << QStringLiteral("An unforseen error was encountered!")
                      << QStringLiteral("The error is ") + failure->description
                      << QStringLiteral("Check your document carefully where the")
                      << QStringLiteral("highlighting ended.  More than likely")
                      << QStringLiteral("something in your document caused this error.");
            MsgBox(lines.join(LineEnd), MsgStyle::OkOnly + MsgStyle::Exclamation, AppTitle());
        }

        if (main) {
            main->ProgressBar->setValue(100);
            main->Picture1->hide();
        }
        text.setSelLength(0);
        text.setSelStart(caret);
        text.setSelFont(fonts.text);
    }
    if (!preview) {
        main->slots().state(document->slot()).Dirty = dirty;
        QApplication::restoreOverrideCursor();
    }
    ClearStatusText();
}

} // namespace

void HighlightDocument(frmDoc &document)
{
    colourPass(*document.Text, ClassFonts{TextFont, HtmlFont, CommentFont}, &document, document.Caption());
}

void HighlightPreview(EditingSurface &sample, const FontClass &textFont, const FontClass &htmlFont,
                      const FontClass &commentFont, const QString &caption)
{
    colourPass(sample, ClassFonts{textFont, htmlFont, commentFont}, nullptr, caption);
}

void ToggleHighlighting()
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return;
    Options &options = main->options();
    DocumentSlots &slots = main->slots();
    options.toggle(Option::Highlight);
    const bool on = options.isChecked(Option::Highlight);
    if (on && slots.AnyDocumentOpen()) {
        switch (MsgBox(QStringLiteral("Highlight open documents?"), MsgStyle::YesNoCancel + MsgStyle::Exclamation,
                       AppTitle())) {
        case MsgAnswer::Yes: g_highlightOpenDocuments = true; break;
        case MsgAnswer::No: g_highlightOpenDocuments = false; break;
        default:
            options.toggle(Option::Highlight);
            return;
        }
    }
    for (int slot : slots.openSlots()) {
        frmDoc *document = slots.document(slot);
        EditingSurface &text = *document->Text;
        const qint16 dirty = slots.state(slot).Dirty;
        if (!on) {
            const int caret = text.SelStart();
            text.formatRange(0, text.TextLength(), TextFont);
            text.setSelStart(caret);
            ApplyClassFont(text, false);
        } else if (g_highlightOpenDocuments) {
            HighlightDocument(*document);
        }
        slots.state(slot).Dirty = dirty;
    }
    if (slots.AnyDocumentOpen())
        if (frmDoc *current = slots.current())
            current->Text->SetFocus();
}

} // namespace pw
