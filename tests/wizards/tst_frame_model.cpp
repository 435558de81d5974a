#include "isolated_main.h"
#include "core/app_state.h"
#include "wizards/frame_markup.h"
#include "wizards/frame_model.h"
#include "wizards/frame_reading.h"
#include "wizards/frame_source.h"

#include <QTemporaryDir>

using namespace pw;

// The Frame Wizard's design and the markup found from it, without a window.
class TestFrameModel : public QObject
{
    Q_OBJECT

    // Steps of a design, blank-separated: "H990@1" cuts frame 1 across at y 990, "V2520@2" frame
    // 2 down at x 2520, "D@3" deletes frame 3, "N" names every standing frame "f<index>". The
    // result of the last delete is returned.
    static FrameModel::DeleteResult design(FrameModel &model, const QString &steps)
    {
        FrameModel::DeleteResult result = FrameModel::DeleteResult::Deleted;
        for (const QString &step : steps.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            if (step == QLatin1String("N")) {
                for (int i = 1; i <= model.count(); ++i)
                    model.frame(i).Name = QStringLiteral("f%1").arg(i);
                continue;
            }
            const qsizetype at = step.indexOf(QLatin1Char('@'));
            model.CurrentFrame = qint16(step.mid(at + 1).toInt());
            const int pos = step.mid(1, at - 1).toInt();
            if (step.startsWith(QLatin1Char('H'))) {
                model.LastY = qint16(pos);
                model.splitH();
            } else if (step.startsWith(QLatin1Char('V'))) {
                model.LastX = qint16(pos);
                model.splitV();
            } else {
                result = model.deleteCurrent();
            }
        }
        return result;
    }
    // "top,left,bottom,right" of each record, "-" for a deleted one.
    static QString layout(const FrameModel &model)
    {
        QStringList all;
        for (int i = 1; i <= model.count(); ++i) {
            const FrameSpec &f = model.frame(i);
            all.append(f.isDeleted() ? QStringLiteral("-") : QStringLiteral("%1,%2,%3,%4").arg(f.Top).arg(f.Left).arg(f.Bottom).arg(f.Right));
        }
        return all.join(QLatin1Char(' '));
    }
    static QString joined(const QList<MarkupPiece> &pieces)
    {
        QString text;
        for (const MarkupPiece &p : pieces) {
            if (!p.isTag)
                return QStringLiteral("<text piece>");
            text += p.text;
        }
        return text;
    }

private Q_SLOTS:
    void splitsAndDeletes_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<int>("result");
        QTest::addColumn<QString>("frames");
        using R = FrameModel::DeleteResult;
        QTest::newRow("split then delete gives the area back") << "H990@1 D@2" << int(R::Deleted) << "0,0,2970,5050 -";
        QTest::newRow("split on the frame's own edge does nothing") << "H0@1 V5050@1" << int(R::Deleted) << "0,0,2970,5050";
        QTest::newRow("middle of three rows merges upward") << "H990@1 H1980@2 D@2" << int(R::Deleted)
                                                            << "0,0,1980,5050 - 1980,0,2970,5050";
        QTest::newRow("bottom row merges into the middle") << "H990@1 H1980@2 D@3" << int(R::Deleted)
                                                           << "0,0,990,5050 990,0,2970,5050 -";
        QTest::newRow("a column merges sideways") << "V2520@1 V3360@2 D@3" << int(R::Deleted)
                                                  << "0,0,2970,2520 0,2520,2970,5050 -";
        QTest::newRow("first frame stays") << "H990@1 D@1" << int(R::FirstFrame) << "0,0,990,5050 990,0,2970,5050";
        QTest::newRow("L-shaped neighbourhood refuses") << "V2520@1 H1485@1 D@2" << int(R::NoNeighbour)
                                                        << "0,0,1485,2520 0,2520,2970,5050 1485,0,2970,2520";
    }
    void splitsAndDeletes()
    {
        QFETCH(QString, steps);
        QFETCH(int, result);
        QFETCH(QString, frames);
        FrameModel model;
        QCOMPARE(int(design(model, steps)), result);
        QCOMPARE(layout(model), frames);
    }

    void hits_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<int>("x");
        QTest::addColumn<int>("y");
        QTest::addColumn<int>("frame");
        QTest::addColumn<int>("line");
        QTest::addColumn<int>("low");
        QTest::addColumn<int>("high");
        QTest::newRow("point on a line is in frame 1") << "V2520@1" << 2520 << 700 << 1 << 2 << 0 << 2970;
        QTest::newRow("outer top edge is no line") << "H990@1" << 300 << 0 << 1 << 0 << 0 << 0;
        QTest::newRow("outer left edge is no line") << "V2520@1" << 0 << 300 << 1 << 0 << 0 << 0;
        QTest::newRow("inside a frame") << "H990@1" << 300 << 1500 << 2 << 0 << 0 << 0;
        QTest::newRow("horizontal line over both columns below") << "H990@1 V1680@2" << 3000 << 990 << 1 << 1 << 0 << 5050;
        // Found from the top right frame, it runs back over two frames made in the other order.
        QTest::newRow("line met from a later frame runs back") << "H990@1 V3360@1 V1680@1 V2520@2" << 4000 << 990 << 3 << 1 << 0 << 5050;
        QTest::newRow("column line stops at its row") << "H990@1 V2520@1 V1680@2" << 2520 << 500 << 1 << 2 << 0 << 990;
        // Left sides run on through the rows below, in whatever order the frames were made.
        QTest::newRow("chain over three rows") << "H1980@1 H990@1 V2520@3 V2520@2 V2520@1" << 2520 << 2500 << 2 << 2 << 0 << 2970;
        QTest::newRow("line runs on through the row above") << "H990@1 V2520@1 V2520@2" << 2520 << 2000 << 2 << 2 << 0 << 2970;
    }
    void hits()
    {
        QFETCH(QString, steps);
        QFETCH(int, x);
        QFETCH(int, y);
        FrameModel model;
        design(model, steps);
        QTEST(model.FrameHit(x, y), "frame");
        QTEST(model.LineHit(x, y), "line");
        if (model.findLine(x, y).kind != LineKind::None) {
            QTEST(int(model.LineLow), "low");
            QTEST(int(model.LineHigh), "high");
        }
    }

    void drags_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<QPoint>("held");
        QTest::addColumn<QList<int>>("moves");
        QTest::addColumn<bool>("lastAccepted");
        QTest::addColumn<QString>("frames");
        // A top row over two columns: the line at 990 runs over the whole width.
        const QString rows = QStringLiteral("H990@1 V1680@2");
        QTest::newRow("horizontal line over its whole extent") << rows << QPoint(3000, 990) << QList<int>{1200}
                                                               << true << "0,0,1200,5050 1200,0,2970,1680 1200,1680,2970,5050";
        QTest::newRow("steps follow one another") << rows << QPoint(3000, 990) << QList<int>{1200, 600}
                                                  << true << "0,0,600,5050 600,0,2970,1680 600,1680,2970,5050";
        QTest::newRow("past the opposite edge leaves the whole line") << rows << QPoint(3000, 990) << QList<int>{2970}
                                                                      << false << "0,0,990,5050 990,0,2970,1680 990,1680,2970,5050";
        QTest::newRow("onto the top edge refused") << rows << QPoint(3000, 990) << QList<int>{0}
                                                   << false << "0,0,990,5050 990,0,2970,1680 990,1680,2970,5050";
        QTest::newRow("vertical line in its row only") << rows << QPoint(1680, 2000) << QList<int>{2520}
                                                       << true << "0,0,990,5050 990,0,2970,2520 990,2520,2970,5050";
        QTest::newRow("shrink to one step") << rows << QPoint(1680, 2000) << QList<int>{15}
                                            << true << "0,0,990,5050 990,0,2970,15 990,15,2970,5050";
    }
    void drags()
    {
        QFETCH(QString, steps);
        QFETCH(QPoint, held);
        QFETCH(QList<int>, moves);
        QFETCH(bool, lastAccepted);
        FrameModel model;
        design(model, steps);
        const LineKind kind = LineKind(model.LineHit(held.x(), held.y()));
        QVERIFY(kind != LineKind::None);
        model.LastX = qint16(held.x());
        model.LastY = qint16(held.y());
        bool accepted = true;
        for (int to : moves) {
            accepted = model.dragStep(kind, to);
            (kind == LineKind::Horizontal ? model.LastY : model.LastX) = qint16(to);
        }
        QCOMPARE(accepted, lastAccepted);
        QTEST(layout(model), "frames");
    }

    void frameSets_data()
    {
        QTest::addColumn<QString>("steps");
        QTest::addColumn<bool>("percent");
        QTest::addColumn<QString>("markup");
        QTest::newRow("one vertical split") << "V2520@1" << true
                                            << "<FRAMESET COLS=\"49%,51%\">\r\n    <FRAME>\r\n    <FRAME>\r\n</FRAMESET>\r\n";
        QTest::newRow("pixels with no screen size clicked") << "V2520@1" << false
                                                            << "<FRAMESET COLS=\"319,320\">\r\n    <FRAME>\r\n    <FRAME>\r\n</FRAMESET>\r\n";
        QTest::newRow("columns made right, left, middle") << "V3360@1 V1680@1 N" << true
                                                          << "<FRAMESET COLS=\"33%,33%,34%\">\r\n    <FRAME NAME=\"f1\">\r\n"
                                                             "    <FRAME NAME=\"f3\">\r\n    <FRAME NAME=\"f2\">\r\n</FRAMESET>\r\n";
        QTest::newRow("top row over two columns") << "H990@1 V1680@2 N" << true
                                                  << "<FRAMESET ROWS=\"33%,67%\">\r\n    <FRAME NAME=\"f1\">\r\n"
                                                     "    <FRAMESET COLS=\"33%,67%\">\r\n        <FRAME NAME=\"f2\">\r\n"
                                                     "        <FRAME NAME=\"f3\">\r\n    </FRAMESET>\r\n</FRAMESET>\r\n";
        // The row line runs on over both columns, so it is no cut of either.
        QTest::newRow("columns win in a two by two grid") << "V2520@1 H990@1 H990@2 N" << true
                                                          << "<FRAMESET COLS=\"49%,51%\">\r\n    <FRAME NAME=\"f1\">\r\n"
                                                             "    <FRAME NAME=\"f2\">\r\n</FRAMESET>\r\n";
        // The column line of the first two rows runs on beyond each: no cut in either.
        QTest::newRow("two stacked rows with aligned columns") << "H990@1 H1980@2 V2520@1 V2520@2 N" << true
                                                               << "<FRAMESET ROWS=\"33%,33%,34%\">\r\n    <FRAME NAME=\"f1\">\r\n"
                                                                  "    <FRAME NAME=\"f2\">\r\n    <FRAME NAME=\"f3\">\r\n</FRAMESET>\r\n";
        QTest::newRow("split and deleted again") << "H990@1 D@2" << true << "<FRAME>\r\n";
    }
    void frameSets()
    {
        QFETCH(QString, steps);
        QFETCH(bool, percent);
        FrameModel model;
        design(model, steps);
        FrameSetOptions options;
        options.percent = percent;
        options.scaleX = model.ScaleX;
        options.scaleY = model.ScaleY;
        QTEST(joined(FrameSetPieces(model, options)), "markup");
    }

    // More than the old limit of twenty cuts: every one is written.
    void manyColumnsAllWritten()
    {
        FrameModel model;
        QString steps;
        for (int i = 1; i <= 24; ++i)
            steps += QStringLiteral("V%1@%2 ").arg(5050 - i * 150).arg(1);
        design(model, steps);
        const QString markup = joined(FrameSetPieces(model, {}));
        QCOMPARE(markup.count(QLatin1String("<FRAME>")), 25);
        QCOMPARE(markup.section(QLatin1Char('"'), 1, 1).count(QLatin1Char('%')), 25);
    }

    void frameTags_data()
    {
        QTest::addColumn<int>("scrolling");
        QTest::addColumn<bool>("noResize");
        QTest::addColumn<QString>("tag");
        QTest::newRow("auto writes nothing") << 0 << false << "<FRAME NAME=\"n\" SRC=\"a.html\" MARGINWIDTH=\"5\" MARGINHEIGHT=\"6\" x=1>";
        QTest::newRow("yes") << 1 << true << "<FRAME NAME=\"n\" SRC=\"a.html\" MARGINWIDTH=\"5\" MARGINHEIGHT=\"6\" SCROLLING=\"YES\" NORESIZE x=1>";
        QTest::newRow("no") << 2 << false << "<FRAME NAME=\"n\" SRC=\"a.html\" MARGINWIDTH=\"5\" MARGINHEIGHT=\"6\" SCROLLING=\"NO\" x=1>";
    }
    void frameTags()
    {
        FrameSpec frame;
        frame.Name = QStringLiteral("n  ");
        frame.Source = QStringLiteral("a.html");
        frame.MarginWidth = QStringLiteral("5");
        frame.MarginHeight = QStringLiteral("6");
        frame.Extra = QStringLiteral("x=1");
        QFETCH(int, scrolling);
        QFETCH(bool, noResize);
        frame.Scrolling = qint16(scrolling);
        frame.NoResize = noResize ? -1 : 0;
        QTEST(FrameTag(frame), "tag");
        QCOMPARE(FrameTag(FrameSpec()), QStringLiteral("<FRAME>"));
    }

    void noFramesSection_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("section");
        QTest::newRow("lower case kept but the closing tag")
            << "<html>\r\n<head></head>\r\n<body bgcolor=white>\r\n<p>Hi\r\n</body>\r\n</html>\r\n"
            << "<body bgcolor=white>\r\n<p>Hi\r\n</BODY>\r\n";
        QTest::newRow("no body gives nothing") << "<p>just text\r\n" << "";
        QTest::newRow("text around the tags dropped") << "x<Body>\ny</BODY>z\nafter\n" << "<Body>\r\ny</BODY>\r\n";
        QTest::newRow("closing tag on the body's line not seen") << "<BODY>a</BODY>\rb" << "<BODY>a</BODY>\r\nb\r\n";
        QTest::newRow("empty file") << "" << "";
    }
    void noFramesSection()
    {
        QFETCH(QString, file);
        QTEST(NoFramesSection(file), "section");
    }

    // A frame set read back and written again comes out as it was, where the grid allows.
    void readBack_data()
    {
        QTest::addColumn<QString>("markup");
        QTest::addColumn<QString>("written"); // empty: as read
        QTest::addColumn<bool>("percent");
        QTest::newRow("top row over two columns") << "<FRAMESET ROWS=\"33%,67%\">\r\n    <FRAME SRC=\"a.html\">\r\n"
                                           "    <FRAMESET COLS=\"33%,67%\">\r\n        <FRAME>\r\n"
                                           "        <FRAME SCROLLING=\"NO\">\r\n    </FRAMESET>\r\n</FRAMESET>\r\n"
                                        << "" << true;
        QTest::newRow("three columns") << "<FRAMESET COLS=\"33%,33%,34%\">\r\n    <FRAME NAME=\"a\">\r\n"
                                          "    <FRAME NAME=\"b\" NORESIZE>\r\n    <FRAME NAME=\"c\">\r\n</FRAMESET>\r\n"
                                       << "" << true;
        QTest::newRow("pixels") << "<FRAMESET COLS=\"319,320\">\r\n    <FRAME>\r\n    <FRAME>\r\n</FRAMESET>\r\n" << "" << false;
        // The columns of the two rows would line up; one moves a step, so both sets stay.
        QTest::newRow("two rows of two columns") << "<FRAMESET ROWS=\"50%,50%\">\r\n    <FRAMESET COLS=\"50%,50%\">\r\n"
                                                    "        <FRAME NAME=\"a\">\r\n        <FRAME NAME=\"b\">\r\n    </FRAMESET>\r\n"
                                                    "    <FRAMESET COLS=\"50%,50%\">\r\n        <FRAME NAME=\"c\">\r\n"
                                                    "        <FRAME NAME=\"d\">\r\n    </FRAMESET>\r\n</FRAMESET>\r\n"
                                                 << "" << true;
        QTest::newRow("written by hand") << "<frameset cols=\"50%,*\"><frame src=a.html name='x' frameborder=0 scrolling=yes><frame></frameset>"
                                         << "<FRAMESET COLS=\"50%,50%\">\r\n    <FRAME NAME=\"x\" SRC=\"a.html\" SCROLLING=\"YES\" frameborder=0>\r\n"
                                            "    <FRAME>\r\n</FRAMESET>\r\n"
                                         << true;
        QTest::newRow("rows and columns at once") << "<FRAMESET ROWS=\"50%,50%\" COLS=\"50%,50%\"><FRAME><FRAME><FRAME><FRAME></FRAMESET>"
                                                  << "<FRAMESET ROWS=\"50%,50%\">\r\n    <FRAMESET COLS=\"50%,50%\">\r\n"
                                                     "        <FRAME>\r\n        <FRAME>\r\n    </FRAMESET>\r\n"
                                                     "    <FRAMESET COLS=\"50%,50%\">\r\n        <FRAME>\r\n"
                                                     "        <FRAME>\r\n    </FRAMESET>\r\n</FRAMESET>\r\n"
                                                  << true;
    }
    void readBack()
    {
        QFETCH(QString, markup);
        QFETCH(QString, written);
        QFETCH(bool, percent);
        const QString page = QStringLiteral("<HTML>\r\n") + markup + QStringLiteral("</HTML>");
        FrameModel model;
        const std::optional<FrameSetRead> read = ReadFrameSetAt(page, 12, model.ScaleX, model.ScaleY);
        QVERIFY(read);
        QCOMPARE(read->start, 8);
        QCOMPARE(page.mid(read->end), QStringLiteral("</HTML>"));
        QCOMPARE(read->percent, percent);
        model.load(read->frames);
        FrameSetOptions options;
        options.percent = percent;
        QCOMPARE(joined(FrameSetPieces(model, options)), written.isEmpty() ? markup : written);
    }

    void readOnlyAroundTheCaret_data()
    {
        QTest::addColumn<int>("caret");
        QTest::addColumn<int>("start"); // -1: none
        const QString page = QStringLiteral("<P>\r\n<FRAMESET COLS=\"50%,50%\"><FRAME><FRAME></FRAMESET>\r\n"
                                            "<FRAMESET ROWS=\"50%,50%\"><FRAME><FRAME></FRAMESET>");
        QTest::newRow("before both") << 2 << -1;
        QTest::newRow("in the first") << 10 << 5;
        QTest::newRow("at the first's end") << 55 << 5;
        QTest::newRow("in the second") << 70 << 57;
    }
    void readOnlyAroundTheCaret()
    {
        QFETCH(int, caret);
        QFETCH(int, start);
        const QString page = QStringLiteral("<P>\r\n<FRAMESET COLS=\"50%,50%\"><FRAME><FRAME></FRAMESET>\r\n"
                                            "<FRAMESET ROWS=\"50%,50%\"><FRAME><FRAME></FRAMESET>");
        const std::optional<FrameSetRead> read = ReadFrameSetAt(page, caret, 1, 1);
        QCOMPARE(read ? read->start : -1, start);
        // Without its end tag a frame set is not read.
        QVERIFY(!ReadFrameSetAt(page.left(page.size() - 11), 70, 1, 1));
    }

    void sourceChecks_data()
    {
        QTest::addColumn<QString>("source");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("actual"); // below the folder
        QTest::newRow("found") << "pages/a.html" << int(SourceCheck::Found) << "";
        QTest::newRow("found with an anchor") << "pages/a.html#top" << int(SourceCheck::Found) << "";
        QTest::newRow("missing") << "pages/b.html" << int(SourceCheck::Missing) << "";
        QTest::newRow("name in another case") << "pages/A.html" << int(SourceCheck::CaseDiffers) << "pages/a.html";
        QTest::newRow("folder in another case") << "Pages/a.html?x=1" << int(SourceCheck::CaseDiffers) << "pages/a.html";
        QTest::newRow("up and back") << "../f/pages/a.html" << int(SourceCheck::Found) << "";
        QTest::newRow("a URL with a scheme") << "http://example.org/b.html" << int(SourceCheck::Unchecked) << "";
        QTest::newRow("empty") << "" << int(SourceCheck::Unchecked) << "";
    }
    void sourceChecks()
    {
        QFETCH(QString, source);
        QFETCH(QString, actual);
        QTemporaryDir dir;
        const QString folder = dir.filePath(QStringLiteral("f"));
        QVERIFY(QDir().mkpath(folder + QStringLiteral("/pages")));
        QFile page(folder + QStringLiteral("/pages/a.html"));
        QVERIFY(page.open(QIODevice::WriteOnly));
        const SourceCheck check = CheckFrameSource(source, folder);
        QTEST(int(check.kind), "kind");
        QCOMPARE(check.actual, actual.isEmpty() ? QString() : folder + QLatin1Char('/') + actual);
    }
};

PW_TEST_MAIN(TestFrameModel)
#include "tst_frame_model.moc"
