#include "test_support.h"

#include "platform/message_box.h"
#include "wizards/table_wizard.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QScrollBar>
#include <QTabWidget>

using namespace pw;

// The Table Wizard driven by its controls, found by name.
class TestTableWizard : public ProgramTest
{
    Q_OBJECT

    frmDoc *doc = nullptr;
    frmTable *form = nullptr;

    template<typename W>
    W *control(const QString &name)
    {
        W *widget = form->findChild<W *>(name);
        if (!widget)
            qWarning("no control %s", qPrintable(name));
        return widget;
    }
    QLineEdit *box(const char *name) { return control<QLineEdit>(QLatin1String(name)); }
    QScrollBar *bar(const char *name) { return control<QScrollBar>(QLatin1String(name)); }
    // Typing replaces what the box holds, as a user selecting it first would.
    void type(const char *name, const QString &text)
    {
        QLineEdit *edit = box(name);
        edit->setFocus();
        edit->selectAll();
        if (text.isEmpty())
            QTest::keyClick(edit, Qt::Key_Delete);
        else
            QTest::keyClicks(edit, text);
    }
    void element(int r, int c)
    {
        bar("hsElementRow")->setValue(r);
        bar("hsElementCol")->setValue(c);
    }

private Q_SLOTS:
    void init()
    {
        startProgram();
        doc = program->newDocument();
        doc->Text->setText(QStringLiteral("<P>\r\n"));
        doc->Text->setSelStart(3);
        program->button(QStringLiteral("imgTable"))->trigger();
        form = main().findChild<frmTable *>();
        QVERIFY(form && form->isVisible());
    }

    void opensOnItsFirstTab()
    {
        QCOMPARE(form->windowTitle(), QStringLiteral("Table Wizard"));
        auto *tabs = control<QTabWidget>(QStringLiteral("TabStrip1"));
        QCOMPARE(tabs->currentIndex(), 0);
        QCOMPARE(tabs->tabText(2), QStringLiteral("Element Definition "));
        QCOMPARE(tabs->tabToolTip(0), QStringLiteral("Define the <TABLE> tag"));
        QCOMPARE(tabs->tabToolTip(1), QStringLiteral("Define the <TR> tag"));
        QCOMPARE(tabs->tabToolTip(2), QStringLiteral("Define Individual Table elements"));
        QCOMPARE(box("tbRowRow")->text(), QStringLiteral("1"));
        QCOMPARE(box("tbElementCol")->text(), QStringLiteral("1"));
        QVERIFY(control<QRadioButton>(QStringLiteral("opWidth(1)"))->isChecked()); // percent
        QVERIFY(!control<QPushButton>(QStringLiteral("Command6"))->isVisibleTo(form));
        QCOMPARE(form->focusWidget(), box("tbRows"));
    }

