#include "test_support.h"

#include "core/app_state.h"
#include "core/settings_store.h"
#include "site/resource_view.h"

#include <QDir>
#include <QGuiApplication>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>

using namespace pw;

// The resource view opened on a document as a user would, its tree read back by kind.
class TestResourceView : public ProgramTest
{
    Q_OBJECT

    frmDoc *doc = nullptr;

    frmResources *openView(const QString &command = QStringLiteral("mnuFileResources"))
    {
        if (command.startsWith(QLatin1String("img")))
            program->button(command)->trigger();
        else if (!program->trigger(doc, command))
            return nullptr;
        auto *form = main().findChild<frmResources *>();
        return form && form->isVisible() ? form : nullptr;
    }

    // The leaves of every kind that has any, in the tree's order: "kind: leaf, leaf | kind: ...".
    static QString filed(frmResources *form)
    {
        QStringList kinds;
        for (const char *key : {"local", "http", "ftp", "mailto", "gopher", "telnet", "wais", "news", "file",
                                "other_urls", "bmp", "gif", "jpg", "other_images"}) {
            QTreeWidgetItem *folder = form->node(QLatin1String(key));
            if (!folder)
                return QStringLiteral("no folder ") + QLatin1String(key);
            QStringList leaves;
            for (int i = 0; i < folder->childCount(); ++i)
                leaves << folder->child(i)->text(0);
            if (!leaves.isEmpty())
                kinds << QLatin1String(key) + QStringLiteral(": ") + leaves.join(QStringLiteral(", "));
        }
        return kinds.join(QStringLiteral(" | "));
    }

private Q_SLOTS:
    void init()
    {
        startProgram();
        doc = program->newDocument();
    }

