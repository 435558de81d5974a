#include "isolated_main.h"
#include "test_support.h"

#include "core/settings_store.h"
#include "files/previous_lists.h"

#include <QMenu>
#include <QTest>

using namespace pw;

// The previous-file list: the main menu's ten items, the documents' copies and the settings' list.
class TestPreviousLists : public ProgramTest
{
    Q_OBJECT

    QAction *master(const QString &name)
    {
        for (QMenu *menu : program->main().mainMenus())
            if (auto *action = menu->findChild<QAction *>(name))
                return action;
        return nullptr;
    }
    static QString item(int i) { return QStringLiteral("mnuFilePrevious(%1)").arg(i); }
    // The entries of the visible items of a menu, in menu order.
    template<typename Find> static QStringList shownEntries(Find find)
    {
        QStringList entries;
        for (int i = 1; i <= 10; ++i)
            if (QAction *a = find(item(i)); a && a->isVisible())
                entries << a->data().toString();
        return entries;
    }
    QStringList masterEntries()
    {
        return shownEntries([this](const QString &n) { return master(n); });
    }
    static QString path(int n) { return QStringLiteral("/home/ann/site/page%1.html").arg(n); }
    static void addPaths(int count)
    {
        for (int n = 1; n <= count; ++n)
            AddPreviousFile(path(n));
    }

private Q_SLOTS:
    void init()
    {
        PreviousEntries = {};
        program = new TestProgram;
    }

