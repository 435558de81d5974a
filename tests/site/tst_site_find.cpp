#include "test_support.h"

#include "core/settings_store.h"
#include "site/site_find_window.h"
#include "site/site_map.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QPushButton>

using namespace pw;

// Find in Files over a real temporary site, opened from the site map's folder menu.
class TestSiteFind : public ProgramTest
{
    Q_OBJECT

    QString base;

    void makeSite(const QStringList &files)
    {
        for (const QString &entry : files) {
            const qsizetype eq = entry.indexOf(QLatin1Char('='));
            const QString name = entry.left(eq);
            QDir(base).mkpath(QFileInfo(name).path());
            QByteArray bytes = entry.mid(eq + 1).toUtf8();
            bytes.replace("\\n", "\n").replace("\\r", "\r").replace("\\0", QByteArray(1, '\0'));
            for (qsizetype at; (at = bytes.indexOf("\\x")) >= 0;)
                bytes.replace(at, 4, QByteArray(1, char(bytes.mid(at + 2, 2).toInt(nullptr, 16))));
            QVERIFY(writeFile(base + QLatin1Char('/') + name, bytes));
        }
    }
    // Switches the site map on and chooses Find in Files on its root.
    frmSiteFind *openFind()
    {
        SettingsStore store;
        store.writeString(Setting::SiteMapPath, base);
        store.sync();
        program->trigger(nullptr, QStringLiteral("mnuOptionSiteMap"));
        frmSiteMap *map = SiteMapOf(main());
        if (!map || !map->node(base))
            return nullptr;
        map->TreeView1->setCurrentItem(map->node(base));
        map->mnuFoldMap->findChild<QAction *>(QStringLiteral("mnuFindInFiles"))->trigger();
        return main().findChild<frmSiteFind *>(QStringLiteral("frmSiteFind"));
    }
    static QString rows(const frmSiteFind *form)
    {
        QStringList texts;
        for (int i = 0; i < form->lstSiteHits->count(); ++i)
            texts << form->lstSiteHits->item(i)->text();
        return texts.join(QLatin1Char('|'));
    }
    frmSiteFind *search(const QString &target, bool matchCase = false)
    {
        frmSiteFind *form = openFind();
        if (!form)
            return nullptr;
        form->tbSiteFind->setText(target);
        form->chkCase->setChecked(matchCase);
        QTest::mouseClick(form->cmdSiteFind, Qt::LeftButton);
        return form;
    }

private Q_SLOTS:
    void init()
    {
        startProgram();
        base = QDir(path(QStringLiteral("site"))).absolutePath();
        QDir().mkpath(base);
    }

    void hitsByFileAndLine_data()
    {
        QTest::addColumn<QStringList>("files"); // name=bytes, with \n, \r and \0
        QTest::addColumn<QString>("target");
        QTest::addColumn<bool>("matchCase");
        QTest::addColumn<QString>("hits");
        QTest::addColumn<QString>("summary");
        const QStringList site{"a.html=one\\n  needle here  \\nx needle needle", "sub/b.htm=<B>NEEDLE</B>",
                               "sub/deep/c.txt=no\\nno\\r\\nneedle", "blob.dat=needle\\0\\0\\0",
                               "pic.gif=needle"};
        QTest::newRow("by file and line, one row per line")
            << site << "needle" << false
            << "a.html:2: needle here|a.html:3: x needle needle|sub/b.htm:1: <B>NEEDLE</B>|sub/deep/c.txt:3: needle"
            << "4 hits in 3 files";
        QTest::newRow("match case") << site << "NEEDLE" << true << "sub/b.htm:1: <B>NEEDLE</B>" << "1 hit in 1 file";
        QTest::newRow("nothing found") << site << "absent" << false << "" << "0 hits";
        QTest::newRow("CR line ends, an 8-bit page") << QStringList{"old.html=a\\rb\\r<P>caf\\xe9"}
                                                     << QString::fromUtf8("CAF\xc3\x89") << false
                                                     << QString::fromUtf8("old.html:3: <P>caf\xc3\xa9") << "1 hit in 1 file";
        // Most files are looked at as bytes first; these must still be found.
        QTest::newRow("UTF-16 with its mark") << QStringList{"w.txt=\\xff\\xfen\\0e\\0e\\0d\\0"} << "NEED" << false
                                              << "w.txt:1: need" << "1 hit in 1 file";
        QTest::newRow("KELVIN SIGN ignoring case") << QStringList{"k.txt=ab\\xe2\\x84\\xaa", "plain.txt=ab"} << "bk"
                                                   << false << QString::fromUtf8("k.txt:1: ab\u212a") << "1 hit in 1 file";
        QTest::newRow("a byte-split case") << QStringList{"m.txt=xNeEdLe"} << "nEeDlE" << false << "m.txt:1: xNeEdLe"
                                           << "1 hit in 1 file";
    }
    void hitsByFileAndLine()
    {
        QFETCH(QStringList, files);
        QFETCH(QString, target);
        QFETCH(bool, matchCase);
        QFETCH(QString, hits);
        QFETCH(QString, summary);
        makeSite(files);
        frmSiteFind *form = search(target, matchCase);
        QVERIFY(form);
        QCOMPARE(rows(form), hits);
        QCOMPARE(form->lblSiteHits->text(), summary);
        QCOMPARE(passLeftovers(main()), QString());
        QVERIFY(ws().slots.openSlots().isEmpty()); // searched unopened
    }

