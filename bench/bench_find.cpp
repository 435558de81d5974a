#include "bench.h"

#include "app/application.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/workspace.h"
#include "find/find_walk.h"
#include "find/frm_find.h"
#include "find/replace.h"
#include "platform/scripted_platform.h"

#include <QApplication>
#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>

#include <vector>

namespace {

double msSince(const QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

// About `bytes` of text with `hits` times "NEEDLE" spread evenly; lines of about 60 characters, or
// one line without line ends.
QString pageWithHits(qint64 bytes, int hits, bool oneLine)
{
    const QString filler = QStringLiteral("<P>Some text of a page, <B>bold</B> and more.</P> ");
    const qint64 gap = hits > 0 ? bytes / hits : bytes;
    QString page;
    page.reserve(bytes + 1024);
    qint64 sinceBreak = 0;
    for (int h = 0; page.size() < bytes; ++h) {
        const qint64 target = qMin(bytes, (h + 1) * gap);
        while (page.size() + 6 < target) {
            const qsizetype n = qMin<qsizetype>(filler.size(), target - 6 - page.size());
            page += QStringView(filler).left(n);
            sinceBreak += n;
            if (!oneLine && sinceBreak >= 60) {
                page += QStringLiteral("\r\n");
                sinceBreak = 0;
            }
        }
        if (h < hits)
            page += QStringLiteral("NEEDLE");
        else
            break;
    }
    return page;
}

// A document of the program, shown, holding text.
pw::frmDoc *openDocument(pw::Workspace &ws, const QString &text)
{
    const int slot = ws.slots.FindFreeSlot();
    pw::frmDoc *doc = ws.slots.CreateDocumentWindow(slot, QStringLiteral("Untitled: %1").arg(slot));
    doc->Text->loadText(text, {});
    doc->state().setDirty(false);
    doc->show();
    return doc;
}

void closeAll(pw::Workspace &ws)
{
    for (int slot : ws.slots.openSlots())
        ws.slots.document(slot)->unloadQuietly();
    QCoreApplication::processEvents();
}

const QString Needle = QStringLiteral("NEEDLE");
const QString Replacement = QStringLiteral("REPLACED");

// Replace All in one document: time and time per hit.
void replaceOne(pw::Workspace &ws, const char *figure, qint64 bytes, int hits, bool oneLine)
{
    pw::frmDoc *doc = openDocument(ws, pageWithHits(bytes, hits, oneLine));
    QCoreApplication::processEvents();
    ws.slots.CurrentDocument = doc->slot();
    QElapsedTimer t;
    t.start();
    const int count = pw::ReplaceAll(ws, {Needle, 0, false}, Replacement);
    const double ms = msSince(t);
    bench::report("find", QLatin1String(figure), ms, "ms",
                  QStringLiteral("\"hits\": %1, \"bytes\": %2, \"us_per_hit\": %3")
                      .arg(count)
                      .arg(bytes)
                      .arg(count ? ms * 1000 / count : 0, 0, 'f', 2));
    closeAll(ws);
}

void run()
{
    pw::ScriptedPlatform platform;
    pw::Application program(platform);
    pw::Workspace &ws = program.workspace();
    program.main().resize(1200, 900);
    program.main().show();
    QCoreApplication::processEvents();

    const qint64 MB = 1 << 20;
    const double lineMB = qEnvironmentVariableIsSet("PAGEWRIGHT_BENCH_FIND_LINE_MB")
                              ? qEnvironmentVariable("PAGEWRIGHT_BENCH_FIND_LINE_MB").toDouble()
                              : 5;
    replaceOne(ws, "replace_all_short_lines_0.5MB_10k", MB / 2, 10000, false);
    replaceOne(ws, "replace_all_short_lines_5MB_100k", 5 * MB, 100000, false);
    // One long line is slow to write into; PAGEWRIGHT_BENCH_FIND_LINE_MB=0 leaves it out.
    if (lineMB > 0) {
        replaceOne(ws, "replace_all_one_line_0.5MB_10k", MB / 2, 10000, true);
        replaceOne(ws, "replace_all_one_line_5MB_100k", qint64(lineMB * MB), int(lineMB * 20000), true);
    }

    // Thirty pages of 1 MB with 3,000 hits each, all documents.
    for (int i = 0; i < 30; ++i)
        openDocument(ws, pageWithHits(MB, 3000, false));
    QCoreApplication::processEvents();
    {
        QElapsedTimer t;
        t.start();
        const int count = pw::ReplaceAll(ws, {Needle, 0, true}, Replacement);
        bench::report("find", "replace_all_30_pages_1MB_3k", msSince(t), "ms", QStringLiteral("\"hits\": %1").arg(count));
    }
    // Find through the same thirty pages without a hit, bringing each forward.
    pw::ShowFind(ws, &program.main());
    pw::frmFind *form = pw::FindDialog(&program.main());
    form->tbFind->setText(QStringLiteral("ABSENT"));
    form->chkGlobal->setChecked(true);
    QCoreApplication::processEvents();
    {
        QElapsedTimer t;
        t.start();
        form->Command1_Click();
        bench::report("find", "find_30_pages_1MB_no_hit", msSince(t), "ms",
                      QStringLiteral("\"boxes\": %1").arg(platform.messages.size()));
    }
    form->chkGlobal->setChecked(false);
    closeAll(ws);

    // OK to a hit 10 KB ahead in 5 MB.
    pw::frmDoc *doc = openDocument(ws, pageWithHits(5 * MB, 5 * 1024 / 10, false));
    ws.slots.CurrentDocument = doc->slot();
    form->tbFind->setText(Needle);
    QCoreApplication::processEvents();
    std::vector<double> samples;
    for (int i = 0; i < 300; ++i) {
        QElapsedTimer t;
        t.start();
        form->Command1_Click();
        samples.push_back(msSince(t));
    }
    const double median = bench::percentile(samples, 0.5);
    bench::report("find", "find_next_10KB_ahead_in_5MB", median, "ms",
                  QStringLiteral("\"p99\": %1, \"at\": %2").arg(bench::percentile(samples, 0.99)).arg(doc->Text->SelStart()));
    form->close();
    closeAll(ws);
}

} // namespace

static bench::Register findBench("find", run);
