#include "isolated_main.h"
#include "wizards/anchor_wizard.h"
#include "wizards/rule_wizard.h"
#include "wizards/wizard_conduct.h"

using namespace pw;

// The wizards' rules that need no window: the path rule, the numeric boxes, the previous lists, the
// rule's tag and the anchor names.
class TestWizardRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void makeRelativeUrl_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("target");
        QTest::addColumn<QString>("relative");
        const struct {
            const char *name, *base, *target, *relative;
        } rows[] = {
            {"same folder", "C:\\site\\index.html", "C:\\site\\pic.gif", "pic.gif"},
            {"folder below", "C:\\site\\index.html", "C:\\site\\img\\pic.gif", "img\\pic.gif"},
            {"sibling folder", "C:\\site\\a\\index.html", "C:\\site\\img\\pic.gif", "..\\img\\pic.gif"},
            {"two up", "C:\\site\\a\\b\\index.html", "C:\\site\\pic.gif", "..\\..\\pic.gif"},
            {"other drive", "C:\\site\\index.html", "D:\\site\\pic.gif", "D:\\site\\pic.gif"},
            {"drive letter case", "C:\\site\\index.html", "c:\\site\\pic.gif", "c:\\site\\pic.gif"},
            {"folder case counts", "C:\\Site\\index.html", "C:\\site\\pic.gif", "..\\site\\pic.gif"},
            {"prefix not a folder", "C:\\site\\index.html", "C:\\sitemap\\pic.gif", "..\\sitemap\\pic.gif"},
            {"empty base", "", "C:\\site\\pic.gif", "C:\\site\\pic.gif"},
            {"base without folders", "index.html", "img\\pic.gif", "img\\pic.gif"},
        };
        for (const auto &row : rows)
            QTest::newRow(row.name) << row.base << row.target << row.relative;
        // The same rule on the host's paths.
        QTest::newRow("slashes: same folder") << "/home/site/index.html" << "/home/site/pic.gif" << "pic.gif";
        QTest::newRow("slashes: folder below") << "/home/site/index.html" << "/home/site/img/pic.gif" << "img/pic.gif";
        QTest::newRow("slashes: sibling folder") << "/home/site/a/index.html" << "/home/site/img/pic.gif" << "../img/pic.gif";
        QTest::newRow("slashes: two up") << "/home/site/a/b/index.html" << "/home/site/pic.gif" << "../../pic.gif";
        QTest::newRow("slashes: other tree") << "/home/site/index.html" << "/mnt/site/pic.gif" << "../../mnt/site/pic.gif";
        QTest::newRow("slashes: folder case counts") << "/home/Site/index.html" << "/home/site/pic.gif" << "../site/pic.gif";
        QTest::newRow("slashes: empty base") << "" << "/home/site/pic.gif" << "/home/site/pic.gif";
        QTest::newRow("root separator never counts") << "/index.html" << "/img/pic.gif" << "img/pic.gif";
    }
    void makeRelativeUrl()
    {
        QFETCH(QString, base);
        QFETCH(QString, target);
        QFETCH(QString, relative);
        const QChar separator = base.contains(QLatin1Char('\\')) || target.contains(QLatin1Char('\\'))
                                    ? QLatin1Char('\\') : QLatin1Char('/');
        QCOMPARE(MakeRelativeUrl(base, target, separator), relative);
    }

    void urlConversions()
    {
        const QChar bs = QLatin1Char('\\');
        QCOMPARE(UrlFromPath(QStringLiteral("..\\img\\pic.gif"), bs), QStringLiteral("../img/pic.gif"));
        QCOMPARE(UrlFromPath(QStringLiteral("pic.gif"), bs), QStringLiteral("pic.gif"));
        QCOMPARE(PathFromUrl(QStringLiteral("../img/pic.gif"), bs), QStringLiteral("..\\img\\pic.gif"));
        QCOMPARE(ResolveRelativeUrl(QStringLiteral("C:\\site\\a\\index.html"), QStringLiteral("../img/p.gif"), bs),
                 QStringLiteral("C:\\site\\a\\..\\img\\p.gif"));
        QCOMPARE(ResolveRelativeUrl(QStringLiteral("index.html"), QStringLiteral("img/p.gif"), QLatin1Char('/')),
                 QStringLiteral("img/p.gif"));
        QCOMPARE(BrowsedReference(QStringLiteral("/w/site/img/p.gif"), true, QStringLiteral("/w/site/a/i.html"), QLatin1Char('/')),
                 QStringLiteral("../img/p.gif"));
        QCOMPARE(BrowsedReference(QStringLiteral("C:\\w\\p.gif"), false, QStringLiteral("C:\\w\\i.html"), bs),
                 QStringLiteral("C:/w/p.gif"));
    }

    // One numeric test for every wizard's boxes; a table box rounds and keeps to its bar's range.
    void numericBoxes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("value"); // -99 not numeric
        QTest::newRow("digits") << "12" << 12;
        QTest::newRow("blanks around") << " 7 " << 7;
        QTest::newRow("plus sign") << "+3" << 3;
        QTest::newRow("minus sign held at the low end") << "-4" << 0;
        QTest::newRow("decimal point rounds") << "2.5" << 3;
        QTest::newRow("leading point") << ".4" << 0;
        QTest::newRow("trailing point") << "6." << 6;
        QTest::newRow("above the range") << "40000" << 30000;
        QTest::newRow("exponent") << "1e3" << -99;
        QTest::newRow("empty") << "" << -99;
        QTest::newRow("point alone") << "." << -99;
        QTest::newRow("two points") << "1.2.3" << -99;
        QTest::newRow("letters") << "abc" << -99;
    }
    void numericBoxes()
    {
        QFETCH(QString, text);
        QFETCH(int, value);
        const std::optional<int> number = BoxNumber(text, 0, 30000);
        QCOMPARE(number.value_or(-99), value);
    }

    void previousList_data()
    {
        QTest::addColumn<QStringList>("list");
        QTest::addColumn<QString>("value");
        QTest::addColumn<QStringList>("after");
        QTest::newRow("new goes first") << QStringList{"a", "b"} << "c" << QStringList{"c", "a", "b"};
        QTest::newRow("known keeps its place") << QStringList{"a", "b", "c"} << "b" << QStringList{"a", "b", "c"};
        QTest::newRow("whole strings, case counts") << QStringList{"ab"} << "AB" << QStringList{"AB", "ab"};
        QTest::newRow("the last falls off") << QStringList{"1", "2", "3", "4", "5"} << "6"
                                            << QStringList{"6", "1", "2", "3", "4"};
        QTest::newRow("an empty entry ends the list") << QStringList{"a", "", "b"} << "b" << QStringList{"b", "a"};
    }
    void previousList()
    {
        QFETCH(QStringList, list);
        QFETCH(QString, value);
        QFETCH(QStringList, after);
        RememberInPreviousList(list, value, 5);
        QCOMPARE(list, after);
    }

    void ruleTag_data()
    {
        QTest::addColumn<QString>("size");
        QTest::addColumn<QString>("width");
        QTest::addColumn<bool>("pixels");
        QTest::addColumn<int>("alignment");
        QTest::addColumn<bool>("noShade");
        QTest::addColumn<QString>("tag");
        QTest::newRow("defaults") << "" << "" << false << 0 << false << "<HR>";
        QTest::newRow("all, in order") << "3" << "50" << false << 3 << true << "<HR SIZE=3 WIDTH=50% ALIGN=CENTER NOSHADE>";
        QTest::newRow("width in pixels") << "" << "100" << true << 0 << false << "<HR WIDTH=100>";
        QTest::newRow("width in per cent") << "" << "100" << false << 0 << false << "<HR WIDTH=100%>";
        QTest::newRow("pixels without width") << "" << "" << true << 1 << false << "<HR ALIGN=LEFT>";
        QTest::newRow("decimal as typed") << "2.5" << "" << false << 2 << false << "<HR SIZE=2.5 ALIGN=RIGHT>";
    }
    void ruleTag()
    {
        QFETCH(QString, size);
        QFETCH(QString, width);
        QFETCH(bool, pixels);
        QFETCH(int, alignment);
        QFETCH(bool, noShade);
        QFETCH(QString, tag);
        const HrOptions options{size, width, pixels, alignment, noShade};
        QCOMPARE(CheckHrOptions(options), HrFault::None);
        QCOMPARE(HrTag(options), tag);
    }

    void anchorNames()
    {
        std::array<QString, 22> names;
        for (int i = 1; i <= 20; ++i)
            RememberLocalName(names, QStringLiteral("n%1").arg(i));
        QCOMPARE(names[1], QStringLiteral("n20"));
        QCOMPARE(names[20], QStringLiteral("n1"));
        RememberLocalName(names, QStringLiteral("n5"));
        QCOMPARE(names[1], QStringLiteral("n20")); // known: the order stays
        RememberLocalName(names, QStringLiteral("N5"));
        QCOMPARE(names[1], QStringLiteral("N5")); // case counts: a new name
        QCOMPARE(names[20], QStringLiteral("n2"));
        QCOMPARE(names[21], QStringLiteral("n1")); // pushed off the twenty
        QVERIFY(names[0].isEmpty());
    }
};

PW_TEST_MAIN(TestWizardRules)
#include "tst_wizard_rules.moc"
