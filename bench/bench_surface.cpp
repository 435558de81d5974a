#include "bench.h"

#include "core/editing_surface.h"

#include <QCoreApplication>
#include <QRandomGenerator>

#include <functional>
#include <vector>

// Surface operations on an 8 MB page: load, Find, SelStart/SelText writes, the whole text,
// GetLineFromChar.
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

    {
        // As an open writes a file: in pieces, with progress after each.
        pw::EditingSurface loaded;
        loaded.resize(1000, 700);
        loaded.show();
        t.restart();
        loaded.loadText(page, [](qint64, qint64) { return true; });
        QCoreApplication::processEvents();
        bench::report("surface", "load_text_8mb_shown", t.elapsed(), "ms");
    }

    QRandomGenerator rng(7);
    // Times `count` runs of op at random positions, in milliseconds each.
    const auto sample = [&](int count, const std::function<void(int)> &op) {
        std::vector<double> samples;
        samples.reserve(size_t(count));
        for (int i = 0; i < count; ++i) {
            const int at = int(rng.bounded(surface.TextLength()));
            QElapsedTimer one;
            one.start();
            op(at);
            samples.push_back(double(one.nsecsElapsed()) / 1e6);
        }
        return samples;
    };

    auto samples = sample(100000, [&](int at) {
        surface.Find(QStringLiteral(">"), at, -1, pw::EditingSurface::NoHighlight);
    });
    bench::report("surface", "find_median", bench::percentile(samples, 0.5), "ms");
    bench::report("surface", "find_p99", bench::percentile(samples, 0.99), "ms");

    samples = sample(10000, [&](int at) {
        surface.setSelStart(at);
        surface.setSelText(QStringLiteral("x"));
    });
    bench::report("surface", "selstart_seltext_median", bench::percentile(samples, 0.5), "ms");
    bench::report("surface", "selstart_seltext_p99", bench::percentile(samples, 0.99), "ms");

    samples = sample(9, [&](int) { (void)surface.Text(); });
    bench::report("surface", "text_8mb_median", bench::percentile(samples, 0.5), "ms");

    samples = sample(10000, [&](int at) { surface.GetLineFromChar(at); });
    bench::report("surface", "line_from_char_median", bench::percentile(samples, 0.5), "ms");
    bench::report("surface", "resident_after_8mb", bench::residentBytes() / 1048576.0, "MiB");
});