    // A newcomer's table: 3 x 3 with a header spanning two columns, in colour at the caret, and
    // gone again at one Undo.
    void spannedHeaderPlacedAndUndone()
    {
        type("tbRows", QStringLiteral("3"));
        type("tbCols", QStringLiteral("3"));
        control<QTabWidget>(QStringLiteral("TabStrip1"))->setCurrentIndex(2);
        control<QRadioButton>(QStringLiteral("opElementType(0)"))->click();
        bar("hsElementColspan")->setValue(2);
        QCOMPARE(box("tbElementColspan")->text(), QStringLiteral("2"));
        type("tbElementText", QStringLiteral("Names"));
        element(1, 2);
        auto *displaced = control<QLabel>(QStringLiteral("lbDisplaced"));
        QCOMPARE(displaced->text(), QStringLiteral("Displaced"));
        QVERIFY(!box("tbElementText")->isEnabled());
        QVERIFY(!control<QPushButton>(QStringLiteral("Command5"))->isEnabled());
        element(2, 2);
        QCOMPARE(displaced->text(), QString());
        QVERIFY(box("tbElementText")->isEnabled());

        control<QPushButton>(QStringLiteral("Command1"))->click();
        const QString table = QStringLiteral(
            "\r\n<!-- Table created using Tessaline Pagewright's Table Wizard -->\r\n<TABLE>\r\n"
            "    <TR>\r\n        <TH COLSPAN=\"2\">Names</TH>\r\n        <TD></TD>\r\n    </TR>\r\n"
            "    <TR>\r\n        <TD></TD>\r\n        <TD></TD>\r\n        <TD></TD>\r\n    </TR>\r\n"
            "    <TR>\r\n        <TD></TD>\r\n        <TD></TD>\r\n        <TD></TD>\r\n    </TR>\r\n</TABLE>\r\n");
        EditingSurface &text = *doc->Text;
        QCOMPARE(text.Text(), QStringLiteral("<P>") + table + QStringLiteral("\r\n"));
        QCOMPARE(text.SelStart(), 3 + int(table.size()));
        const QString classes = fontClasses(text);
        const int names = int(text.Text().indexOf(QLatin1String("Names")));
        QCOMPARE(classes.mid(names - 1, 7), QStringLiteral("hNamesh").replace(QLatin1String("Names"), QLatin1String("ttttt")));
        QVERIFY(!classes.contains(QLatin1Char('?')));
        QCOMPARE(classes.mid(3).count(QLatin1Char('t')), 5); // only the header's text
        QCOMPARE(passLeftovers(main()), QString());
        QTRY_VERIFY(!main().findChild<frmTable *>());
        QTRY_COMPARE(main().focusWidget(), doc->Text);

        QVERIFY(program->trigger(doc, "mnuEditUndo"));
        QCOMPARE(text.Text(), QStringLiteral("<P>\r\n"));
    }

    // The span of a column typed or set on the bar displaces the same cells.
    void rowspanTypedOrOnTheBar_data()
    {
        QTest::addColumn<bool>("typed");
        QTest::newRow("typed") << true;
        QTest::newRow("bar") << false;
    }
    void rowspanTypedOrOnTheBar()
    {
        QFETCH(bool, typed);
        type("tbRows", QStringLiteral("3"));
        QCOMPARE(bar("hsElementRowspan")->maximum(), 3);
        if (typed)
            type("tbElementRowspan", QStringLiteral("3"));
        else
            bar("hsElementRowspan")->setValue(3);
        QCOMPARE(form->model.element(1, 1).Rowspan, qint16(3));
        QVERIFY(form->model.element(2, 1).Displaced);
        QVERIFY(form->model.element(3, 1).Displaced);
        QCOMPARE(bar("hsElementRowspan")->value(), 3);
        QCOMPARE(box("tbElementRowspan")->text(), QStringLiteral("3"));
        // Looking at another element changes no record.
        element(3, 1);
        element(1, 1);
        QCOMPARE(form->model.element(1, 1).Rowspan, qint16(3));
        QCOMPARE(box("tbElementRowspan")->text(), QStringLiteral("3"));
        // Moving the bar to 0 releases.
        bar("hsElementRowspan")->setValue(0);
        QCOMPARE(form->model.element(1, 1).Rowspan, qint16(-1));
        QVERIFY(!form->model.element(2, 1).Displaced);
    }

    // Each box and its bar, and what stands in the model.
    void boxesAndBars_data()
    {
        QTest::addColumn<QString>("boxName");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<int>("barValue");
        QTest::newRow("border letters") << "tbBorder" << "abc" << "" << 0;
        QTest::newRow("border number") << "tbBorder" << "12" << "12" << 12;
        QTest::newRow("border fraction rounds") << "tbBorder" << "2.5" << "2.5" << 3;
        QTest::newRow("width above the bar") << "tbWidth" << "40000" << "30000" << 30000;
        QTest::newRow("rows letters read 1") << "tbRows" << "x" << "1" << 1;
        QTest::newRow("rows above the bar") << "tbRows" << "99999" << "30000" << 30000;
        QTest::newRow("element width letters") << "tbElementWidth" << "wide" << "" << 0;
    }
    void boxesAndBars()
    {
        QFETCH(QString, boxName);
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(int, barValue);
        type(qPrintable(boxName), typed);
        QCOMPARE(box(qPrintable(boxName))->text(), shown);
        QCOMPARE(bar(qPrintable(QString(boxName).replace(0, 2, QStringLiteral("hs"))))->value(), barValue);
    }

