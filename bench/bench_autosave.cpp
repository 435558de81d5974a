#include "bench.h"

#include "core/document_window.h"
#include "core/editing_surface.h"
#include "app/application.h"
#include "core/main_window.h"
#include "core/workspace.h"
#include "platform/platform.h"
#include "files/autosave.h"

#include <QApplication>
#include <QDir>
#include <QSaveFile>

#include <vector>

namespace {

double msSince(const QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

} // namespace

// One autosave pass over ten open 1 MB documents: how long typing stalls every ten seconds.
static bench::Register autosaveBench("autosave", [] {
    pw::Application program(pw::platform());
    pw::Workspace &ws = program.workspace();
    bench::showMain(program);
    const QString page = bench::generatePage(1024 * 1024);
    std::vector<pw::frmDoc *> documents;
    for (int i = 0; i < 10; ++i) {
        const int slot = ws.slots.FindFreeSlot();
        pw::frmDoc *doc = ws.slots.CreateDocumentWindow(slot, QStringLiteral("Untitled: %1").arg(slot));
        doc->Text->setText(page);
        documents.push_back(doc);
    }
    QCoreApplication::processEvents();
    const QString bytes = QStringLiteral("\"documents\": 10, \"bytes_each\": %1").arg(page.toUtf8().size());

    // A key typed at the end of a document, outside the timing.
    const auto type = [](pw::frmDoc *doc) {
        doc->Text->setSelStart(doc->Text->TextLength());
        doc->Text->setSelText(QStringLiteral("x"));
    };

    constexpr int Passes = 15;
    std::vector<double> all, one;
    for (int i = 0; i < Passes; ++i) {
        for (pw::frmDoc *doc : documents)
            type(doc);
        QElapsedTimer t;
        t.start();
        program.autoSave().AutoSavePass();
        all.push_back(msSince(t));
    }
    bench::report("autosave", "pass_10x1mb_all_changed_median", bench::percentile(all, 0.5), "ms", bytes);
    bench::report("autosave", "pass_10x1mb_all_changed_p99", bench::percentile(all, 0.99), "ms", bytes);
    for (int i = 0; i < Passes; ++i) {
        type(documents[size_t(i) % documents.size()]);
        QElapsedTimer t;
        t.start();
        program.autoSave().AutoSavePass();
        one.push_back(msSince(t));
    }
    bench::report("autosave", "pass_10x1mb_one_changed_median", bench::percentile(one, 0.5), "ms", bytes);
    bench::report("autosave", "pass_10x1mb_one_changed_p99", bench::percentile(one, 0.99), "ms", bytes);

    // The plain way for comparison: the whole text copied, converted, then written.
    std::vector<double> plain;
    const QString folder = pw::AutoSaveFolder();
    for (int i = 0; i < Passes; ++i) {
        QElapsedTimer t;
        t.start();
        for (size_t n = 0; n < documents.size(); ++n) {
            QSaveFile file(folder + QLatin1Char('/') + pw::AutoSaveFileName(int(n) + 1));
            if (file.open(QIODevice::WriteOnly)) {
                file.write(documents[n]->Text->Text().toUtf8());
                file.commit();
            }
        }
        plain.push_back(msSince(t));
    }
    bench::report("autosave", "text_copy_10x1mb_median", bench::percentile(plain, 0.5), "ms", bytes);

    pw::EmptyAutoSaveFolder();
    for (pw::frmDoc *doc : documents)
        doc->unloadQuietly();
    QCoreApplication::processEvents();
});
