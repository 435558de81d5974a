#include "test_support.h"

#include "files/stamps.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"

#include <QLocale>

using namespace pw;

namespace {
// The stamps of the scripted clock, 2026-11-23 14:05:09, in American English.
const QString LongDate = QStringLiteral("Monday, November 23, 2026");
const QString ShortDate = QStringLiteral("11/23/26");
const QString LongTime = QStringLiteral("2:05:09 PM");
const QString ShortTime = QStringLiteral("2:05 PM");
const QByteArray OldPair = "<!-- TPWLDATE -->old<!-- /TPWLDATE -->";
} // namespace

class TestStamps : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }

    // An empty marker pair at the caret, in the comment class; over a selection only when the user
    // agrees, and then as one undo step.
    void placing_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<int>("selLength");
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("text");
        const auto placed = [](const char *marker) {
            return QStringLiteral("a <!-- %1 --><!-- /%1 -->sel b").arg(QLatin1String(marker));
        };
        QTest::newRow("long date") << "mnuAccretionLDate" << 0 << 0 << placed("TPWLDATE");
        QTest::newRow("short date") << "mnuAccretionSDate" << 0 << 0 << placed("TPWSDATE");
        QTest::newRow("long time") << "mnuAccretionLTime" << 0 << 0 << placed("TPWLTIME");
        QTest::newRow("short time") << "mnuAccretionSTime" << 0 << 0 << placed("TPWSTIME");
        QTest::newRow("over a selection, no keeps it") << "mnuAccretionSTime" << 3 << MsgAnswer::No << "a sel b";
        QTest::newRow("over a selection, yes replaces it")
            << "mnuAccretionSTime" << 3 << MsgAnswer::Yes << "a <!-- TPWSTIME --><!-- /TPWSTIME --> b";
    }
    void placing()
    {
        QFETCH(QString, item);
        QFETCH(int, selLength);
        QFETCH(int, answer);
        QFETCH(QString, text);
        frmDoc *doc = program->newDocument();
        doc->Text->setText("a sel b");
        doc->Text->setSelStart(2);
        doc->Text->setSelLength(selLength);
        platform().answers.enqueue(answer);
        QVERIFY(program->trigger(doc, item));
        QCOMPARE(doc->Text->Text(), text);
        QCOMPARE(platform().messages.size(), selLength ? 1 : 0);
        if (selLength)
            QCOMPARE(platform().messages[0].text, QString("Highlighted text will be replaced!\r\nContinue?"));
        if (answer == MsgAnswer::No)
            return;
        const int placed = int(text.size()) - 7 + selLength;
        QCOMPARE(doc->Text->SelStart(), 2 + placed);
        QCOMPARE(fontClasses(*doc->Text).mid(2, placed), QString(placed, 'c'));
        QVERIFY(doc->Text->caretFont() == ws().fonts.text);
        QVERIFY(doc->Text->Undo());
        QCOMPARE(doc->Text->Text(), QString("a sel b"));
    }

    // The time-zone field is dropped wherever the locale puts it (the American one at the end).
    void zoneFieldInFrontIsDropped()
    {
        QLocale::setDefault(QLocale(QLocale::Chinese, QLocale::China));
        const QString got = StampValue(StampKind::LongTime, platform().clock);
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        QCOMPARE(got, QStringLiteral("14:05:09"));
    }

    void closingPass_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<bool>("saved");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QString>("message");
        const auto stamp = [](const char *marker, const QString &value) {
            return QStringLiteral("<!-- %1 -->%2<!-- /%1 -->").arg(QLatin1String(marker), value).toUtf8();
        };
        const QByteArray renewed = stamp("TPWLDATE", LongDate);
        const QByteArray backwards = "<!-- /TPWLTIME --><!-- TPWLTIME -->";
        const QString unclosed =
            QStringLiteral("Found <!-- %1 --> tag without <!-- /%1 --> tag!\r\nScripting aborted!!");
        QTest::newRow("saved and closed: long date renewed")
            << "<P>" + OldPair + "</P>\r\n" << true << "<P>" + renewed + "</P>\r\n" << QString();
        QTest::newRow("opened and closed: untouched") << OldPair << false << OldPair << QString();
        QTest::newRow("all four kinds")
            << stamp("TPWSTIME", "1") + stamp("TPWLTIME", "") + stamp("TPWSDATE", "3") + OldPair << true
            << stamp("TPWSTIME", ShortTime) + stamp("TPWLTIME", LongTime) + stamp("TPWSDATE", ShortDate) + renewed
            << QString();
        QTest::newRow("two pairs: only the first renewed")
            << OldPair + " " + OldPair << true << renewed + " " + OldPair << QString();
        QTest::newRow("lines between the markers replaced whole")
            << stamp("TPWLDATE", "a\nb\nc") + "\n" << true << renewed + "\n" << QString();
        QTest::newRow("start without end: message, file kept")
            << OldPair + "<!-- TPWSDATE -->x" << true << OldPair + "<!-- TPWSDATE -->x" << unclosed.arg("TPWSDATE");
        QTest::newRow("end before start does not close it")
            << backwards << true << backwards << unclosed.arg("TPWLTIME");
        QTest::newRow("windows-1252 file stays so")
            << QByteArray("caf\xe9 ") + stamp("TPWLDATE", "") << true << "caf\xe9 " + renewed << QString();
    }
    void closingPass()
    {
        QFETCH(QByteArray, file);
        QFETCH(bool, saved);
        QFETCH(QByteArray, after);
        QFETCH(QString, message);
        frmDoc *doc = opened("page.html", file);
        QVERIFY(doc);
        const int slot = doc->slot();
        doc->state().setSaved(saved);
        doc->close();
        QVERIFY(ws().slots.isFree(slot));

        QCOMPARE(fileBytes(path("page.html")), after);
        if (!message.isEmpty())
            verifyMessage(message, MsgStyle::Exclamation);
        QCOMPARE(platform().messages.size(), message.isEmpty() ? 0 : 1);
        // The pass let the file go again with the window.
        QVERIFY(!FileHandles::instance().isOpen(slot));
    }

    void closingWithUnsavedChangesLeavesTheFile()
    {
        frmDoc *doc = opened("page.html", OldPair);
        QVERIFY(doc);
        doc->state().setSaved(true);
        doc->Text->setSelText("typed ");
        QVERIFY(doc->state().Dirty());
        platform().answers.enqueue(MsgAnswer::No);
        doc->close();
        QCOMPARE(fileBytes(path("page.html")), OldPair);
    }
};

PW_TEST_MAIN(TestStamps)
#include "tst_stamps.moc"