    void tableValuesInTheModel()
    {
        type("tbBorder", QStringLiteral("2.5"));
        QCOMPARE(form->model.settings.Border, qint16(3));
        type("tbBorder", QStringLiteral("abc"));
        QCOMPARE(form->model.settings.Border, qint16(-1));
        bar("hsBorder")->setFocus();
        bar("hsBorder")->setValue(5);
        bar("hsBorder")->setValue(0);
        QCOMPARE(form->model.settings.Border, qint16(0));
        QCOMPARE(box("tbBorder")->text(), QStringLiteral("0"));
        // The bar leaves alone the box being typed in.
        type("tbSpacing", QStringLiteral("7"));
        bar("hsSpacing")->setValue(9);
        QCOMPARE(box("tbSpacing")->text(), QStringLiteral("7"));
        control<QRadioButton>(QStringLiteral("opWidth(0)"))->click();
        QCOMPARE(form->model.settings.WidthIsPixels, qint16(-1));
    }

    // Rows x columns stay within 32767; a current element outside a shrunk table moves to the last.
    void shapeLimits()
    {
        type("tbCols", QStringLiteral("3"));
        type("tbRows", QStringLiteral("20000"));
        QCOMPARE(box("tbRows")->text(), QStringLiteral("10922"));
        type("tbRows", QStringLiteral("4"));
        element(4, 3);
        bar("hsRowRow")->setValue(4);
        type("tbRows", QStringLiteral("2"));
        type("tbCols", QStringLiteral("2"));
        QCOMPARE(box("tbElementRow")->text(), QStringLiteral("2"));
        QCOMPARE(box("tbElementCol")->text(), QStringLiteral("2"));
        QCOMPARE(box("tbRowRow")->text(), QStringLiteral("2"));
        QCOMPARE(bar("hsElementColspan")->maximum(), 1);
        auto *command6 = control<QPushButton>(QStringLiteral("Command6"));
        QVERIFY(!command6->isHidden());
        QCOMPARE(command6->text(), QStringLiteral("Set all elements in row 2 - 2 to row 1 values"));
        type("tbRows", QStringLiteral("1"));
        QVERIFY(command6->isHidden());
        QVERIFY(!command6->isEnabled());
    }

    void newStartsAgain()
    {
        type("tbRows", QStringLiteral("2"));
        type("tbBorder", QStringLiteral("2"));
        type("tbCaption", QStringLiteral("kept"));
        element(2, 1);
        type("tbElementText", QStringLiteral("gone"));
        control<QTabWidget>(QStringLiteral("TabStrip1"))->setCurrentIndex(2);
        control<QPushButton>(QStringLiteral("Command3"))->click();
        QCOMPARE(form->model.rows(), 1);
        QCOMPARE(form->model.TableElements.size(), 1);
        QCOMPARE(form->model.element(1, 1), ElementSpec{});
        QCOMPARE(form->model.settings.Border, qint16(-1));
        QCOMPARE(box("tbRows")->text(), QStringLiteral("1"));
        QCOMPARE(box("tbBorder")->text(), QString());
        QCOMPARE(box("tbElementText")->text(), QString());
        QCOMPARE(box("tbCaption")->text(), QStringLiteral("kept"));
        QCOMPARE(control<QTabWidget>(QStringLiteral("TabStrip1"))->currentIndex(), 2);
        QVERIFY(control<QRadioButton>(QStringLiteral("opWidth(1)"))->isChecked());
        QCOMPARE(form->model.settings.WidthIsPixels, qint16(0));
    }

    void noAtTheQuestionKeepsBoth()
    {
        doc->Text->setSelStart(0);
        doc->Text->setSelLength(3);
        platform().answers.enqueue(MsgAnswer::No);
        control<QPushButton>(QStringLiteral("Command1"))->click();
        verifyMessage(QStringLiteral("Highlighted text will be replaced!\r\nContinue?"), 52);
        QVERIFY(form->isVisible());
        QCOMPARE(doc->Text->Text(), QStringLiteral("<P>\r\n"));
        QCOMPARE(doc->Text->SelLength(), 3);
        QCOMPARE(passLeftovers(main()), QString());
    }
};

PW_TEST_MAIN(TestTableWizard)
#include "tst_table_wizard.moc"
