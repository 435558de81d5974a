#include "bench.h"

#include "app/application.h"
#include "core/workspace.h"
#include "platform/platform.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "markup/configure_dialog.h"
#include "markup/highlighter.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTextCursor>

#include <malloc.h>

#include <vector>

namespace {

struct Range {
    int from;
    int to;
};

// The comment and tag ranges the pass colours, in document positions, found the way it finds
// them: for the direct-formatting baseline.
struct Ranges {
    std::vector<Range> comments;
    std::vector<Range> tags;
};

Ranges scan(const QString &raw)
{
    Ranges r;
    const auto len = raw.size();
    for (qsizetype pos = raw.indexOf(QLatin1String("<!--")); pos >= 0;) {
        const qsizetype end = raw.indexOf(QLatin1String("-->"), pos);
        if (end < 0)
            break;
        r.comments.push_back({int(pos), int(end + 3)});
        pos = raw.indexOf(QLatin1String("<!--"), end);
    }
    size_t c = 0;
    for (qsizetype start = raw.indexOf(QLatin1Char('<')); start >= 0;) {
        while (c < r.comments.size() && r.comments[c].to <= start)
            ++c;
        qsizetype caret;
        if (c < r.comments.size() && r.comments[c].from <= start) {
            caret = r.comments[c].to - 1;
        } else {
            const qsizetype end = raw.indexOf(QLatin1Char('>'), start);
            caret = end < 0 ? len : end;
            r.tags.push_back({int(start), int(qMin(len, caret + 1))});
        }
        start = raw.indexOf(QLatin1Char('<'), caret);
    }
    return r;
}

// A document window of the real program holding the page in the text font, clean.
pw::frmDoc *openPage(pw::Workspace &ws, const QString &page)
{
    auto *doc = ws.slots.CreateDocumentWindow(ws.slots.FindFreeSlot(), QStringLiteral("Untitled: 1"));
    doc->showMaximized();
    doc->Text->setText(page);
    doc->state().setDirty(false);
    QCoreApplication::processEvents();
    return doc;
}

void closeDocument(pw::frmDoc *doc)
{
    doc->unloadQuietly();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

double msSince(const QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

void colourSizes(pw::Workspace &ws, const std::vector<qint64> &sizes)
{
    for (qint64 bytes : sizes) {
        const QString page = bench::generatePage(bytes, 35);
        pw::frmDoc *doc = openPage(ws, page);
        QElapsedTimer t;
        t.start();
        pw::HighlightDocument(ws, *doc);
        const double ms = msSince(t);
        bench::report("colouring", QStringLiteral("colour_%1kb").arg(bytes / 1024), ms, "ms");
        closeDocument(doc);
    }
}

} // namespace

// Whole-document colouring, the same formats applied directly, typing in a coloured 8 MB page,
// and the memory such a page holds.
static bench::Register colouringBench("colouring", [] {
    pw::Application program(pw::platform());
    pw::Workspace &ws = program.workspace();
    bench::showMain(program);
    QCoreApplication::processEvents();

    colourSizes(ws, {100 * 1024, 1024 * 1024});

    const QString page = bench::generatePage(8 * 1024 * 1024, 35);
    const qint64 fileBytes = page.toUtf8().size();
    const Ranges ranges = scan(QString(page).replace(QLatin1String("\r\n"), QString(QChar::ParagraphSeparator)));
    malloc_trim(0);
    const qint64 before = bench::residentBytes();

    pw::frmDoc *doc = openPage(ws, page);
    malloc_trim(0);
    const double loaded = double(bench::residentBytes() - before);
    QElapsedTimer t;
    t.start();
    pw::HighlightDocument(ws, *doc);
    const double passMs = msSince(t);
    const QString counts = QStringLiteral("\"bytes\": %1, \"tags\": %2, \"comments\": %3")
                               .arg(fileBytes)
                               .arg(ranges.tags.size())
                               .arg(ranges.comments.size());
    bench::report("colouring", "colour_8mb", passMs, "ms", counts);
    QCoreApplication::processEvents();
    malloc_trim(0);
    const double resident = double(bench::residentBytes() - before);
    bench::report("colouring", "memory_8mb_loaded", loaded / 1048576.0, "MiB",
                  QStringLiteral("\"times_file_size\": %1").arg(loaded / double(fileBytes), 0, 'f', 2));
    bench::report("colouring", "memory_8mb_coloured", resident / 1048576.0, "MiB",
                  QStringLiteral("\"times_file_size\": %1").arg(resident / double(fileBytes), 0, 'f', 2));

    // Typing: a jump to a random place, then ten keys, each through the key press and change path.
    pw::EditingSurface &text = *doc->Text;
    QRandomGenerator rng(11);
    const QString keys = QStringLiteral("ab<c>d e!f");
    std::vector<double> handling, painting;
    for (int jump = 0; jump < 200; ++jump) {
        text.setSelStart(int(rng.bounded(text.TextLength())));
        QCoreApplication::processEvents();
        for (QChar k : keys) {
            QKeyEvent press(QEvent::KeyPress, 0, Qt::NoModifier, QString(k));
            QKeyEvent release(QEvent::KeyRelease, 0, Qt::NoModifier, QString(k));
            QElapsedTimer one;
            one.start();
            QCoreApplication::sendEvent(&text, &press);
            QCoreApplication::sendEvent(&text, &release);
            handling.push_back(msSince(one));
            one.restart();
            QCoreApplication::processEvents();
            painting.push_back(msSince(one));
        }
    }
    bench::report("colouring", "keystroke_8mb_median", bench::percentile(handling, 0.5), "ms");
    bench::report("colouring", "keystroke_8mb_p99", bench::percentile(handling, 0.99), "ms");
    bench::report("colouring", "keystroke_8mb_repaint_median", bench::percentile(painting, 0.5), "ms");
    bench::report("colouring", "keystroke_8mb_repaint_p99", bench::percentile(painting, 0.99), "ms");
    closeDocument(doc);

    // The baseline: the same comment and tag formats merged with one QTextCursor in one edit block.
    doc = openPage(ws, page);
    t.restart();
    {
        QTextCursor c(doc->Text->document());
        const QTextCharFormat comment = ws.fonts.comment.toFormat();
        const QTextCharFormat tag = ws.fonts.html.toFormat();
        c.beginEditBlock();
        for (const Range &r : ranges.comments) {
            c.setPosition(r.from);
            c.setPosition(r.to, QTextCursor::KeepAnchor);
            c.mergeCharFormat(comment);
        }
        for (const Range &r : ranges.tags) {
            c.setPosition(r.from);
            c.setPosition(r.to, QTextCursor::KeepAnchor);
            c.mergeCharFormat(tag);
        }
        c.endEditBlock();
    }
    const double baselineMs = msSince(t);
    bench::report("colouring", "direct_cursor_8mb", baselineMs, "ms", counts);
    bench::report("colouring", "colour_vs_direct_ratio", passMs / baselineMs, "x");
    closeDocument(doc);
});

// A pass with Convert HTML to Uppercase on, over lower-case tags: a page of many lines and a page
// of one line, and the undo of the one-line page's rewrite.
static bench::Register uppercaseBench("uppercase", [] {
    pw::Application program(pw::platform());
    pw::Workspace &ws = program.workspace();
    bench::showMain(program);
    ws.options.setChecked(pw::Option::UHTML, true);
    QCoreApplication::processEvents();

    pw::frmDoc *doc = openPage(ws, bench::generatePage(1024 * 1024, 35).toLower());
    QElapsedTimer t;
    t.start();
    pw::HighlightDocument(ws, *doc);
    bench::report("uppercase", "colour_1024kb_lower_case", msSince(t), "ms");
    closeDocument(doc);

    QString line;
    for (int i = 0; i < 11264 / 2; ++i)
        line += QStringLiteral("<a href=\"p%1.html\">x</a> ").arg(i);
    doc = openPage(ws, line);
    t.restart();
    pw::HighlightDocument(ws, *doc);
    bench::report("uppercase", "colour_one_line_11264_tags", msSince(t), "ms");
    t.restart();
    doc->Text->Undo();
    bench::report("uppercase", "undo_one_line_11264_tags", msSince(t), "ms");
    closeDocument(doc);
});

// Configure Editor's OK after a text-font change, carried to ten open, coloured 1 MB pages.
static bench::Register configureBench("configure", [] {
    pw::Application program(pw::platform());
    pw::Workspace &ws = program.workspace();
    bench::showMain(program);
    QCoreApplication::processEvents();

    const QString page = bench::generatePage(1024 * 1024);
    std::vector<pw::frmDoc *> docs;
    for (int i = 0; i < 10; ++i) {
        docs.push_back(openPage(ws, page));
        pw::HighlightDocument(ws, *docs.back());
    }
    QCoreApplication::processEvents();
    pw::frmConfigure *form = pw::ShowConfigure(ws, &program.main());
    // What the font dialog would have left: the text class one point larger.
    ws.fonts.text.Size = qint16(ws.fonts.text.Size + 1);
    form->Tag = QStringLiteral("CT");
    QElapsedTimer t;
    t.start();
    form->Command1->click();
    const double okMs = msSince(t);
    QCoreApplication::processEvents();
    bench::report("configure", "ok_text_font_10_pages_1mb", okMs, "ms",
                  QStringLiteral("\"with_repaint_ms\": %1").arg(msSince(t), 0, 'f', 1));
    for (pw::frmDoc *doc : docs)
        closeDocument(doc);
});
