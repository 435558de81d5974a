#include "test_support.h"

#include "spell/soundex.h"
#include "spell/word_store.h"
#include "spell/word_store_builder.h"

#include <QSqlDatabase>
#include <QSqlQuery>

using namespace pw;

namespace {

// Runs a statement on a SQLite file with a connection of our own: its rows as "first=second", by
// default those of the store as "word=key".
QStringList rowsOf(const QString &path,
                   const QString &statement = QStringLiteral("SELECT Word, soundex FROM words ORDER BY Word"))
{
    QStringList rows;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("peek"));
        db.setDatabaseName(path);
        QSqlQuery q(db);
        if (db.open() && q.exec(statement))
            while (q.next())
                rows << q.value(0).toString() + QLatin1Char('=') + q.value(1).toString();
    }
    QSqlDatabase::removeDatabase(QStringLiteral("peek"));
    return rows;
}

} // namespace

class TestSpellStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QVERIFY(dir.isValid());
        QFile::remove(UserWordStorePath());
        storePath = dir.filePath(QStringLiteral("spwords.tpw"));
        QString error;
        QVERIFY2(BuildWordStore(StoreWords({"cat", "dog", "hello", "help", "hall", "the"}), storePath, &error),
                 qPrintable(error));
        setShippedWordStorePath(storePath);
    }
    void cleanup()
    {
        setShippedWordStorePath(QString());
        QFile::remove(UserWordStorePath());
    }

    void soundKey_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("key");
        QTest::newRow("one letter padded") << "a" << "A00000";
        QTest::newRow("vowels and doubled letter code 0") << "hello" << "H04000";
        QTest::newRow("every letter keeps a digit") << "robert" << "R01063";
        QTest::newRow("doubled first letter") << "LLoyd" << "L00030";
        QTest::newRow("case plays no part") << "Lloyd" << "L00030";
        QTest::newRow("long word cut to six") << "internationalization" << "I53065";
        QTest::newRow("neighbours of one group kept apart") << "jackson" << "J02220";
        QTest::newRow("digits code 0") << "x2" << "X00000";
    }
    void soundKey()
    {
        QFETCH(QString, name);
        QFETCH(QString, key);
        QCOMPARE(SoundexName(name), key);
    }

    // Only words the walk can ask for go in, once, in lower case, each with its key.
    void builderKeepsAskableWordsWithTheirKeys()
    {
        QFile list(dir.filePath(QStringLiteral("list.txt")));
        QVERIFY(list.open(QIODevice::WriteOnly));
        list.write("Robert\nrobert\nROBERT\nrobert's\ncaf\xc3\xa9\ndog\r\n the \n\nx2\n"
                   "abcdefghijklmnopqrst\nabcdefghijklmnopqrstu\n");
        list.close();
        const QString out = dir.filePath(QStringLiteral("built.tpw"));
        QString error;
        int count = 0;
        QVERIFY2(BuildWordStoreFromList(list.fileName(), out, &error, &count), qPrintable(error));
        QCOMPARE(count, 4);
        QCOMPARE(rowsOf(out),
                 QStringList({"abcdefghijklmnopqrst=A12301", "dog=D02000", "robert=R01063", "the=T00000"}));
        QVERIFY(!QFile::exists(out + ".part"));
    }

    void lookUpsAndAddsAnswerFromBothStores()
    {
        const QByteArray shippedBefore = fileBytes(storePath);
        {
            WordStore store;
            QString error;
            QVERIFY2(store.open(&error), qPrintable(error));
            QVERIFY(store.contains("hello"));
            QVERIFY(!store.contains("Hello")); // the walk asks in lower case
            QVERIFY(!store.contains("hellp"));
            QCOMPARE(store.suggestions(SoundexName("helo")), QStringList({"hall", "hello"}));
            QCOMPARE(store.suggestions("Q00000"), QStringList());
            QCOMPARE(store.add("hallo", &error), ErrorCode::None);
            QCOMPARE(store.add("hallo", &error), ErrorCode::DuplicateKey);
            QCOMPARE(store.add("dog", &error), ErrorCode::DuplicateKey); // held by the shipped store
            QCOMPARE(store.suggestions("H04000"), QStringList({"hall", "hello", "hallo"}));
        }
        QCOMPARE(rowsOf(UserWordStorePath()), QStringList({"hallo=H04000"}));
        QCOMPARE(fileBytes(storePath), shippedBefore);
        WordStore again; // the added word outlives the store that added it
        QString error;
        QVERIFY(again.open(&error));
        QVERIFY(again.contains("hallo"));
    }

    void unusableStoreIsNamedWithItsReason_data()
    {
        QTest::addColumn<QByteArray>("content"); // empty: no file at all
        QTest::addColumn<QString>("table");      // else a SQLite file holding only this table
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << QByteArray() << QString() << "does not exist";
        QTest::newRow("not a database") << QByteArray("just some words\n") << QString() << "not a database";
        QTest::newRow("database of something else") << QByteArray() << "notes" << "words";
    }
    void unusableStoreIsNamedWithItsReason()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, table);
        QFETCH(QString, reason);
        const QString path = dir.filePath(QStringLiteral("broken.tpw"));
        QFile::remove(path);
        if (!content.isEmpty())
            QVERIFY(writeFile(path, content));
        else if (!table.isEmpty())
            rowsOf(path, "CREATE TABLE " + table + " (body TEXT)");
        setShippedWordStorePath(path);
        WordStore store;
        QString error;
        QVERIFY(!store.open(&error));
        QVERIFY(!store.isOpen());
        QVERIFY2(error.contains(QDir::toNativeSeparators(path)), qPrintable(error));
        QVERIFY2(error.contains(reason), qPrintable(error));
        QCOMPARE(WordStoreAvailable(), QFile::exists(path));
    }

    void addThatCannotWriteSaysWhy()
    {
        // A file where the user's data folder should be: the store can't be made.
        const QString folder = QFileInfo(UserWordStorePath()).absolutePath();
        QDir(folder).removeRecursively();
        QDir().mkpath(QFileInfo(folder).absolutePath());
        QVERIFY(QFile(folder).open(QIODevice::WriteOnly));

        WordStore store;
        QString error;
        QVERIFY(store.open(&error));
        QCOMPARE(store.add("zorp", &error), ErrorCode::PermissionDenied);
        QVERIFY2(error.contains(QDir::toNativeSeparators(UserWordStorePath())), qPrintable(error));
        QVERIFY(!store.contains("zorp"));
        QFile::remove(folder);
    }

    void shippedStoreKnowsTheWordList()
    {
        setShippedWordStorePath(QStringLiteral(PW_BUILT_WORD_STORE));
        WordStore store;
        QString error;
        QVERIFY2(store.open(&error), qPrintable(error));
        QVERIFY(store.contains("hello") && store.contains("the") && !store.contains("helo"));
        QVERIFY(store.suggestions(SoundexName("helo")).contains("hello"));
    }

private:
    QTemporaryDir dir;
    QString storePath;
};

PW_TEST_MAIN(TestSpellStore)
#include "tst_spell_store.moc"
