#include "spell/word_store_builder.h"

#include "spell/soundex.h"

#include <QFile>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QVariant>

#include <algorithm>

namespace pw {

namespace {

bool isStoreWord(const QString &word)
{
    if (word.isEmpty() || word.size() > MaxStoredWordLength)
        return false;
    return std::all_of(word.begin(), word.end(),
                       [](QChar c) { return c >= QLatin1Char('a') && c <= QLatin1Char('z'); });
}

bool fail(QString *error, const QString &text)
{
    if (error)
        *error = text;
    return false;
}

} // namespace

QStringList StoreWords(const QStringList &lines)
{
    QStringList words;
    words.reserve(lines.size());
    for (const QString &line : lines) {
        const QString word = line.trimmed().toLower();
        if (isStoreWord(word))
            words.append(word);
    }
    std::sort(words.begin(), words.end());
    words.erase(std::unique(words.begin(), words.end()), words.end());
    return words;
}

bool CreateWordTable(QSqlDatabase &db, QString *error)
{
    QSqlQuery q(db);
    if (!q.exec(QStringLiteral("CREATE TABLE IF NOT EXISTS words "
                               "(Word TEXT NOT NULL UNIQUE, soundex TEXT NOT NULL DEFAULT '')"))
        || !q.exec(QStringLiteral("CREATE INDEX IF NOT EXISTS words_soundex ON words (soundex)")))
        return fail(error, q.lastError().text());
    return true;
}

bool BuildWordStore(const QStringList &words, const QString &path, QString *error)
{
    const QString part = path + QStringLiteral(".part");
    QFile::remove(part);
    const QString connection = QStringLiteral("pw_build_") + path;
    bool ok = false;
    {
        QSqlDatabase db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), connection);
        db.setDatabaseName(part);
        if (!db.open()) {
            fail(error, db.lastError().text());
        } else {
            QSqlQuery q(db);
            // A throw-away file until the rename: no journal is needed.
            q.exec(QStringLiteral("PRAGMA journal_mode = OFF"));
            q.exec(QStringLiteral("PRAGMA synchronous = OFF"));
            ok = CreateWordTable(db, error) && db.transaction();
            if (ok) {
                QSqlQuery insert(db);
                ok = insert.prepare(QStringLiteral("INSERT INTO words (Word, soundex) VALUES (?, ?)"));
                for (qsizetype i = 0; ok && i < words.size(); ++i) {
                    insert.bindValue(0, words[i]);
                    insert.bindValue(1, SoundexName(words[i]));
                    ok = insert.exec();
                }
                if (!ok)
                    fail(error, insert.lastError().text());
                ok = ok ? db.commit() : (db.rollback(), false);
                if (!ok && error && error->isEmpty())
                    *error = db.lastError().text();
            }
            db.close();
        }
    }
    QSqlDatabase::removeDatabase(connection);
    if (ok) {
        QFile::remove(path);
        ok = QFile::rename(part, path);
        if (!ok)
            fail(error, QStringLiteral("cannot write %1").arg(path));
    }
    if (!ok)
        QFile::remove(part);
    return ok;
}

bool BuildWordStoreFromList(const QString &listPath, const QString &storePath, QString *error,
                            int *wordCount)
{
    QFile list(listPath);
    if (!list.open(QIODevice::ReadOnly | QIODevice::Text))
        return fail(error, QStringLiteral("%1: %2").arg(listPath, list.errorString()));
    const QStringList words = StoreWords(QString::fromUtf8(list.readAll()).split(QLatin1Char('\n')));
    if (wordCount)
        *wordCount = int(words.size());
    return BuildWordStore(words, storePath, error);
}

} // namespace pw
