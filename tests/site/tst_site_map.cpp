#include "test_support.h"

#include "core/app_state.h"
#include "core/settings_store.h"
#include "files/open_document.h"
#include "platform/message_box.h"
#include "site/site_map.h"
#include "site/site_pictures.h"

#include <QComboBox>
#include <QContextMenuEvent>
#include <QDir>
#include <QMenu>
#include <QPushButton>
#include <QTreeView>

#include <sys/stat.h>
#include <unistd.h>

using namespace pw;

// The site map of real temporary folders, switched on and used as a user would.
class TestSiteMap : public ProgramTest
{
    Q_OBJECT

    QString base;

    void makeTree(const QStringList &files)
    {
        for (const QString &file : files) {
            QDir(base).mkpath(file.endsWith(QLatin1Char('/')) ? file : QFileInfo(file).path());
            if (!file.endsWith(QLatin1Char('/')))
                QVERIFY(writeFile(base + QLatin1Char('/') + file, "x"));
        }
    }
    static void storeBase(const QString &path)
    {
        SettingsStore store;
        store.writeString(Setting::SiteMapPath, path);
        store.sync();
    }
    frmSiteMap *switchOn()
    {
        program->trigger(nullptr, QStringLiteral("mnuOptionSiteMap"));
        return SiteMapOf(main());
    }
    // The tree as "name(picture)" and "folder[...]", children in the tree's order.
    static QString dump(QTreeWidgetItem *item, bool top = true)
    {
        if (!item)
            return QStringLiteral("<none>");
        const QString picture = pictureOf(item);
        if (!isFolderPicture(picture))
            return item->text(0) + QLatin1Char('(') + picture + QLatin1Char(')');
        QStringList children;
        for (int i = 0; i < item->childCount(); ++i)
            children << dump(item->child(i), false);
        return (top ? QStringLiteral("root") : item->text(0)) + QLatin1Char('[') + children.join(QLatin1Char(' ')) + QLatin1Char(']');
    }
    void menuKeyOn(frmSiteMap *map, const QString &key)
    {
        map->TreeView1->setCurrentItem(map->node(key));
        QContextMenuEvent event(QContextMenuEvent::Keyboard, QPoint(1, 1), map->TreeView1->mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(map->TreeView1, &event);
    }

private Q_SLOTS:
    void init()
    {
        startProgram();
        base = path(QStringLiteral("site"));
        QDir().mkpath(base);
        storeBase(base);
    }

    void fileTypes_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("picture");
        QTest::newRow("page.html") << "page.html" << "htmldoc";
        QTest::newRow("page.htm") << "page.htm" << "unknown";
        QTest::newRow("upper case") << "PAGE.HTML" << "unknown";
        QTest::newRow("x.au has the ending .au") << "x.au" << "unknown";
        QTest::newRow("a name of two characters") << "au" << "sound";
        QTest::newRow("x.ram") << "x.ram" << "sound";
        QTest::newRow("a.tar.gz") << "a.tar.gz" << "binfile";
        QTest::newRow("photo.jpeg") << "photo.jpeg" << "image";
        QTest::newRow("notes.txt") << "notes.txt" << "textdoc";
    }
    void fileTypes()
    {
        QFETCH(QString, name);
        QFETCH(QString, picture);
        QCOMPARE(ClassifyFileType(name.right(3)), picture);
    }

    // Files typed, sorted by text with folders among them; dot-files and special files left out;
    // keys are the real paths; the dock stands on the left, a quarter of the window wide.
    void treeOfAFolder()
    {
        makeTree({"b.html", "A.txt", "x.au", "PAGE.HTML", ".hidden", "sub/c.gif", "sub/.dot/", "empty/"});
        QCOMPARE(::mkfifo(QFile::encodeName(base + QStringLiteral("/pipe")).constData(), 0600), 0);
        frmSiteMap *map = switchOn();
        QVERIFY(map);
        QVERIFY(ws().options.isChecked(Option::SiteMap));
        QCOMPARE(map->windowTitle(), QStringLiteral("Tessaline Site Map - ") + base);
        QCOMPARE(dump(map->TreeView1->topLevelItem(0)),
                 QStringLiteral("root[A.txt(textdoc) b.html(htmldoc) empty[] PAGE.HTML(unknown) sub[c.gif(image)] x.au(unknown)]"));
        QCOMPARE(map->TreeView1->topLevelItem(0)->text(0), base);
        QVERIFY(map->node(base + QStringLiteral("/sub/c.gif")));
        QCOMPARE(main().dockWidgetArea(map), Qt::LeftDockWidgetArea);
        QTRY_VERIFY(qAbs(map->width() - main().width() / 4) < 12);
        QVERIFY(platform().messages.isEmpty());
    }

