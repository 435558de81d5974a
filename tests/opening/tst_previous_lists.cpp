#include "test_support.h"

#include "files/previous_lists.h"

using namespace pw;

namespace {
QString page(int n)
{
    return QStringLiteral("/home/ann/site/page%1.html").arg(n);
}
// The list after page1 to pageN were added in turn: pageN first.
QStringList pages(int n)
{
    QStringList entries;
    for (int i = n; i >= 1; --i)
        entries << page(i);
    return entries;
}
QStringList pages(std::initializer_list<int> numbers)
{
    QStringList entries;
    for (int n : numbers)
        entries << page(n);
    return entries;
}
} // namespace

// The previous-file list: its rules, and every File menu showing it.
class TestPreviousLists : public ProgramTest
{
    Q_OBJECT

    // What the File menu of a document (null: the main one) shows: the data of its visible items,
    // then whether the separator shows.
    QStringList shown(frmDoc *doc)
    {
        QStringList entries;
        for (int i = 1; i <= 10; ++i)
            if (QAction *a = program->item(doc, QStringLiteral("mnuFilePrevious(%1)").arg(i)); a->isVisible())
                entries << a->data().toString();
        return entries << (program->item(doc, "mnuFileSep1")->isVisible() ? "separator" : "no separator");
    }

private Q_SLOTS:
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
    }
    void shortening()
    {
        QFETCH(QString, path);
        QFETCH(QString, separator);
        QFETCH(QString, shown);
        QCOMPARE(ShortenPathForMenu(path, 40, separator[0]), shown);
        QVERIFY(shown.size() <= 41);
    }

    void adding_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("to an empty list") << QStringList() << page(1) << pages(1);
        QTest::newRow("an eleventh drops the oldest") << pages(10) << page(11) << pages(11).mid(0, 10);
        QTest::newRow("the first again leaves one entry") << pages(3) << page(3) << pages(3);
        QTest::newRow("the fifth moves up and closes the gap") << pages(6) << page(2) << pages({2, 6, 5, 4, 3, 1});
        QTest::newRow("the fifth of a full list keeps the tenth")
            << pages(10) << page(6) << pages({6, 10, 9, 8, 7, 5, 4, 3, 2, 1});
        // Both show as "/home/.../products/spring/catalogue.html".
        QTest::newRow("paths that shorten alike count as one")
            << QStringList{"/home/ann/sites/tessaline/products/spring/catalogue.html", page(1)}
            << "/home/bob/sites/tessaline/products/spring/catalogue.html"
            << QStringList{"/home/bob/sites/tessaline/products/spring/catalogue.html", page(1)};
    }
    void adding()
    {
        QFETCH(QStringList, entries);
        QFETCH(QString, path);
        QFETCH(QStringList, expected);
        QCOMPARE(WithPreviousFile(entries, path), expected);
    }

    void removing_data()
    {
        QTest::addColumn<QStringList>("entries");
        QTest::addColumn<int>("index");
        QTest::addColumn<QStringList>("expected");
        QTest::newRow("the first") << pages(3) << 1 << pages(2);
        QTest::newRow("the tenth") << pages(10) << 10 << pages({10, 9, 8, 7, 6, 5, 4, 3, 2});
        QTest::newRow("one past the end") << pages(3) << 4 << pages(3);
    }
    void removing()
    {
        QFETCH(QStringList, entries);
        QFETCH(int, index);
        QFETCH(QStringList, expected);
        QCOMPARE(WithoutPreviousFile(entries, index), expected);
    }

    // The main menu and every document's menu, those made before the change and after, show the
    // same items; a path's "&" shows as itself, not as a shortcut mark.
    void everyFileMenuShowsTheList()
    {
        frmDoc *before = program->newDocument();
        QCOMPARE(shown(nullptr), QStringList{"no separator"});
        QCOMPARE(shown(before), QStringList{"no separator"});

        QStringList entries = pages(9);
        entries.prepend(QStringLiteral("/home/ann/a&b.html"));
        ws().setPreviousFiles(entries);
        frmDoc *after = program->newDocument();
        for (frmDoc *doc : std::initializer_list<frmDoc *>{nullptr, before, after}) {
            QCOMPARE(shown(doc), entries + QStringList{"separator"});
            QCOMPARE(program->item(doc, "mnuFilePrevious(1)")->text(), QStringLiteral("/home/ann/a&&b.html"));
            QCOMPARE(program->item(doc, "mnuFilePrevious(10)")->text(), page(1));
        }

        RemovePreviousFile(ws(), 1);
        QCOMPARE(shown(nullptr), pages(9) + QStringList{"separator"});
        QCOMPARE(shown(after), shown(nullptr));
        ws().setPreviousFiles({});
        QCOMPARE(shown(before), QStringList{"no separator"});
        QCOMPARE(shown(nullptr), QStringList{"no separator"});
    }
};

PW_TEST_MAIN(TestPreviousLists)
#include "tst_previous_lists.moc"
