#include "isolated_main.h"
#include "test_support.h"

#include "files/stamps.h"
#include "files/text_file.h"
#include "platform/message_box.h"

#include <QFile>
#include <QLabel>
#include <QLocale>
#include <QTemporaryDir>
#include <QTest>

using namespace pw;

namespace {
// The stamps of the scripted clock, 2026-11-23 14:05:09, in American English.
const QString LongDate = QStringLiteral("Monday, November 23, 2026");
const QString ShortDate = QStringLiteral("11/23/26");
const QString LongTime = QStringLiteral("2:05:09 PM");
const QString ShortTime = QStringLiteral("2:05 PM");

QByteArray readAll(const QString &path)
{
    QFile f(path);
    return f.open(QIODevice::ReadOnly) ? f.readAll() : QByteArray("<unreadable>");
}

} // namespace

class TestStamps : public ProgramTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates)); }

    void placing_data()
    {
        QTest::addColumn<QString>("item");
        QTest::addColumn<QString>("pair");
        QTest::newRow("long date") << "mnuAccretionLDate" << "<!-- TPWLDATE --><!-- /TPWLDATE -->";
        QTest::newRow("short date") << "mnuAccretionSDate" << "<!-- TPWSDATE --><!-- /TPWSDATE -->";
        QTest::newRow("long time") << "mnuAccretionLTime" << "<!-- TPWLTIME --><!-- /TPWLTIME -->";
        QTest::newRow("short time") << "mnuAccretionSTime" << "<!-- TPWSTIME --><!-- /TPWSTIME -->";
    }
    void placing()
    {
        QFETCH(QString, item);
        QFETCH(QString, pair);
        frmDoc *doc = program->newDocument();
        doc->Text->setText("ab");
        doc->Text->setSelStart(1);
        QVERIFY(program->trigger(doc, item));
        QCOMPARE(doc->Text->Text(), "a" + pair + "b");
        QCOMPARE(doc->Text->SelStart(), 1 + int(pair.size()));
        QCOMPARE(fontClasses(*doc->Text).mid(1, pair.size()), QString(pair.size(), 'c'));
        QCOMPARE(doc->Text->caretFont(), TextFont);
        QVERIFY(program->platform->messages.isEmpty());
    }

    void placingOverASelectionAsksFirst_data()
    {
        QTest::addColumn<int>("answer");
        QTest::addColumn<QString>("text");
        QTest::newRow("no keeps the selection") << int(MsgAnswer::No) << "a sel b";
        QTest::newRow("yes replaces it") << int(MsgAnswer::Yes) << "a <!-- TPWSTIME --><!-- /TPWSTIME --> b";
    }
    void placingOverASelectionAsksFirst()
    {
        QFETCH(int, answer);
        QFETCH(QString, text);
        frmDoc *doc = program->newDocument();
        doc->Text->setText("a sel b");
        doc->Text->setSelStart(2);
        doc->Text->setSelLength(3);
        program->platform->answers.enqueue(answer);
        QVERIFY(program->trigger(doc, "mnuAccretionSTime"));
        QCOMPARE(program->platform->messages.size(), 1);
        QCOMPARE(program->platform->messages[0].text, QString("Highlighted text will be replaced!\r\nContinue?"));
        QCOMPARE(doc->Text->Text(), text);
        // One command, one undo step.
        if (answer == MsgAnswer::Yes) {
            QVERIFY(doc->Text->Undo());
            QCOMPARE(doc->Text->Text(), QString("a sel b"));
        }
    }

    void values_data()
    {
        QTest::addColumn<QLocale>("locale");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("value");
        const QLocale us(QLocale::English, QLocale::UnitedStates);
        const QLocale de(QLocale::German, QLocale::Germany);
        const QLocale cn(QLocale::Chinese, QLocale::China);
        QTest::newRow("us long date") << us << int(StampKind::LongDate) << LongDate;
        QTest::newRow("us long time without zone") << us << int(StampKind::LongTime) << LongTime;
        QTest::newRow("german long date") << de << int(StampKind::LongDate) << "Montag, 23. November 2026";
        QTest::newRow("german long time without zone") << de << int(StampKind::LongTime) << "14:05:09";
        QTest::newRow("zone field in front") << cn << int(StampKind::LongTime) << "14:05:09";
    }
    void values()
    {
        QFETCH(QLocale, locale);
        QFETCH(int, kind);
        QFETCH(QString, value);
        QLocale::setDefault(locale);
        const QString got = StampValue(StampKind(kind), program->platform->clock);
        QLocale::setDefault(QLocale(QLocale::English, QLocale::UnitedStates));
        QCOMPARE(got, value);
    }

    void closingPass_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<bool>("saved");
        QTest::addColumn<QByteArray>("after");
        QTest::addColumn<QString>("message");

        const QByteArray pair = "<!-- TPWLDATE -->old<!-- /TPWLDATE -->";
        QTest::newRow("saved and closed: long date renewed")
            << "<P>" + pair + "</P>\r\n" << true << "<P><!-- TPWLDATE -->" + LongDate.toUtf8() + "<!-- /TPWLDATE --></P>\r\n"
            << QString();
        QTest::newRow("opened and closed: untouched") << pair << false << pair << QString();
        QTest::newRow("all four kinds")
            << QByteArray("<!-- TPWSTIME -->1<!-- /TPWSTIME --><!-- TPWLTIME --><!-- /TPWLTIME -->"
                          "<!-- TPWSDATE -->3<!-- /TPWSDATE --><!-- TPWLDATE -->4<!-- /TPWLDATE -->")
            << true
            << ("<!-- TPWSTIME -->" + ShortTime + "<!-- /TPWSTIME --><!-- TPWLTIME -->" + LongTime
                + "<!-- /TPWLTIME --><!-- TPWSDATE -->" + ShortDate + "<!-- /TPWSDATE --><!-- TPWLDATE -->"
                + LongDate + "<!-- /TPWLDATE -->").toUtf8()
            << QString();
        QTest::newRow("two pairs: only the first renewed")
            << pair + " " + pair << true << "<!-- TPWLDATE -->" + LongDate.toUtf8() + "<!-- /TPWLDATE --> " + pair
            << QString();
        QTest::newRow("lines between the markers replaced whole")
            << QByteArray("<!-- TPWLDATE -->a\nb\nc<!-- /TPWLDATE -->\n") << true
            << "<!-- TPWLDATE -->" + LongDate.toUtf8() + "<!-- /TPWLDATE -->\n" << QString();
        QTest::newRow("start without end: message, file kept")
            << pair + "<!-- TPWSDATE -->x" << true << pair + "<!-- TPWSDATE -->x"
            << "Found <!-- TPWSDATE --> tag without <!-- /TPWSDATE --> tag!\r\nScripting aborted!!";
        QTest::newRow("end before start does not close it")
            << QByteArray("<!-- /TPWLTIME --><!-- TPWLTIME -->") << true
            << QByteArray("<!-- /TPWLTIME --><!-- TPWLTIME -->")
            << "Found <!-- TPWLTIME --> tag without <!-- /TPWLTIME --> tag!\r\nScripting aborted!!";
        QTest::newRow("windows-1252 file stays so")
            << QByteArray("caf\xe9 <!-- TPWLDATE --><!-- /TPWLDATE -->") << true
            << "caf\xe9 <!-- TPWLDATE -->" + LongDate.toLatin1() + "<!-- /TPWLDATE -->" << QString();
    }
    void closingPass()
    {
        QFETCH(QByteArray, file);
        QFETCH(bool, saved);
        QFETCH(QByteArray, after);
        QFETCH(QString, message);

        const QString path = dir.filePath("page.html");
        {
            QFile f(path);
            QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
            f.write(file);
        }
        frmDoc *doc = openAsDocument(path);
        QVERIFY(doc);
        const int slot = doc->slot();
        program->main().slots().state(slot).Saved = saved ? True : False;
        doc->close();
        QVERIFY(program->main().slots().state(slot).Free);

        QCOMPARE(readAll(path), after);
        const auto &messages = program->platform->messages;
        QCOMPARE(messages.size(), message.isEmpty() ? 0 : 1);
        if (!message.isEmpty()) {
            QCOMPARE(messages[0].text, message);
            QCOMPARE(messages[0].style, int(MsgStyle::Exclamation));
            QCOMPARE(messages[0].title, AppTitle());
        }
        // The pass let the file go again with the window.
        QVERIFY(!FileHandles::instance().isOpen(slot));
        QCOMPARE(program->main().Panel3->text(), QString("Size: 0"));
    }

    void closingWithUnsavedChangesLeavesTheFile()
    {
        const QString path = dir.filePath("dirty.html");
        const QByteArray pair = "<!-- TPWLDATE -->old<!-- /TPWLDATE -->";
        {
            QFile f(path);
            QVERIFY(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
            f.write(pair);
        }
        frmDoc *doc = openAsDocument(path);
        QVERIFY(doc);
        program->main().slots().state(doc->slot()).Saved = True;
        doc->Text->setSelText("typed ");
        QCOMPARE(program->main().slots().state(doc->slot()).Dirty, True);
        program->platform->answers.enqueue(MsgAnswer::No);
        doc->close();
        QCOMPARE(readAll(path), pair);
    }

private:
    // A file loaded into a new document the way an open does it: held under the slot, clean.
    frmDoc *openAsDocument(const QString &path)
    {
        DocumentSlots &slots = program->main().slots();
        const int slot = slots.FindFreeSlot();
        frmDoc *doc = slots.CreateDocumentWindow(slot, path);
        const ReadResult read = openDocumentFile(FileHandles::instance(), slot, path);
        if (read.error != ErrorCode::None)
            return nullptr;
        doc->Text->setText(read.decoded.text);
        doc->fileFormat = read.decoded.format;
        slots.state(slot).Dirty = False;
        return doc;
    }

    QTemporaryDir dir;
};

PW_ISOLATED_TEST_MAIN(TestStamps)
#include "tst_stamps.moc"
