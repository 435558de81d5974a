#include "bench.h"

#include "app/application.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/workspace.h"
#include "files/open_document.h"
#include "platform/platform.h"
#include "wizards/table_wizard.h"

#include <QCheckBox>
#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

// The Table Wizard's OK into the middle of an open, coloured 1 MB page, the document's change
// handlers connected as in use: n x n elements, each with its start tag, content and end tag.
static bench::Register wizardsBench("wizards", [] {
    QTemporaryDir dir;
    pw::Application program(pw::platform());
    bench::showMain(program);
    pw::Workspace &ws = program.workspace();
    ws.options.setChecked(pw::Option::Highlight, true);
    const QString path = dir.filePath(QStringLiteral("page.html"));
    if (!bench::writePage(path, 1024 * 1024))
        return;

    QList<int> sizes = {50, 100, 181};
    if (qEnvironmentVariableIsSet("PAGEWRIGHT_BENCH_TABLE"))
        sizes = {qEnvironmentVariableIntValue("PAGEWRIGHT_BENCH_TABLE")};
    for (const int n : sizes) {
        pw::frmDoc *doc = pw::OpenFromHandOver(ws, path);
        if (!doc)
            return;
        QCoreApplication::processEvents();
        doc->Text->setSelStart(doc->Text->TextLength() / 2);
        auto *form = pw::OpenWizard<pw::frmTable>(ws, &program.main());
        form->model.setRows(n);
        form->model.setColumns(n);
        form->ckDataPlace->setChecked(true); // every element writes its three pieces
        const int before = doc->Text->TextLength();
        QElapsedTimer t;
        t.start();
        form->Command1_Click();
        const double ms = double(t.nsecsElapsed()) / 1e6;
        const int cells = n * n;
        bench::report("wizards", QStringLiteral("table_%1x%1_into_1mb_coloured").arg(n), ms, "ms",
                      QStringLiteral("\"pieces\": %1, \"chars\": %2, \"us_per_cell\": %3")
                          .arg(3 * cells).arg(doc->Text->TextLength() - before).arg(1000.0 * ms / cells, 0, 'f', 2));
        doc->unloadQuietly();
        QCoreApplication::processEvents();
    }
});
