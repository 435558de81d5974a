#include "bench.h"

#include "core/workspace.h"
#include "platform/platform.h"

#include "app/application.h"
#include "core/document_window.h"
#include "core/main_window.h"
#include "files/open_document.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

// Opening a page as a user does: read, decode, the write into the surface, the colouring pass, the
// anchor names.
static bench::Register openBench("open", [] {
    QTemporaryDir dir;
    pw::Application program(pw::platform());
    bench::showMain(program);
    for (const qint64 size : {100 * 1024LL, 1024 * 1024LL, 8 * 1024 * 1024LL}) {
        const QString path = dir.filePath(QStringLiteral("page%1.html").arg(size));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            return;
        file.write(bench::generatePage(size).toUtf8());
        file.close();
        for (const bool colour : {false, true}) {
            program.workspace().options.setChecked(pw::Option::Highlight, colour);
            const qint64 before = bench::residentBytes();
            QElapsedTimer t;
            t.start();
            pw::frmDoc *doc = pw::OpenFromHandOver(program.workspace(), path);
            const double ms = double(t.nsecsElapsed()) / 1e6;
            const QString figure = QStringLiteral("open_%1kb_%2").arg(size / 1024).arg(colour ? "coloured" : "plain");
            bench::report("open", figure, ms, "ms");
            if (size >= 8 * 1024 * 1024)
                bench::report("open", figure + QStringLiteral("_memory_per_file_byte"),
                              double(bench::residentBytes() - before) / double(size), "x");
            if (doc)
                doc->unloadQuietly();
            QCoreApplication::processEvents();
        }
    }
});