    void referencesFiled_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("expected");
        QTest::newRow("a picture linked, then shown") << "x <A HREF=\"a.gif\"> <IMG SRC=\"a.gif\">" << "local: a.gif";
        QTest::newRow("every kind")
            << "x <A HREF=\"Page.html#top\"><a href=\"MAILTO:me\"><A HREF=\"http://h/\"><A HREF=\"irc:c\">"
               "<IMG SRC=\"a.jpeg\"><FRAME SRC=\"f.html\"><BODY BACKGROUND=\"b.GIF\"><IMG SRC=\"c.bmp\">"
            << "local: Page.html#top | http: http://h/ | mailto: MAILTO:me | other_urls: irc:c | bmp: c.bmp | "
               "gif: b.GIF | jpg: a.jpeg | other_images: f.html";
        QTest::newRow("blanks around the equals sign or single quotes hide it")
            << "x <A HREF = \"x\"> <IMG SRC='y.gif'>" << "";
        QTest::newRow("LOWSRC holds the pattern") << "x <IMG LOWSRC=\"low.gif\">" << "gif: low.gif";
        QTest::newRow("an unclosed value ends its own scan only")
            << "x <IMG SRC=\"b.gif\"> <A HREF=\"open" << "gif: b.gif";
        QTest::newRow("a blank belongs to the URL") << "x <A HREF=\"my page.html\">" << "local: my page.html";
        QTest::newRow("the same URL twice") << "x <A HREF=\"a.html\">\r\n<A HREF=\"a.html\">" << "local: a.html";
        QTest::newRow("an empty value lists nothing") << "x <A HREF=\"\"><A HREF=\"b.html\">" << "local: b.html";
    }
    void referencesFiled()
    {
        QFETCH(QString, text);
        QFETCH(QString, expected);
        doc->Text->setText(text);
        frmResources *form = openView();
        QVERIFY(form);
        QCOMPARE(filed(form), expected);
    }

    // The report leaves the document as it was: caret, no selection, not dirty; the pass leaves
    // nothing behind, and the tree opens down to the kinds with nothing selected.
    void documentLeftAsFound()
    {
        doc->Text->setText(QStringLiteral("ab <A HREF=\"a.html\">"));
        doc->state().setDirty(false);
        doc->Text->setSelStart(1);
        doc->Text->setSelLength(2);
        frmResources *form = openView(QStringLiteral("imgResources"));
        QVERIFY(form);
        QCOMPARE(doc->Text->SelStart(), 1);
        QCOMPARE(doc->Text->SelLength(), 0);
        QVERIFY(!doc->state().Dirty());
        QCOMPARE(passLeftovers(main()), QString());
        QCOMPARE(form->TreeView1->topLevelItem(0)->text(0), doc->Caption());
        QVERIFY(form->node(QStringLiteral("other_urls"))->parent()->isExpanded());
        QVERIFY(form->node(QStringLiteral("other_images"))->parent()->isExpanded());
        QVERIFY(form->TreeView1->selectedItems().isEmpty());
        QVERIFY(form->Command1->isEnabled());
        form->Command1->click();
        QTRY_VERIFY(!main().findChild<frmResources *>());
        QTRY_COMPARE(main().focusWidget(), doc->Text);
    }

    // Escape is read once before the scans (a press from before is forgotten), then once per URL.
    void escapeStopsAll_data()
    {
        QTest::addColumn<int>("poll");
        QTest::addColumn<QString>("expected");
        QTest::newRow("a press from before") << 1 << "local: a.html, b.html | gif: c.gif, d.gif";
        QTest::newRow("in the first scan") << 2 << "local: a.html";
        QTest::newRow("in the last scan") << 4 << "local: a.html, b.html | gif: c.gif";
    }
    void escapeStopsAll()
    {
        QFETCH(int, poll);
        QFETCH(QString, expected);
        doc->Text->setText(QStringLiteral("x <A HREF=\"a.html\"><A HREF=\"b.html\"><IMG SRC=\"c.gif\"><IMG SRC=\"d.gif\">"));
        platform().escapeAtPoll = {poll};
        frmResources *form = openView();
        QVERIFY(form);
        QCOMPARE(filed(form), expected);
        QCOMPARE(passLeftovers(main()), QString());
    }

    // Local references of a saved page are looked for beside it.
    void localReferencesChecked_data()
    {
        QTest::addColumn<QString>("url");
        QTest::addColumn<QString>("status");
        QTest::newRow("there, with a fragment") << "there.html#top" << "found";
        QTest::newRow("with a query") << "there.html?x=1" << "found";
        QTest::newRow("a folder up and back") << "sub/../there.html" << "found";
        QTest::newRow("the page's own anchor") << "#top" << "found";
        QTest::newRow("a percent-encoded blank") << "my%20page.html" << "found";
        QTest::newRow("missing") << "gone.html" << "missing";
        QTest::newRow("letter case differs") << "sub/pic.gif" << "case";
        QTest::newRow("a scheme is not looked for") << "http://h/there.html" << "";
    }
    void localReferencesChecked()
    {
        QFETCH(QString, url);
        QFETCH(QString, status);
        QDir(temp->path()).mkpath(QStringLiteral("sub"));
        for (const char *name : {"there.html", "my page.html", "sub/Pic.GIF"})
            QVERIFY(!write(QLatin1String(name), "x").isEmpty());
        QVERIFY(opened(QStringLiteral("page.html"), ("x <A HREF=\"" + url + "\">").toUtf8()));
        frmResources *form = openView();
        QVERIFY(form);
        QTreeWidgetItem *leaf = form->node(url);
        QVERIFY(leaf);
        QCOMPARE(frmResources::diskStatusOf(leaf), status);
    }

    void doubleClickSelectsTheReference()
    {
        doc->Text->setText(QStringLiteral("x <A HREF=\"a.html\"> <IMG SRC=\"b.gif\">"));
        frmResources *form = openView();
        QVERIFY(form);
        QTreeWidget *tree = form->TreeView1;
        form->node(QStringLiteral("gif"))->setExpanded(true);
        const QPoint at = tree->visualItemRect(form->node(QStringLiteral("b.gif"))).center();
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(tree->viewport(), Qt::LeftButton, {}, at);
        QTRY_VERIFY(!main().findChild<frmResources *>());
        QCOMPARE(doc->Text->SelText(), QStringLiteral("b.gif"));
        QCOMPARE(doc->Text->SelStart(), 30);
    }

    // The place is read when the view opens and written however it closes; a place on no screen
    // falls back to the middle.
    void placeKept_data()
    {
        QTest::addColumn<QPoint>("stored");
        QTest::addColumn<bool>("closeBox");
        QTest::addColumn<bool>("onScreen");
        QTest::newRow("Done") << QPoint(30, 40) << false << true;
        QTest::newRow("close box") << QPoint(50, 20) << true << true;
        QTest::newRow("off every screen") << QPoint(-30000, -30000) << false << false;
    }
    void placeKept()
    {
        QFETCH(QPoint, stored);
        QFETCH(bool, closeBox);
        QFETCH(bool, onScreen);
        SettingsStore().setResourceWinState({pixelsToTwips(stored.y()), pixelsToTwips(stored.x()), 3030, 4650});
        doc->Text->setText(QStringLiteral("x"));
        frmResources *form = openView();
        QVERIFY(form);
        QCOMPARE(form->size(), QSize(twipsToPixels(3030), twipsToPixels(4650)));
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        const QPoint middle(screen.left() + (screen.width() - form->width()) / 2,
                            screen.top() + int((screen.height() - form->height()) * 0.8 / 2));
        QCOMPARE(form->pos(), onScreen ? stored : middle);
        form->move(form->pos() + QPoint(5, 6));
        const QPoint moved = form->pos();
        if (closeBox)
            form->close();
        else
            form->Command1->click();
        QTRY_VERIFY(!main().findChild<frmResources *>());
        const WindowPlacement kept = SettingsStore().resourceWinState(screen);
        QCOMPARE(QPoint(twipsToPixels(kept.Left), twipsToPixels(kept.Top)), moved);
    }
};

PW_TEST_MAIN(TestResourceView)
#include "tst_resource_view.moc"
