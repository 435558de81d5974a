#include "bench.h"

#include "app/application.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/main_window.h"
#include "core/settings_store.h"
#include "core/workspace.h"
#include "files/open_document.h"
#include "platform/platform.h"
#include "site/resource_view.h"
#include "site/site_map.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTreeWidget>

namespace {

void writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(bytes);
}

// 1,000 folders of 20 files each, of the kinds a site holds.
int makeSite(const QString &base)
{
    static const char *endings[] = {".html", ".gif", ".jpg", ".txt", ".wav"};
    int files = 0;
    for (const QString &folder : bench::makeSiteFolders(base)) {
        for (int f = 0; f < 20; ++f, ++files) {
            // Each page links to two pages and a picture beside it, and one folder up.
            const QByteArray page = "<A HREF=\"file" + QByteArray::number((f + 5) % 20) + ".html\"> <IMG SRC=\"file" +
                                    QByteArray::number((f + 1) % 20) + ".gif\"> <A HREF=\"file" +
                                    QByteArray::number((f + 10) % 20) + ".html#top\"> <A HREF=\"../index.html\">";
            writeFile(QStringLiteral("%1/file%2%3").arg(folder).arg(f).arg(QLatin1String(endings[f % 5])),
                      f % 5 == 0 ? page : QByteArray("x"));
        }
    }
    return files;
}

// A page of about 1 MB with 10,000 references: half links, half pictures, text between.
QByteArray referencePage()
{
    QByteArray page = "<HTML>\r\n<BODY BACKGROUND=\"paper.gif\">\r\n";
    const QByteArray filler(44, 'w');
    for (int i = 0; i < 5000; ++i)
        page += "<P><A HREF=\"pages/page" + QByteArray::number(i) + ".html\">" + filler + "</A> <IMG SRC=\"img/pic" +
                QByteArray::number(i) + ".gif\"> " + filler + " " + filler + "</P>\r\n";
    page += "</BODY>\r\n</HTML>\r\n";
    return page;
}

} // namespace

static bench::Register siteBench("site", [] {
    QTemporaryDir dir;
    pw::Application program(pw::platform());
    bench::showMain(program);
    pw::Workspace &ws = program.workspace();

    const QString base = dir.filePath(QStringLiteral("site"));
    const int files = makeSite(base);
    {
        pw::SettingsStore store;
        store.writeString(pw::Setting::SiteMapPath, base);
        store.sync();
    }
    QElapsedTimer t;
    t.start();
    ws.options.setChecked(pw::Option::SiteMap, true);
    const double shown = double(t.nsecsElapsed()) / 1e6;
    pw::frmSiteMap *map = pw::SiteMapOf(program.main());
    const int nodes = map ? int(map->TreeView1->topLevelItem(0)->childCount()) : 0;
    bench::report("site", QStringLiteral("site_map_%1_files_1000_folders").arg(files), shown, "ms",
                  QStringLiteral("\"top_nodes\": %1").arg(nodes));
    if (map) {
        t.restart();
        map->BuildSiteMap(base);
        bench::report("site", QStringLiteral("site_map_rebuild_%1_files").arg(files), double(t.nsecsElapsed()) / 1e6, "ms");
        t.restart();
        map->mnuCountLinks_Click();
        bench::report("site", QStringLiteral("inbound_links_of_%1_pages").arg(files / 5), double(t.nsecsElapsed()) / 1e6, "ms");
    }
    ws.options.setChecked(pw::Option::SiteMap, false);
    QCoreApplication::processEvents();

    const QString path = dir.filePath(QStringLiteral("page.html"));
    const QByteArray page = referencePage();
    writeFile(path, page);
    pw::frmDoc *doc = pw::OpenFromHandOver(ws, path);
    if (!doc)
        return;
    QCoreApplication::processEvents();
    t.restart();
    pw::frmResources *view = pw::ShowResources(ws, &program.main());
    const double ms = double(t.nsecsElapsed()) / 1e6;
    const int leaves = view ? view->node(QStringLiteral("local"))->childCount() + view->node(QStringLiteral("gif"))->childCount() : 0;
    bench::report("site", QStringLiteral("resources_1mb_10000_references"), ms, "ms",
                  QStringLiteral("\"bytes\": %1, \"leaves\": %2").arg(page.size()).arg(leaves));
    if (view)
        view->close();
    doc->unloadQuietly();
    QCoreApplication::processEvents();
});
