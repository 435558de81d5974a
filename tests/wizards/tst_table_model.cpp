#include "isolated_main.h"
#include "core/app_state.h"
#include "wizards/table_markup.h"
#include "wizards/table_model.h"

using namespace pw;

// The Table Wizard's model and markup, without a window.
class TestTableModel : public QObject
{
    Q_OBJECT

    // 'x' for a displaced element, '.' for another, row by row.
    static QString displaced(const TableModel &model)
    {
        QString pattern;
        for (const ElementSpec &e : model.TableElements)
            pattern += e.Displaced ? QLatin1Char('x') : QLatin1Char('.');
        return pattern;
    }
    static QString joined(const QList<MarkupPiece> &pieces)
    {
        QString text;
        for (const MarkupPiece &p : pieces)
            text += p.text;
        return text;
    }

private Q_SLOTS:
    // Steps "row,col,c|r,text" typed into a span box, with the bar's Max the cells that remain.
    void spans_data()
    {
        QTest::addColumn<int>("rows");
        QTest::addColumn<int>("columns");
        QTest::addColumn<QStringList>("steps");
        QTest::addColumn<QString>("pattern");
        QTest::addColumn<int>("span");     // of the last step's element and direction
        QTest::addColumn<QString>("shown"); // the box after the last step; "-" when nothing changed
        QTest::newRow("2 displaces the next") << 1 << 3 << QStringList{"1,1,c,2"} << ".x." << 2 << "2";
        QTest::newRow("rowspan 3 down the column") << 3 << 2 << QStringList{"1,1,r,3"} << "..x.x." << 3 << "3";
        QTest::newRow("above Max stands as Max") << 1 << 3 << QStringList{"1,2,c,9"} << "..x" << 2 << "2";
        QTest::newRow("3 then 2 leaves the third") << 1 << 4 << QStringList{"1,1,c,3", "1,1,c,2"} << ".xx." << 2 << "2";
        QTest::newRow("then empty frees both") << 1 << 4 << QStringList{"1,1,c,3", "1,1,c,2", "1,1,c,"} << "...." << -1 << "";
        QTest::newRow("0 counts and marks nothing") << 1 << 3 << QStringList{"1,1,c,0"} << "..." << 0 << "0";
        QTest::newRow("empty after 0 changes nothing") << 1 << 3 << QStringList{"1,1,c,0", "1,1,c,"} << "..." << 0 << "-";
        QTest::newRow("same value again") << 1 << 3 << QStringList{"1,1,c,2", "1,1,c,2"} << ".x." << 2 << "-";
        QTest::newRow("letters with nothing given") << 1 << 3 << QStringList{"1,1,c,abc"} << "..." << -1 << "";
        QTest::newRow("fraction rounds") << 1 << 3 << QStringList{"1,1,c,2.6"} << ".xx" << 3 << "3";
        QTest::newRow("release stops at the first free cell")
            << 1 << 4 << QStringList{"1,3,c,2", "1,1,c,2", "1,1,c,"} << "...x" << -1 << "";
        QTest::newRow("release frees another span's cell")
            << 1 << 4 << QStringList{"1,2,c,2", "1,1,c,3", "1,1,c,"} << "...." << -1 << "";
        QTest::newRow("no overlap check") << 2 << 2 << QStringList{"1,2,r,2", "2,1,c,2"} << "...x" << 2 << "2";
    }
    void spans()
    {
        QFETCH(int, rows);
        QFETCH(int, columns);
        QFETCH(QStringList, steps);
        QFETCH(QString, pattern);
        QFETCH(int, span);
        QFETCH(QString, shown);
        TableModel model;
        model.setRows(rows);
        model.setColumns(columns);
        std::optional<TableModel::SpanShown> last;
        int r = 0, c = 0;
        TableModel::Span direction = TableModel::Span::Columns;
        for (const QString &step : steps) {
            const QStringList parts = step.split(QLatin1Char(','));
            r = parts[0].toInt();
            c = parts[1].toInt();
            direction = parts[2] == QLatin1String("c") ? TableModel::Span::Columns : TableModel::Span::Rows;
            const int max = direction == TableModel::Span::Columns ? columns - c + 1 : rows - r + 1;
            last = model.enterSpan(r, c, direction, parts[3], max);
        }
        QCOMPARE(displaced(model), pattern);
        const ElementSpec &e = model.element(r, c);
        QCOMPARE(int(direction == TableModel::Span::Columns ? e.Colspan : e.Rowspan), span);
        QCOMPARE(last ? last->box : QStringLiteral("-"), shown);
        if (last)
            QCOMPARE(last->bar, qMax(0, span));
    }

    void recordsKeepTheirFlatIndex()
    {
        TableModel model;
        model.setRows(2);
        model.setColumns(2);
        ElementSpec &cell = model.element(2, 1);
        cell.Text = QStringLiteral("A");
        cell.Edited = True;
        model.element(2, 2).Displaced = True;
        QCOMPARE(model.GetElementIndex(2, 1), 3);
        model.element(1, 1).Text = QStringLiteral("not edited");
        model.setColumns(3);
        QCOMPARE(model.element(1, 3).Text, QStringLiteral("A"));
        QVERIFY(model.element(2, 1).Displaced);
        QVERIFY(model.element(1, 1).Text.isEmpty());
        QCOMPARE(model.TableElements.size(), 6);
        model.setRows(1);
        QCOMPARE(model.TableElements.size(), 3);
        QCOMPARE(model.rows(), 1);
    }

