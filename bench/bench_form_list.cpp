#include "bench.h"

#include "app/application.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/workspace.h"
#include "files/open_document.h"
#include "platform/platform.h"
#include "wizards/form_wizard.h"
#include "wizards/list_wizard.h"

#include <QCoreApplication>
#include <QFile>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>

#include <algorithm>

namespace {

double msSince(const QElapsedTimer &t)
{
    return double(t.nsecsElapsed()) / 1e6;
}

// Median and worst of one list operation repeated in the middle of a long list.
void reportOperation(const QString &figure, std::vector<double> &samples, int entries)
{
    const double worst = *std::max_element(samples.begin(), samples.end());
    bench::report("formlist", figure, bench::percentile(samples, 0.5), "ms",
                  QStringLiteral("\"entries\": %1, \"worst_ms\": %2").arg(entries).arg(worst, 0, 'f', 3));
}

} // namespace

// The List Wizard's Place of a 10,000-entry list and the Form Wizard's Place of a 1,000-option select
// into the middle of an open, coloured 1 MB page, the dialogs driven through their buttons' handlers;
// and Add, Delete and Move in a list of 10,000 entries.
static bench::Register formListBench("formlist", [] {
    QTemporaryDir dir;
    pw::Application program(pw::platform());
    bench::showMain(program);
    pw::Workspace &ws = program.workspace();
    ws.options.setChecked(pw::Option::Highlight, true);
    const QString path = dir.filePath(QStringLiteral("page.html"));
    if (!bench::writePage(path, 1024 * 1024))
        return;
    const int entries = qEnvironmentVariableIsSet("PAGEWRIGHT_BENCH_LIST")
                            ? qEnvironmentVariableIntValue("PAGEWRIGHT_BENCH_LIST")
                            : 10000;
    const int options = entries / 10;

    const auto openPage = [&]() -> pw::frmDoc * {
        pw::frmDoc *doc = pw::OpenFromHandOver(ws, path);
        if (!doc)
            return nullptr;
        QCoreApplication::processEvents();
        doc->Text->setSelStart(doc->Text->TextLength() / 2);
        return doc;
    };

    // The list: filled through Add, then edited, then placed.
    {
        pw::frmDoc *doc = openPage();
        if (!doc)
            return;
        QElapsedTimer t;
        t.start();
        auto *list = pw::OpenWizard<pw::frmList>(ws, &program.main()); // looks for a list around the caret
        bench::report("formlist", QStringLiteral("open_list_wizard_in_1mb"), msSince(t), "ms");
        t.start();
        for (int i = 1; i <= entries; ++i) {
            list->tbOrderedText->setText(QStringLiteral("List element number %1").arg(i));
            list->Add_Click(pw::ListKind::Ordered);
        }
        bench::report("formlist", QStringLiteral("add_%1_entries").arg(entries), msSince(t), "ms",
                      QStringLiteral("\"us_per_add\": %1").arg(1000.0 * msSince(t) / entries, 0, 'f', 2));
        QCoreApplication::processEvents();

        std::vector<double> adds, deletes, ups, downs;
        for (int i = 0; i < 50; ++i) {
            list->lstOrdered->setCurrentRow(entries / 2 + i);
            t.start();
            list->Move_Click(pw::ListKind::Ordered, true);
            ups.push_back(msSince(t));
            t.start();
            list->Move_Click(pw::ListKind::Ordered, false);
            downs.push_back(msSince(t));
            list->tbOrderedText->setText(QStringLiteral("one more"));
            t.start();
            list->Add_Click(pw::ListKind::Ordered);
            adds.push_back(msSince(t));
            list->lstOrdered->setCurrentRow(entries / 2);
            t.start();
            list->Delete_Click(pw::ListKind::Ordered);
            deletes.push_back(msSince(t));
            QCoreApplication::processEvents();
        }
        reportOperation(QStringLiteral("move_up_in_%1").arg(entries), ups, entries);
        reportOperation(QStringLiteral("move_down_in_%1").arg(entries), downs, entries);
        reportOperation(QStringLiteral("add_to_%1").arg(entries), adds, entries);
        reportOperation(QStringLiteral("delete_in_%1").arg(entries), deletes, entries);

        const int before = doc->Text->TextLength();
        t.start();
        list->PlaceList_Click(pw::ListKind::Ordered);
        const double ms = msSince(t);
        bench::report("formlist", QStringLiteral("place_%1_entry_list_into_1mb_coloured").arg(entries), ms,
                      "ms",
                      QStringLiteral("\"pieces\": %1, \"chars\": %2")
                          .arg(2 * entries + 2)
                          .arg(doc->Text->TextLength() - before));
        const int inside = doc->Text->SelStart() - 10; // in the last entry
        t.start();
        const auto found = pw::ListAround(doc->Text->Text(), inside);
        bench::report(
            "formlist", QStringLiteral("read_back_%1_entry_list_in_1mb").arg(entries), msSince(t), "ms",
            QStringLiteral("\"entries_found\": %1").arg(found ? found->options.entries.size() : -1));
        list->Command1->click();
        doc->unloadQuietly();
        QCoreApplication::processEvents();
    }

    // The select: options added through Add, placed through Place Select.
    {
        pw::frmDoc *doc = openPage();
        if (!doc)
            return;
        auto *form = pw::OpenWizard<pw::frmForm>(ws, &program.main(), pw::FormKind::Select);
        form->tbSelectName->setText(QStringLiteral("choice"));
        for (int i = 1; i <= options; ++i) {
            form->tbSelectOptionText->setText(QStringLiteral("Option number %1").arg(i));
            form->Command18_Click();
        }
        const int before = doc->Text->TextLength();
        QElapsedTimer t;
        t.start();
        form->Place_Click(pw::FormKind::Select);
        const double ms = msSince(t);
        bench::report("formlist", QStringLiteral("place_%1_option_select_into_1mb_coloured").arg(options), ms,
                      "ms",
                      QStringLiteral("\"pieces\": %1, \"chars\": %2")
                          .arg(2 * options + 2)
                          .arg(doc->Text->TextLength() - before));
        form->Command1->click();
        doc->unloadQuietly();
        QCoreApplication::processEvents();
    }

    // For comparison: the same list written piece by piece, each piece a change of its own.
    if (!qEnvironmentVariableIsSet("PAGEWRIGHT_BENCH_NO_PIECEWISE")) {
        pw::frmDoc *doc = openPage();
        if (!doc)
            return;
        pw::ListOptions o;
        for (int i = 1; i <= entries; ++i)
            o.entries.append({QStringLiteral("List element number %1").arg(i), {}});
        const QList<pw::MarkupPiece> pieces = pw::ListPieces(o);
        QElapsedTimer t;
        t.start();
        {
            pw::EditingSurface::EditGroup oneStep(*doc->Text);
            for (const pw::MarkupPiece &piece : pieces)
                pw::WritePiece(*doc->Text, piece);
        }
        bench::report("formlist", QStringLiteral("piecewise_%1_entry_list_into_1mb_coloured").arg(entries),
                      msSince(t), "ms");
        doc->unloadQuietly();
        QCoreApplication::processEvents();
    }
});