    // A linked folder is followed unless it leads to a folder the walk stands in.
    void linkedFolders()
    {
        makeTree({"a/", "b/d.txt"});
        QVERIFY(QFile::link(base, base + QStringLiteral("/a/up")));
        QVERIFY(QFile::link(base + QStringLiteral("/b"), base + QStringLiteral("/a/side")));
        frmSiteMap *map = switchOn();
        QVERIFY(map);
        QCOMPARE(dump(map->TreeView1->topLevelItem(0)), QStringLiteral("root[a[side[d.txt(textdoc)] up[]] b[d.txt(textdoc)]]"));
        QVERIFY(!map->node(base + QStringLiteral("/a/up"))->toolTip(0).isEmpty());
    }

    void unreadableFolder()
    {
        if (::geteuid() == 0)
            QSKIP("root reads every folder");
        makeTree({"locked/inner.txt", "open.txt"});
        QFile::setPermissions(base + QStringLiteral("/locked"), QFileDevice::WriteOwner);
        frmSiteMap *map = switchOn();
        QFile::setPermissions(base + QStringLiteral("/locked"), QFileDevice::ReadOwner | QFileDevice::WriteOwner | QFileDevice::ExeOwner);
        QVERIFY(map);
        QCOMPARE(dump(map->TreeView1->topLevelItem(0)), QStringLiteral("root[locked[] open.txt(unknown)]"));
        QVERIFY(!map->node(base + QStringLiteral("/locked"))->toolTip(0).isEmpty());
    }

    // With no usable base folder the map asks for one; Done walks the folder chosen and keeps it.
    void choosingTheBase_data()
    {
        QTest::addColumn<QString>("stored");
        QTest::addColumn<QString>("message");
        QTest::newRow("none yet") << QString()
                                  << "You currently do not have a base directory\r\nselected as the root of your web site.\r\n"
                                     "Please select the base directory for your\r\nweb site.";
        QTest::newRow("gone") << "/no/such/folder"
                              << "there was an error will trying to\r\nload your current base directory.\r\n"
                                 "Please reselect the base directory for your\r\nweb site.";
    }
    void choosingTheBase()
    {
        QFETCH(QString, stored);
        QFETCH(QString, message);
        storeBase(stored);
        makeTree({"index.html"});
        frmSiteMap *map = switchOn();
        QVERIFY(map);
        verifyMessage(message, MsgStyle::Information);
        QVERIFY(map->TreeView1->isHidden());
        QVERIFY(!map->Dir1->isHidden());
        QVERIFY(map->Command1->isEnabled());
        QCOMPARE(map->windowTitle(), QStringLiteral("Tessaline Site Map - "));
        map->setDir1Path(base);
        QCOMPARE(map->dir1Path(), base);
        map->Command1->click();
        QVERIFY(!map->TreeView1->isHidden());
        QVERIFY(map->Dir1->isHidden());
        QCOMPARE(map->windowTitle(), QStringLiteral("Tessaline Site Map - ") + base);
        QCOMPARE(dump(map->TreeView1->topLevelItem(0)), QStringLiteral("root[index.html(htmldoc)]"));
        QCOMPARE(SettingsStore().readString(Setting::SiteMapPath), base);
    }

