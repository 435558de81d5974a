#include "bench.h"

#include "core/editing_surface.h"

#include <QApplication>
#include <QKeyEvent>

#include <vector>

namespace {

double msSince(const QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

// A page of `bytes` on one line (minified pages look like this), its tags in a font of their own,
// so that the line is made of many format runs.
QString oneLinePage(pw::EditingSurface &surface, qint64 bytes)
{
    QString page = bench::generatePage(bytes);
    page.replace(QLatin1String("\r\n"), QLatin1String(" "));
    surface.loadText(page, {}); // as a file opens
    pw::FontClass tag;
    tag.Name = QStringLiteral("Arial");
    tag.Size = 8;
    tag.Bold = true;
    QList<pw::EditingSurface::RangeEdit> edits;
    for (qsizetype at = page.indexOf(QLatin1Char('<')); at >= 0; at = page.indexOf(QLatin1Char('<'), at + 1)) {
        const qsizetype end = page.indexOf(QLatin1Char('>'), at);
        if (end < 0)
            break;
        edits.append({pw::EditingSurface::RangeEdit::MergeFont, int(at), int(end - at + 1), &tag, {}});
    }
    surface.applyEdits(edits);
    surface.clearUndo();
    return page;
}

void press(pw::EditingSurface &surface, int key, const QString &text)
{
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&surface, &down);
    QCoreApplication::sendEvent(&surface, &up);
}

} // namespace

// Keys in the middle of a page that is one long line: a typed letter, Backspace, and a letter over a
// selection of five. The surface alone, shown, so that its lines wrap at its width as a document's do.
static bench::Register typingBench("typing", [] {
    // Fewer keys for a run under an instruction counter.
    const int keys = qEnvironmentVariableIsSet("PAGEWRIGHT_BENCH_KEYS") ? qEnvironmentVariableIntValue("PAGEWRIGHT_BENCH_KEYS") : 40;
    QList<qint64> sizes = {32 * 1024LL, 256 * 1024LL};
    if (qEnvironmentVariableIsSet("PAGEWRIGHT_BENCH_LINE_KB"))
        sizes = {qEnvironmentVariableIntValue("PAGEWRIGHT_BENCH_LINE_KB") * 1024LL};
    for (const qint64 bytes : sizes) {
        pw::EditingSurface surface;
        surface.resize(1000, 700);
        surface.show();
        const QString page = oneLinePage(surface, bytes);
        QCoreApplication::processEvents();
        const int middle = int(page.size() / 2);
        struct Case {
            const char *name;
            int key;
            QString text;
            int selection;
        };
        const Case cases[] = {{"letter", Qt::Key_X, QStringLiteral("x"), 0},
                              {"backspace", Qt::Key_Backspace, QStringLiteral("\b"), 0},
                              {"over_selection", Qt::Key_Y, QStringLiteral("y"), 5}};
        for (const Case &c : cases) {
            std::vector<double> samples;
            for (int i = 0; i < keys; ++i) {
                surface.setSelStart(middle + i % 50);
                if (c.selection)
                    surface.setSelLength(c.selection);
                QElapsedTimer t;
                t.start();
                press(surface, c.key, c.text);
                samples.push_back(msSince(t));
            }
            bench::report("typing", QStringLiteral("%1_in_one_line_%2kb_median").arg(QLatin1String(c.name)).arg(bytes / 1024),
                          bench::percentile(samples, 0.5), "ms");
        }
    }
});