    void shortening_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("separator");
        QTest::addColumn<QString>("shown");
        QTest::newRow("short path stands") << "C:\\web\\index.html" << "\\" << "C:\\web\\index.html";
        QTest::newRow("exactly forty stands") << "C:\\web\\tessaline\\products\\spring\\idx.htm" << "\\"
                                              << "C:\\web\\tessaline\\products\\spring\\idx.htm";
        QTest::newRow("drive, tail from a folder")
            << "C:\\Documents\\Pagewright\\Projects\\Homepage\\pages\\index.htm" << "\\"
            << "C:\\...\\Projects\\Homepage\\pages\\index.htm";
        QTest::newRow("drive, separator where the search starts")
            << "C:\\x\\abcdefghij\\klmnopqrstuvwxyz0123456789abcd.htm" << "\\"
            << "C:\\...\\klmnopqrstuvwxyz0123456789abcd.htm";
        QTest::newRow("drive, blanks in folders")
            << "D:\\Web Sites\\Tessaline\\Product pages\\2024\\Spring\\catalogue.html" << "\\"
            << "D:\\...\\2024\\Spring\\catalogue.html";
        QTest::newRow("drive, long file name: nothing after the dots")
            << "C:\\a\\bbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbbb.htm" << "\\" << "C:\\...";
        QTest::newRow("network path keeps its server")
            << "\\\\server\\share\\web\\tessaline\\products\\index.html" << "\\"
            << "\\\\server\\...\\products\\index.html";
        QTest::newRow("slash path keeps its first folder")
            << "/home/ann/sites/tessaline/products/spring/catalogue.html" << "/"
            << "/home/.../products/spring/catalogue.html";
        QTest::newRow("slash path, long first folder")
            << "/tessaline-web-site-archive-2024/pages/products/spring/index.html" << "/"
            << "/.../pages/products/spring/index.html";
        QTest::newRow("slash path, long file name")
            << "/home/ann/x/aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa.html" << "/" << "/home/...";
        QTest::newRow("relative slash path")
            << "sites/tessaline/products/spring/2024/catalogue.html" << "/" << "sites/.../spring/2024/catalogue.html";
    }
    void shortening()
    {
        QFETCH(QString, path);
        QFETCH(QString, separator);
        QFETCH(QString, shown);
        QCOMPARE(ShortenPathForMenu(path, 40, separator[0]), shown);
        QVERIFY(shown.size() <= 41);
    }

    void newestFirstAndTheEleventhDropsTheOldest()
    {
        QVERIFY(!master("mnuFileSep1")->isVisible());
        addPaths(11);
        QStringList expected;
        for (int n = 11; n >= 2; --n)
            expected << path(n);
        QCOMPARE(masterEntries(), expected);
        QCOMPARE(PreviousEntries[PreviousKind::Files], expected);
        QVERIFY(master("mnuFileSep1")->isVisible());
        QCOMPARE(master(item(1))->text(), path(11));
        QCOMPARE(PreviousFile(10), path(2));
    }

    void anEntryAddedAgainMovesToTheTop_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("again");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("the first again leaves one entry")
            << 3 << path(3) << QStringList{path(3), path(2), path(1)};
        QTest::newRow("the fifth moves up and closes the gap")
            << 6 << path(2) << QStringList{path(2), path(6), path(5), path(4), path(3), path(1)};
        QTest::newRow("the fifth of a full list keeps the tenth")
            << 10 << path(6)
            << QStringList{path(6), path(10), path(9), path(8), path(7), path(5), path(4), path(3), path(2), path(1)};
        QTest::newRow("the tenth of a full list")
            << 10 << path(1)
            << QStringList{path(1), path(10), path(9), path(8), path(7), path(6), path(5), path(4), path(3), path(2)};
    }
    void anEntryAddedAgainMovesToTheTop()
    {
        QFETCH(int, count);
        QFETCH(QString, again);
        QFETCH(QStringList, expected);
        addPaths(count);
        AddPreviousFile(again);
        QCOMPARE(masterEntries(), expected);
        QCOMPARE(PreviousEntries[PreviousKind::Files], expected);
        for (int i = expected.size() + 1; i <= 10; ++i) {
            QVERIFY(!master(item(i))->isVisible());
            QVERIFY(master(item(i))->data().toString().isEmpty());
        }
    }

    void pathsThatShortenAlikeCountAsOne()
    {
        // Both show as "/home/.../products/spring/catalogue.html".
        const QString ann = QStringLiteral("/home/ann/sites/tessaline/products/spring/catalogue.html");
        const QString bob = QStringLiteral("/home/bob/sites/tessaline/products/spring/catalogue.html");
        AddPreviousFile(path(1));
        AddPreviousFile(ann);
        AddPreviousFile(bob);
        QCOMPARE(masterEntries(), (QStringList{bob, path(1)}));
    }

    void removalMovesTheOnesBelowUp_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("index");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("the first") << 3 << 1 << QStringList{path(2), path(1)};
        QTest::newRow("one in the middle") << 4 << 2 << QStringList{path(4), path(2), path(1)};
        QTest::newRow("the last of three") << 3 << 3 << QStringList{path(3), path(2)};
        QTest::newRow("the tenth") << 10 << 10
                                   << QStringList{path(10), path(9), path(8), path(7), path(6), path(5), path(4),
                                                  path(3), path(2)};
    }
    void removalMovesTheOnesBelowUp()
    {
        QFETCH(int, count);
        QFETCH(int, index);
        QFETCH(QStringList, expected);
        addPaths(count);
        RemovePreviousFile(index);
        QCOMPARE(masterEntries(), expected);
        QCOMPARE(PreviousEntries[PreviousKind::Files], expected);
        QCOMPARE(PreviousFile(index), expected.value(index - 1));
    }

    void documentMenusFollowTheMainMenu()
    {
        frmDoc *first = program->newDocument();
        frmDoc *second = program->newDocument();
        addPaths(3);
        RemovePreviousFile(2);
        frmDoc *third = program->newDocument(); // made after the change
        for (frmDoc *doc : {first, second, third}) {
            QCOMPARE(shownEntries([doc](const QString &n) { return doc->item(n); }), masterEntries());
            for (int i = 1; i <= 10; ++i) {
                QCOMPARE(doc->item(item(i))->text(), master(item(i))->text());
                QCOMPARE(doc->item(item(i))->isVisible(), master(item(i))->isVisible());
            }
            QVERIFY(doc->item(QStringLiteral("mnuFileSep1"))->isVisible());
        }
        QCOMPARE(masterEntries(), (QStringList{path(3), path(1)}));
    }

    void loadShowsTheStoredList()
    {
        PreviousEntries[PreviousKind::Files] = {path(1), QStringLiteral("/home/ann/a&b.html")};
        frmDoc *doc = program->newDocument();
        LoadPreviousFileMenus();
        QCOMPARE(masterEntries(), PreviousEntries[PreviousKind::Files]);
        QCOMPARE(shownEntries([doc](const QString &n) { return doc->item(n); }), masterEntries());
        QVERIFY(master("mnuFileSep1")->isVisible());
        // A path's "&" shows as itself, not as a shortcut mark.
        QCOMPARE(master(item(2))->text(), QStringLiteral("/home/ann/a&&b.html"));
    }

    // The start opens its command-line file before the menus are built from the settings.
    void aFileAddedBeforeTheLoadGoesOnTopOfTheStoredList()
    {
        PreviousEntries[PreviousKind::Files] = {path(1), path(2)};
        AddPreviousFile(path(3));
        LoadPreviousFileMenus();
        const QStringList expected{path(3), path(1), path(2)};
        QCOMPARE(masterEntries(), expected);
        QCOMPARE(PreviousEntries[PreviousKind::Files], expected);
    }
};

PW_ISOLATED_TEST_MAIN(TestPreviousLists)
#include "tst_previous_lists.moc"