    void doubleClickOpensFilesOnly()
    {
        makeTree({"page.html", "sub/"});
        frmSiteMap *map = switchOn();
        QVERIFY(map);
        QTreeWidget *tree = map->TreeView1;
        const QString file = base + QStringLiteral("/page.html");
        // A double click's second press comes after a first one on the same node.
        const auto doubleClick = [tree](QTreeWidgetItem *item) {
            const QPoint at = tree->visualItemRect(item).center();
            QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, at);
        };
        doubleClick(map->node(base + QStringLiteral("/sub")));
        QCOMPARE(program->captions(), QStringList());
        doubleClick(map->node(file));
        QCOMPARE(program->captions(), QStringList{file});
    }

    // The menu key shows the file menu (Edit its default) or the folder menu; Change Base Dir
    // empties the tree but keeps the stored base until Done.
    void menus()
    {
        makeTree({"page.html"});
        frmSiteMap *map = switchOn();
        QVERIFY(map);
        menuKeyOn(map, base + QStringLiteral("/page.html"));
        QTRY_VERIFY(map->mnuSiteMap->isVisible());
        QCOMPARE(map->mnuSiteMap->defaultAction()->objectName(), QStringLiteral("mnuSiteMapEdit"));
        map->mnuSiteMap->hide();
        map->mnuSiteMap->findChild<QAction *>(QStringLiteral("mnuSiteMapEdit"))->trigger();
        QCOMPARE(program->captions(), QStringList{base + QStringLiteral("/page.html")});

        menuKeyOn(map, base);
        QTRY_VERIFY(map->mnuFoldMap->isVisible());
        map->mnuFoldMap->hide();
        map->mnuFoldMap->findChild<QAction *>(QStringLiteral("mnuChangeBaseDir"))->trigger();
        QCOMPARE(map->TreeView1->topLevelItemCount(), 0);
        QVERIFY(map->TreeView1->isHidden());
        QCOMPARE(map->windowTitle(), QStringLiteral("Tessaline Site Map - "));
        program->trigger(nullptr, QStringLiteral("mnuOptionSiteMap"));
        QCOMPARE(SettingsStore().readString(Setting::SiteMapPath), base);
    }

    void deleteAFile_data()
    {
        QTest::addColumn<bool>("heldOpen");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("gone");
        QTest::newRow("held by an open document") << true << 0 << false;
        QTest::newRow("answered No") << false << int(MsgAnswer::No) << false;
        QTest::newRow("answered Yes") << false << int(MsgAnswer::Yes) << true;
    }
    void deleteAFile()
    {
        QFETCH(bool, heldOpen);
        QFETCH(int, answer);
        QFETCH(bool, gone);
        makeTree({"page.html"});
        const QString file = base + QStringLiteral("/page.html");
        if (heldOpen)
            QVERIFY(OpenFromSiteMap(ws(), file));
        frmSiteMap *map = switchOn();
        QVERIFY(map);
        if (answer)
            platform().answers.enqueue(answer);
        map->TreeView1->setCurrentItem(map->node(file));
        map->mnuSiteMap->findChild<QAction *>(QStringLiteral("mnuSiteMapDelete"))->trigger();
        if (heldOpen)
            verifyMessage(QStringLiteral("Permission denied!"), MsgStyle::Exclamation);
        else
            verifyMessage(QStringLiteral("Delete ") + file + QLatin1Char('?'), MsgStyle::YesNo + MsgStyle::Question);
        QCOMPARE(QFile::exists(file), !gone);
        QCOMPARE(QFile::exists(qEnvironmentVariable("XDG_DATA_HOME") + QStringLiteral("/Trash/files/page.html")), gone);
        QCOMPARE(map->node(file) == nullptr, gone);
        QCOMPARE(map->TreeView1->topLevelItem(0)->childCount(), gone ? 0 : 1);
    }

    // A file saved under a new name below the base comes into the tree in its sorted place.
    void savedFileEntered()
    {
        makeTree({"a.html", "c.html"});
        frmSiteMap *map = switchOn();
        QVERIFY(map);
        frmDoc *doc = program->newDocument();
        doc->Text->setText(QStringLiteral("x"));
        platform().chooseFile(base + QStringLiteral("/b.html"), 1);
        QVERIFY(program->trigger(doc, "mnuFileSaveAs"));
        QCOMPARE(dump(map->TreeView1->topLevelItem(0)), QStringLiteral("root[a.html(htmldoc) b.html(htmldoc) c.html(htmldoc)]"));
    }

    // With the option on the map comes at the start, and it stays on for the next one.
    void shownAtStartAndKept()
    {
        makeTree({"index.html"});
        SettingsStore store;
        store.writeInt(Setting::State, 0);
        store.writeBool(Setting::SiteMap, true);
        store.sync();
        program->app.MDIForm_Load(QString());
        frmSiteMap *map = SiteMapOf(main());
        QVERIFY(map);
        QVERIFY(program->item(program->current(), QStringLiteral("mnuOptionSiteMap"))->isChecked());
        QCOMPARE(dump(map->TreeView1->topLevelItem(0)), QStringLiteral("root[index.html(htmldoc)]"));
        QVERIFY(main().close());
        QVERIFY(SettingsStore().readBool(Setting::SiteMap));
        SettingsStore().writeBool(Setting::SiteMap, false);
    }

    // The dock's close box and the option are one: each switches the other off.
    void optionAndDockAgree()
    {
        frmSiteMap *map = switchOn();
        QVERIFY(map);
        map->close();
        QVERIFY(!ws().options.isChecked(Option::SiteMap));
        QVERIFY(!program->item(nullptr, QStringLiteral("mnuOptionSiteMap"))->isChecked());
        QTRY_VERIFY(!main().findChild<frmSiteMap *>());
        QVERIFY(switchOn());
        program->trigger(nullptr, QStringLiteral("mnuOptionSiteMap"));
        QTRY_VERIFY(!main().findChild<frmSiteMap *>());
    }

    // On demand: the inbound links of every file; pages nothing links to (the home page aside) in
    // italics. A page counts once per target, links to itself and with a scheme not at all.
    void inboundLinks()
    {
        makeTree({"pic.gif"});
        const QList<std::pair<const char *, QByteArray>> pages = {
            {"index.html", "<A HREF=\"a.html\"> <a href = \"sub/b.html#x\">"},
            {"a.html", "<IMG SRC=\"pic.gif\"> <A HREF=\"a.html\"> <A HREF=\"http://h/orphan.html\">"},
            {"sub/b.html", "<A HREF=\"../a.html?q\"> <A HREF=\"../a.html\">"},
            {"orphan.html", "<IMG SRC=\"pic.gif\">"},
        };
        QDir(base).mkpath(QStringLiteral("sub"));
        for (const auto &[name, text] : pages)
            QVERIFY(writeFile(base + QLatin1Char('/') + QLatin1String(name), text));
        frmSiteMap *map = switchOn();
        QVERIFY(map);
        map->mnuFoldMap->findChild<QAction *>(QStringLiteral("mnuCountLinks"))->trigger();
        QStringList seen;
        for (const char *name : {"index.html", "a.html", "sub/b.html", "orphan.html", "pic.gif"}) {
            QTreeWidgetItem *item = map->node(base + QLatin1Char('/') + QLatin1String(name));
            QVERIFY(item);
            seen << QStringLiteral("%1:%2%3").arg(QLatin1String(name), item->text(1),
                                                  item->font(0).italic() ? QStringLiteral(" orphan") : QString());
        }
        QCOMPARE(seen.join(QLatin1Char(' ')), QStringLiteral("index.html: a.html:2 sub/b.html:1 orphan.html: orphan pic.gif:2"));
        QCOMPARE(passLeftovers(main()), QString());
    }

    void focusHidesMarkupTools()
    {
        ws().options.setChecked(Option::Toolbar, true);
        program->newDocument();
        ws().SetMarkupToolsHidden(false);
        frmSiteMap *map = switchOn();
        QVERIFY(map);
        main().activateWindow();
        map->TreeView1->setFocus();
        QTRY_VERIFY(ws().markupToolsHidden());
    }
};

PW_TEST_MAIN(TestSiteMap)
#include "tst_site_map.moc"
