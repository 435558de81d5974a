#include "bench.h"

#include "app/application.h"
#include "core/main_window.h"
#include "core/workspace.h"
#include "platform/platform.h"
#include "site/site_find.h"
#include "site/site_find_window.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>

namespace {

// 1,000 folders of 10 pages of about 4 KB; one page in 100 holds the hit.
int makeSite(const QString &base)
{
    const QByteArray page = bench::generatePage(4096).toUtf8();
    int files = 0;
    for (const QString &folder : bench::makeSiteFolders(base)) {
        for (int f = 0; f < 10; ++f, ++files) {
            QFile file(QStringLiteral("%1/page%2.html").arg(folder).arg(f));
            if (!file.open(QIODevice::WriteOnly))
                continue;
            file.write(page);
            if (files % 100 == 0)
                file.write("\r\n<P>The NEEDLE is here.</P>\r\n");
        }
    }
    return files;
}

} // namespace

static bench::Register siteFindBench("sitefind", [] {
    QTemporaryDir dir;
    pw::Application program(pw::platform());
    bench::showMain(program);
    pw::Workspace &ws = program.workspace();
    const QString base = dir.filePath(QStringLiteral("site"));
    const int files = makeSite(base);

    QElapsedTimer t;
    t.start();
    const QStringList listed = pw::SiteTextFiles(base);
    bench::report("sitefind", QStringLiteral("walk_%1_files").arg(files), double(t.nsecsElapsed()) / 1e6, "ms");
    t.restart();
    const pw::SiteSearchResult plain = pw::SearchSiteFiles(listed, QStringLiteral("needle"), Qt::CaseInsensitive);
    bench::report("sitefind", QStringLiteral("search_%1_files_any_case").arg(files), double(t.nsecsElapsed()) / 1e6,
                  "ms", QStringLiteral("\"hits\": %1").arg(plain.hits.size()));

    // A text with a letter outside ASCII: every file decoded and searched as text.
    t.restart();
    const pw::SiteSearchResult decoded = pw::SearchSiteFiles(listed, QString::fromUtf8("n\xc3\xa9" "edle"), Qt::CaseInsensitive);
    bench::report("sitefind", QStringLiteral("search_%1_files_every_one_decoded").arg(files),
                  double(t.nsecsElapsed()) / 1e6, "ms", QStringLiteral("\"hits\": %1").arg(decoded.hits.size()));

    // As the user does it: the window, the button, the list filled.
    pw::frmSiteFind *form = pw::ShowSiteFind(ws, base, &program.main());
    form->tbSiteFind->setText(QStringLiteral("NEEDLE"));
    QCoreApplication::processEvents();
    t.restart();
    form->cmdSiteFind->click();
    bench::report("sitefind", QStringLiteral("find_in_files_%1_files").arg(files), double(t.nsecsElapsed()) / 1e6, "ms",
                  QStringLiteral("\"rows\": %1, \"summary\": \"%2\"").arg(form->lstSiteHits->count()).arg(form->lblSiteHits->text()));
    form->close();
    QCoreApplication::processEvents();
});