    // An open document is searched as it stands, not as it was saved.
    void openDocumentSearchedUnsaved()
    {
        makeSite({"a.html=old needle", "b.html=needle"});
        frmDoc *doc = opened(QStringLiteral("site/a.html"), "old needle");
        QVERIFY(doc);
        doc->Text->setText(QStringLiteral("new\r\nfresh needle"));
        frmSiteFind *form = search(QStringLiteral("needle"));
        QVERIFY(form);
        QCOMPARE(rows(form), QStringLiteral("a.html:2: fresh needle|b.html:1: needle"));
    }

    // Escape is polled once per folder of the walk, then before each file; the hits found stay.
    void escapeKeepsEarlierHits_data()
    {
        QTest::addColumn<int>("poll");
        QTest::addColumn<QString>("hits");
        QTest::newRow("in the walk") << 1 << "";
        QTest::newRow("before the first file") << 2 << "";
        QTest::newRow("part way") << 4 << "a.html:1: x|b.html:1: x";
        QTest::newRow("never") << 0 << "a.html:1: x|b.html:1: x|c.html:1: x";
    }
    void escapeKeepsEarlierHits()
    {
        QFETCH(int, poll);
        QFETCH(QString, hits);
        makeSite({"a.html=x", "b.html=x", "c.html=x"});
        frmSiteFind *form = openFind();
        QVERIFY(form);
        platform().escapeAtPoll = {poll};
        platform().escapePolls = 0;
        form->tbSiteFind->setText(QStringLiteral("x"));
        QTest::mouseClick(form->cmdSiteFind, Qt::LeftButton);
        QCOMPARE(rows(form), hits);
        QCOMPARE(form->lblSiteHits->text().endsWith(QLatin1String("; stopped")), poll != 0);
        QCOMPARE(passLeftovers(main()), QString());
    }

    // Activating a hit opens its file (or brings it forward) with the hit selected.
    void activatingOpensAtTheHit_data()
    {
        QTest::addColumn<bool>("openBefore");
        QTest::addColumn<bool>("enter");
        QTest::newRow("double click, unopened") << false << false;
        QTest::newRow("Enter, unopened") << false << true;
        QTest::newRow("double click, open behind another") << true << false;
    }
    void activatingOpensAtTheHit()
    {
        QFETCH(bool, openBefore);
        QFETCH(bool, enter);
        makeSite({"a.html=one\\ntwo Needle"});
        if (openBefore) {
            QVERIFY(opened(QStringLiteral("site/a.html"), "one\ntwo Needle"));
            program->newDocument();
        }
        frmSiteFind *form = search(QStringLiteral("needle"));
        QVERIFY(form);
        QCOMPARE(form->lstSiteHits->count(), 1);
        const QRect row = form->lstSiteHits->visualItemRect(form->lstSiteHits->item(0));
        if (enter) {
            form->activateWindow();
            QVERIFY(QTest::qWaitForWindowActive(form));
            form->lstSiteHits->setFocus();
            QTest::keyClick(form->lstSiteHits, Qt::Key_Return);
            QCOMPARE(form->lstSiteHits->count(), 1); // the default button did not search again
        } else {
            // A double click's second press comes after a first one on the same row.
            QTest::mouseClick(form->lstSiteHits->viewport(), Qt::LeftButton, {}, row.center());
            QTest::mouseDClick(form->lstSiteHits->viewport(), Qt::LeftButton, {}, row.center());
        }
        frmDoc *doc = program->current();
        QVERIFY(doc);
        QCOMPARE(QFileInfo(doc->state().path()).fileName(), QStringLiteral("a.html"));
        QCOMPARE(ws().slots.openSlots().size(), openBefore ? 2 : 1);
        QCOMPARE(doc->Text->SelStart(), 9); // behind "one\r\ntwo "
        QCOMPARE(doc->Text->SelText(), QStringLiteral("Needle"));
    }
};

PW_TEST_MAIN(TestSiteFind)
#include "tst_site_find.moc"