    void copies()
    {
        TableModel model;
        model.setRows(3);
        model.setColumns(3);
        ElementSpec source;
        source.Edited = True;
        source.Text = QStringLiteral("s");
        source.Displaced = True;
        model.element(2, 2) = source;
        model.copyElementOn(2, 2);
        for (int i = 1; i <= 9; ++i)
            QCOMPARE(model.TableElements[i - 1] == source, i >= 5);

        model.reset();
        model.setRows(3);
        model.setColumns(2);
        model.element(1, 2).Text = QStringLiteral("top");
        model.element(1, 2).Edited = True;
        model.copyFirstRowDown();
        QCOMPARE(model.element(3, 2).Text, QStringLiteral("top"));
        QVERIFY(model.element(3, 1).Text.isEmpty());

        model.row(2).Align = 2;
        model.row(2).Edited = True;
        model.copyRowDown(2);
        QCOMPARE(model.row(3).Align, qint16(2));
        QCOMPARE(model.row(1).Align, qint16(0));
    }

    // The worked example: each line, each piece in its class.
    void workedExample()
    {
        TableModel model;
        model.setRows(2);
        model.setColumns(2);
        model.settings.Width = 100;
        model.settings.Border = 1;
        QVERIFY(model.enterSpan(1, 1, TableModel::Span::Columns, QStringLiteral("2"), 2));
        model.element(1, 1).Text = QStringLiteral("Head");
        QList<int> progress;
        QList<MarkupPiece> pieces;
        GenerateTable(model, {QString(), true}, [&](const MarkupPiece &p) { pieces.append(p); },
                      [&](int done, int total) { progress.append(100 * done / total); });
        QCOMPARE(joined(pieces), QStringLiteral(
            "\r\n<!-- Table created using Tessaline Pagewright's Table Wizard -->\r\n"
            "<TABLE WIDTH=\"100%\" BORDER=\"1\">\r\n"
            "    <TR>\r\n"
            "        <TD COLSPAN=\"2\">Head</TD>\r\n"
            "    </TR>\r\n"
            "    <TR>\r\n"
            "        <TD>Data Element 2, 1</TD>\r\n"
            "        <TD>Data Element 2, 2</TD>\r\n"
            "    </TR>\r\n"
            "</TABLE>\r\n"));
        QStringList texts;
        for (const MarkupPiece &p : pieces)
            if (!p.isTag)
                texts << p.text;
        QCOMPARE(texts, (QStringList{"Head", "Data Element 2, 1", "Data Element 2, 2"}));
        QCOMPARE(pieces.size(), 1 + 1 + 3 + 1 + 1 + 3 + 3 + 1 + 1);
        QCOMPARE(progress, (QList<int>{25, 50, 75, 100}));
    }

    void tableMarkup_data()
    {
        QTest::addColumn<QString>("setup");
        QTest::addColumn<QString>("expected");
        const QString head = QStringLiteral("\r\n<!-- Table created using Tessaline Pagewright's Table Wizard -->\r\n");
        QTest::newRow("nothing set") << "" << head + "<TABLE>\r\n    <TR>\r\n        <TD></TD>\r\n    </TR>\r\n</TABLE>\r\n";
        QTest::newRow("caption behind the table tag") << "caption"
            << head + "<TABLE>\r\n<CAPTION>Sales</CAPTION>\r\n    <TR>\r\n        <TD></TD>\r\n    </TR>\r\n</TABLE>\r\n";
        QTest::newRow("width in pixels, all table values") << "pixels"
            << head + "<TABLE WIDTH=\"300\" BORDER=\"0\" CELLSPACING=\"2\" CELLPADDING=\"3\" a=\"<&>\">\r\n"
                      "    <TR ALIGN=\"RIGHT\" VALIGN=\"BASELINE\" x>\r\n"
                      "        <TH WIDTH=\"40\" ALIGN=\"LEFT\" VALIGN=\"TOP\" COLSPAN=\"0\" y>a & b</TH>\r\n"
                      "    </TR>\r\n</TABLE>\r\n";
        QTest::newRow("header with rowspan, nothing below") << "rowspan"
            << head + "<TABLE>\r\n    <TR>\r\n        <TH ROWSPAN=\"2\"></TH>\r\n        <TD></TD>\r\n    </TR>\r\n"
                      "    <TR>\r\n        <TD></TD>\r\n    </TR>\r\n</TABLE>\r\n";
        QTest::newRow("a row of displaced cells") << "displaced row"
            << head + "<TABLE>\r\n    <TR>\r\n        <TD ROWSPAN=\"2\"></TD>\r\n    </TR>\r\n"
                      "    <TR>\r\n    </TR>\r\n</TABLE>\r\n";
    }
    void tableMarkup()
    {
        QFETCH(QString, setup);
        QFETCH(QString, expected);
        TableModel model;
        TableOptions options;
        if (setup == QLatin1String("caption")) {
            options.caption = QStringLiteral("Sales");
        } else if (setup == QLatin1String("pixels")) {
            model.settings = {300, True, 0, 2, 3, QStringLiteral("a=\"<&>\"  ")};
            model.row(1) = {True, 3, 4, QStringLiteral("x ")};
            ElementSpec &e = model.element(1, 1);
            e = {True, 0, 40, True, True, 1, 1, 0, -1, QStringLiteral("a & b  "), QStringLiteral("y")};
        } else if (setup == QLatin1String("rowspan")) {
            model.setRows(2);
            model.setColumns(2);
            model.element(1, 1).IsHeader = True;
            QVERIFY(model.enterSpan(1, 1, TableModel::Span::Rows, QStringLiteral("2"), 2));
        } else if (setup == QLatin1String("displaced row")) {
            model.setRows(2);
            QVERIFY(model.enterSpan(1, 1, TableModel::Span::Rows, QStringLiteral("2"), 2));
        }
        QCOMPARE(joined(TablePieces(model, options)), expected);
    }
};

PW_TEST_MAIN(TestTableModel)
#include "tst_table_model.moc"
