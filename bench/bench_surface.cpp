#include "bench.h"

#include "core/editing_surface.h"

#include <QRandomGenerator>

#include <vector>

// Surface operations on an 8 MB page: load, Find, SelStart/SelText writes, GetLineFromChar.
static bench::Register surfaceBench("surface", [] {
    const QString page = bench::generatePage(8 * 1024 * 1024);
    pw::EditingSurface surface;
    surface.resize(1000, 700);
    surface.show();

    QElapsedTimer t;
    t.start();
    surface.setText(page);
    bench::report("surface", "load_8mb", t.elapsed(), "ms",
                  QStringLiteral("\"bytes\": %1").arg(page.size()));

    const int length = surface.TextLength();
    QRandomGenerator rng(7);
    std::vector<double> samples;
    samples.reserve(100000);
    for (int i = 0; i < 100000; ++i) {
        const int from = int(rng.bounded(length));
        QElapsedTimer one;
        one.start();
        surface.Find(QStringLiteral(">"), from, -1, pw::EditingSurface::NoHighlight);
        samples.push_back(one.nsecsElapsed() / 1e6);
    }
    bench::report("surface", "find_median", bench::percentile(samples, 0.5), "ms");
    bench::report("surface", "find_p99", bench::percentile(samples, 0.99), "ms");

    samples.clear();
    for (int i = 0; i < 10000; ++i) {
        const int at = int(rng.bounded(surface.TextLength()));
        QElapsedTimer one;
        one.start();
        surface.setSelStart(at);
        surface.setSelText(QStringLiteral("x"));
        samples.push_back(one.nsecsElapsed() / 1e6);
    }
    bench::report("surface", "selstart_seltext_median", bench::percentile(samples, 0.5), "ms");
    bench::report("surface", "selstart_seltext_p99", bench::percentile(samples, 0.99), "ms");

    samples.clear();
    for (int i = 0; i < 10000; ++i) {
        const int at = int(rng.bounded(surface.TextLength()));
        QElapsedTimer one;
        one.start();
        surface.GetLineFromChar(at);
        samples.push_back(one.nsecsElapsed() / 1e6);
    }
    bench::report("surface", "line_from_char_median", bench::percentile(samples, 0.5), "ms");
    bench::report("surface", "resident_after_8mb", bench::residentBytes() / 1048576.0, "MiB");
});
