#include "bench.h"

#include "app/application.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/workspace.h"
#include "platform/platform.h"
#include "wizards/frame_generation.h"
#include "wizards/frame_wizard.h"
#include "wizards/virtual_window.h"

#include <QApplication>
#include <QCoreApplication>
#include <QMouseEvent>

namespace
{

using pw::FrameModel;

void cut(FrameModel &model, int frame, bool across, int at)
{
    model.CurrentFrame = qint16(frame);
    (across ? model.LastY : model.LastX) = qint16(at);
    across ? model.splitH() : model.splitV();
}

// Four levels alternating rows and columns, two pieces each, no line meeting another: 16 frames.
void nested(FrameModel &model, int frame, int top, int left, int bottom, int right, int level)
{
    if (level == 4)
        return;
    const bool across = level % 2 == 0;
    // Off-centre by level and place, so that no two lines line up.
    const int at = across ? top + (bottom - top) * (40 + 3 * level) / 100 / 15 * 15 + 15 * (left % 7)
                          : left + (right - left) * (40 + 3 * level) / 100 / 15 * 15 + 15 * (top % 7);
    const int added = model.count() + 1;
    cut(model, frame, across, at);
    if (across) {
        nested(model, frame, top, left, at, right, level + 1);
        nested(model, added, at, left, bottom, right, level + 1);
    } else {
        nested(model, frame, top, left, bottom, at, level + 1);
        nested(model, added, top, at, bottom, right, level + 1);
    }
}

// 8 columns of 8 rows each, the rows of each column at their own heights: 64 frames, after 100
// splits deleted again.
void grid(FrameModel &model)
{
    for (int i = 0; i < 100; ++i) {
        cut(model, 1, true, 1500);
        model.CurrentFrame = qint16(model.count());
        model.deleteCurrent();
    }
    const int width = FrameModel::BoxWidth / 8 / 15 * 15;
    QList<int> columns = {1};
    for (int c = 1; c < 8; ++c) {
        cut(model, columns.last(), false, c * width);
        columns.append(model.count());
    }
    for (int c = 0; c < 8; ++c) {
        const int height = (FrameModel::BoxHeight - 300) / 8 / 15 * 15;
        int frame = columns[c];
        for (int r = 1; r < 8; ++r) {
            cut(model, frame, true, r * height + 15 * c);
            frame = model.count();
        }
    }
}

double generationMs(pw::Workspace &ws, pw::frmFrames &form, bool percent)
{
    pw::FramePageOptions options;
    options.sets = {percent, form.model.ScaleX, form.model.ScaleY};
    options.title = QStringLiteral("Title");
    QElapsedTimer t;
    t.start();
    pw::GenerateFramePage(ws, form.model, options, form);
    const double ms = double(t.nsecsElapsed()) / 1e6;
    if (qEnvironmentVariableIsSet("PAGEWRIGHT_BENCH_SHOW"))
        qInfo("%s", qPrintable(ws.current()->Text->Text()));
    if (pw::frmDoc *page = ws.current())
        page->unloadQuietly();
    QCoreApplication::processEvents();
    return ms;
}

} // namespace

// The Frame Wizard: a nested design and a large one generated into a new document (no save), and
// a pointer moving over the designer.
static bench::Register framesBench("frames", [] {
    pw::Application program(pw::platform());
    bench::showMain(program);
    pw::Workspace &ws = program.workspace();
    ws.options.setChecked(pw::Option::Highlight, true);

    auto *form = pw::OpenWizard<pw::frmFrames>(ws, &program.main());
    nested(form->model, 1, 0, 0, FrameModel::BoxHeight, FrameModel::BoxWidth, 0);
    for (const bool percent : {true, false}) {
        std::vector<double> runs;
        for (int i = 0; i < 5; ++i)
            runs.push_back(generationMs(ws, *form, percent));
        bench::report("frames", QStringLiteral("nested_16_frames_%1").arg(percent ? "percent" : "pixels"),
                      bench::percentile(runs, 0.5), "ms",
                      QStringLiteral("\"frames\": %1").arg(form->model.liveCount()));
    }

    const auto builderMs = [&form] {
        QElapsedTimer t;
        t.start();
        const int n = 20;
        for (int i = 0; i < n; ++i)
            pw::FrameSetPieces(form->model, {});
        return double(t.nsecsElapsed()) / 1e6 / n;
    };
    bench::report("frames", QStringLiteral("nested_16_frames_builder_only"), builderMs(), "ms");

    form->model.reset();
    grid(form->model);
    bench::report("frames", QStringLiteral("grid_64_frames_builder_only"), builderMs(), "ms");
    std::vector<double> runs;
    for (int i = 0; i < 3; ++i)
        runs.push_back(generationMs(ws, *form, true));
    bench::report("frames", QStringLiteral("grid_64_frames_100_deleted"), bench::percentile(runs, 0.5), "ms",
                  QStringLiteral("\"frames\": %1, \"records\": %2")
                      .arg(form->model.liveCount())
                      .arg(form->model.count()));

    // Hover: the move handler (hit tests, snap, cursor), not the paint that follows later.
    pw::VirtualWindow *window = form->pbVirtualWindow;
    std::vector<double> hovers;
    for (int y = 0; y < window->height(); y += 3) {
        for (int x = 0; x < window->width(); x += 3) {
            QMouseEvent move(QEvent::MouseMove, QPointF(x, y), window->mapToGlobal(QPointF(x, y)),
                             Qt::NoButton, Qt::NoButton, Qt::NoModifier);
            QElapsedTimer t;
            t.start();
            QApplication::sendEvent(window, &move);
            hovers.push_back(double(t.nsecsElapsed()) / 1e3);
        }
    }
    const double p99 = bench::percentile(hovers, 0.99);
    bench::report("frames", QStringLiteral("hover_64_frames_median"), bench::percentile(hovers, 0.5), "us",
                  QStringLiteral("\"p99_us\": %1, \"moves\": %2").arg(p99, 0, 'f', 1).arg(hovers.size()));
    QElapsedTimer t;
    t.start();
    const int paints = 20;
    for (int i = 0; i < paints; ++i)
        window->grab();
    bench::report("frames", QStringLiteral("designer_paint_64_frames"),
                  double(t.nsecsElapsed()) / 1e6 / paints, "ms");
    form->close();
    QCoreApplication::processEvents();
});
