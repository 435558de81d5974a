#include "bench.h"

#include "app/application.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/workspace.h"
#include "files/new_document.h"
#include "platform/platform.h"
#include "wizards/body_wizard.h"
#include "wizards/image_wizard.h"
#include "wizards/rainbow_font.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QImage>
#include <QImageWriter>
#include <QLabel>
#include <QLineEdit>
#include <QRandomGenerator>
#include <QTemporaryDir>

#include <algorithm>

namespace {

// A JPEG of about 40 MB: noise at full quality does not compress.
QString writeLargeJpeg(const QString &path)
{
    QImage image(5200, 3900, QImage::Format_RGB32);
    QRandomGenerator random(7);
    for (int y = 0; y < image.height(); ++y)
        random.fillRange(reinterpret_cast<quint32 *>(image.scanLine(y)), image.width());
    QImageWriter writer(path, "jpeg");
    writer.setQuality(100);
    return writer.write(image) ? path : QString();
}

} // namespace

// The Image Wizard's size detection on a large picture; the Rainbow over a long selection; the
// Body Wizard opening on a large page without a body tag.
static bench::Register markupWizardsBench("markup_wizards", [] {
    QTemporaryDir dir;

    const QString jpeg = writeLargeJpeg(dir.filePath(QStringLiteral("large.jpg")));
    if (!jpeg.isEmpty()) {
        std::vector<double> samples;
        QSize size;
        for (int i = 0; i < 50; ++i) {
            QElapsedTimer t;
            t.start();
            size = pw::PictureSize(jpeg).value_or(QSize());
            samples.push_back(double(t.nsecsElapsed()) / 1e6);
        }
        const double first = samples.front();
        bench::report("markup_wizards", "picture_size_40mb_jpeg", bench::percentile(samples, 0.5), "ms",
                      QStringLiteral("\"bytes\": %1, \"first_ms\": %2, \"width\": %3, \"height\": %4")
                          .arg(QFileInfo(jpeg).size()).arg(first, 0, 'f', 3).arg(size.width()).arg(size.height()));
    }

    pw::Application program(pw::platform());
    bench::showMain(program);
    pw::Workspace &ws = program.workspace();
    ws.options.setChecked(pw::Option::Highlight, true);

    {
        pw::frmDoc *doc = pw::NewDocument(ws);
        QString text;
        text.reserve(100000);
        for (int i = 0; text.size() < 100000; ++i)
            text += QStringLiteral("Rainbow letters %1 ").arg(i);
        text.truncate(100000);
        doc->Text->setText(text);
        doc->Text->setSelStart(0);
        doc->Text->setSelLength(doc->Text->TextLength());
        auto *form = pw::OpenWizard<pw::frmRainBow>(ws, &program.main());
        QElapsedTimer t;
        t.start();
        form->Command1_Click();
        const double ms = double(t.nsecsElapsed()) / 1e6;
        bench::report("markup_wizards", "rainbow_100k_chars_step_1", ms, "ms",
                      QStringLiteral("\"chars_after\": %1").arg(doc->Text->TextLength()));
        doc->unloadQuietly();
        QCoreApplication::processEvents();
    }

    {
        pw::frmDoc *doc = pw::NewDocument(ws);
        QString page = bench::generatePage(8 * 1024 * 1024);
        page.replace(QStringLiteral("<BODY"), QStringLiteral("<DIV"));
        page.replace(QStringLiteral("</BODY"), QStringLiteral("</DIV"));
        doc->Text->setText(page);
        page.clear();
        doc->Text->setSelStart(doc->Text->TextLength() / 2);
        QCoreApplication::processEvents();
        std::vector<double> searches;
        for (int i = 0; i < 5; ++i) {
            QElapsedTimer t;
            t.start();
            pw::FindBodyTag(*doc->Text);
            searches.push_back(double(t.nsecsElapsed()) / 1e6);
        }
        bench::report("markup_wizards", "body_tag_search_8mb", bench::percentile(searches, 0.5), "ms");
        std::vector<double> samples;
        for (int i = 0; i < 5; ++i) {
            const qint64 before = bench::residentBytes();
            QElapsedTimer t;
            t.start();
            auto *form = pw::OpenWizard<pw::frmBody>(ws, &program.main());
            samples.push_back(double(t.nsecsElapsed()) / 1e6);
            const qint64 grown = bench::residentBytes() - before;
            if (i == 0)
                bench::report("markup_wizards", "body_wizard_open_8mb_first", samples.back(), "ms",
                              QStringLiteral("\"resident_growth_bytes\": %1, \"tag\": \"%2\"")
                                  .arg(grown).arg(form->lbBodyTag->text()));
            form->reject();
            QCoreApplication::processEvents();
        }
        bench::report("markup_wizards", "body_wizard_open_8mb_no_body_tag", bench::percentile(samples, 0.5), "ms",
                      QStringLiteral("\"chars\": %1").arg(doc->Text->TextLength()));
        doc->unloadQuietly();
        QCoreApplication::processEvents();
    }
});
