#include "spell/soundex.h"
#include "spell/word_store.h"
#include "spell/word_store_builder.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QSqlDatabase>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace pw;

namespace {

QByteArray fileHash(const QString &path)
{
    QFile f(path);
    if (!f.open(QIODevice::ReadOnly))
        return {};
    return QCryptographicHash::hash(f.readAll(), QCryptographicHash::Sha256);
}

// Rows of a store as "word=key", read with a connection of our own.
QStringList rowsOf(const QString &path)
{
    QStringList rows;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("peek"));
        db.setDatabaseName(path);
        if (db.open()) {
            QSqlQuery q(QStringLiteral("SELECT Word, soundex FROM words ORDER BY Word"), db);
            while (q.next())
                rows << q.value(0).toString() + QLatin1Char('=') + q.value(1).toString();
        }
    }
    QSqlDatabase::removeDatabase(QStringLiteral("peek"));
    return rows;
}

} // namespace

class TestSpellStore : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QStandardPaths::setTestModeEnabled(true); }
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

    void builderKeepsOnlyAskableWords()
    {
        QCOMPARE(StoreWords({"Cat", "cat", "CAT", "cat's", "café", "dog\r", " the ", "", "x2",
                             "abcdefghijklmnopqrst", "abcdefghijklmnopqrstu"}),
                 QStringList({"abcdefghijklmnopqrst", "cat", "dog", "the"}));
    }

    void builderWritesWordsWithTheirKeys()
    {
        QFile list(dir.filePath(QStringLiteral("list.txt")));
        QVERIFY(list.open(QIODevice::WriteOnly));
        list.write("Robert\nrobert\nrobert's\nhello\ncaf\xc3\xa9\n");
        list.close();
        const QString out = dir.filePath(QStringLiteral("built.tpw"));
        QString error;
        int count = 0;
        QVERIFY2(BuildWordStoreFromList(list.fileName(), out, &error, &count), qPrintable(error));
        QCOMPARE(count, 2);
        QCOMPARE(rowsOf(out), QStringList({"hello=H04000", "robert=R01063"}));
        QVERIFY(!QFile::exists(out + ".part"));
    }

    void lookUpsAnswerFromBothStores()
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
        QVERIFY(store.contains("hallo"));
        QCOMPARE(store.suggestions("H04000"), QStringList({"hall", "hello", "hallo"}));
    }

    void addGoesToTheUserStoreOnlyAndOnce()
    {
        const QByteArray shippedBefore = fileHash(storePath);
        {
            WordStore store;
            QString error;
            QVERIFY(store.open(&error));
            QCOMPARE(store.add("zorp", &error), ErrorCode::None);
            QCOMPARE(store.add("zorp", &error), ErrorCode::DuplicateKey);
            QCOMPARE(store.add("dog", &error), ErrorCode::DuplicateKey); // held by the shipped store
        }
        QCOMPARE(rowsOf(UserWordStorePath()), QStringList({"zorp=Z06100"}));
        QCOMPARE(fileHash(storePath), shippedBefore);

        WordStore again; // the added word outlives the store that added it
        QString error;
        QVERIFY(again.open(&error));
        QVERIFY(again.contains("zorp"));
    }

    void unusableStoreIsNamedWithItsReason_data()
    {
        QTest::addColumn<QByteArray>("content"); // empty: no file at all
        QTest::addColumn<QString>("reason");
        QTest::newRow("missing") << QByteArray() << "does not exist";
        QTest::newRow("not a database") << QByteArray("just some words\n") << "not a database";
    }
    void unusableStoreIsNamedWithItsReason()
    {
        QFETCH(QByteArray, content);
        QFETCH(QString, reason);
        const QString path = dir.filePath(QStringLiteral("broken.tpw"));
        QFile::remove(path);
        if (!content.isEmpty()) {
            QFile f(path);
            QVERIFY(f.open(QIODevice::WriteOnly));
            f.write(content);
        }
        setShippedWordStorePath(path);
        WordStore store;
        QString error;
        QVERIFY(!store.open(&error));
        QVERIFY(!store.isOpen());
        QVERIFY2(error.contains(QDir::toNativeSeparators(path)), qPrintable(error));
        QVERIFY2(error.contains(reason), qPrintable(error));
        QCOMPARE(WordStoreAvailable(), !content.isEmpty());
    }

    void sqliteFileWithoutTheTableIsNoStore()
    {
        const QString path = dir.filePath(QStringLiteral("other.tpw"));
        {
            QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), QStringLiteral("other"));
            db.setDatabaseName(path);
            QVERIFY(db.open());
            QVERIFY(QSqlQuery(db).exec(QStringLiteral("CREATE TABLE notes (body TEXT)")));
        }
        QSqlDatabase::removeDatabase(QStringLiteral("other"));
        setShippedWordStorePath(path);
        WordStore store;
        QString error;
        QVERIFY(!store.open(&error));
        QVERIFY2(error.contains("words"), qPrintable(error));
    }

    void addThatCannotWriteSaysWhy()
    {
        // A file where the user's data folder should be: the store can't be made.
        const QString folder = QFileInfo(UserWordStorePath()).absolutePath();
        QDir(folder).removeRecursively();
        QDir().mkpath(QFileInfo(folder).absolutePath());
        QFile blocker(folder);
        QVERIFY(blocker.open(QIODevice::WriteOnly));
        blocker.close();

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
        QVERIFY(store.contains("hello"));
        QVERIFY(store.contains("the"));
        QVERIFY(!store.contains("helo"));
        QVERIFY(store.suggestions(SoundexName("helo")).contains("hello"));
    }

private:
    QTemporaryDir dir;
    QString storePath;
};

QTEST_MAIN(TestSpellStore)
#include "tst_spell_store.moc"
