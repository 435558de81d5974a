#include "spell/word_store.h"

#include "core/app_state.h"
#include "spell/soundex.h"
#include "spell/word_store_builder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSqlDatabase>
#include <QSqlError>
#include <QSqlQuery>
#include <QStandardPaths>
#include <QUrl>
#include <QVariant>

namespace pw {

namespace {

const QString StoreFileName = QStringLiteral("spwords.tpw");
const QString UserStoreFileName = QStringLiteral("userwords.tpw");

QString &shippedOverride()
{
    static QString path;
    return path;
}

// SQLite's primary result codes that the user can do something about.
constexpr int SqliteReadOnly = 8;
constexpr int SqlitePerm = 3;
constexpr int SqliteFull = 13;
constexpr int SqliteCantOpen = 14;
constexpr int SqliteConstraint = 19;

int primaryCode(const QSqlError &e)
{
    return e.nativeErrorCode().toInt() & 0xFF;
}

QString reasonFor(const QSqlError &e)
{
    switch (primaryCode(e)) {
    case SqliteFull: return QStringLiteral("The disk is full.");
    case SqliteReadOnly:
    case SqlitePerm:
    case SqliteCantOpen: return QStringLiteral("You may not write to this file.");
    default: return e.text();
    }
}

} // namespace

QString ShippedWordStorePath()
{
    if (!shippedOverride().isEmpty())
        return shippedOverride();
    const QString bin = QCoreApplication::applicationDirPath();
    const QString installed = QDir::cleanPath(bin + QStringLiteral("/../share/pagewright/") + StoreFileName);
    const QString beside = bin + QLatin1Char('/') + StoreFileName;
    if (!QFileInfo::exists(installed) && QFileInfo::exists(beside))
        return beside;
    return installed;
}

void setShippedWordStorePath(const QString &path)
{
    shippedOverride() = path;
}

QString UserWordStorePath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + QLatin1Char('/')
           + UserStoreFileName;
}

bool WordStoreAvailable()
{
    const QFileInfo info(ShippedWordStorePath());
    return info.isFile() && info.isReadable();
}

// One open SQLite file with its prepared queries; closed and unregistered when destroyed.
struct WordStore::Connection {
    QString name;
    QString path;
    QSqlDatabase db;
    QSqlQuery wordQuery;
    QSqlQuery keyQuery;
    QSqlQuery insert;

    Connection(const QString &file, bool readOnly)
        : name(QStringLiteral("pw_words_%1").arg(quintptr(this))), path(file)
    {
        db = QSqlDatabase::addDatabase(QStringLiteral("QSQLITE"), name);
        if (readOnly) {
            // Immutable: nobody writes the shipped store, so SQLite need not lock the file and
            // check it for changes at every look-up.
            db.setDatabaseName(QUrl::fromLocalFile(QFileInfo(file).absoluteFilePath()).toString(QUrl::FullyEncoded)
                               + QStringLiteral("?immutable=1"));
            db.setConnectOptions(QStringLiteral("QSQLITE_OPEN_READONLY;QSQLITE_OPEN_URI"));
        } else {
            db.setDatabaseName(file);
        }
    }
    ~Connection()
    {
        wordQuery = QSqlQuery();
        keyQuery = QSqlQuery();
        insert = QSqlQuery();
        db.close();
        db = QSqlDatabase();
        QSqlDatabase::removeDatabase(name);
    }

    // Opens the file and prepares the look-ups; a file that isn't a word store fails here.
    bool open(QString *error)
    {
        if (!db.open())
            return failed(db.lastError().text(), error);
        // The shipped store is read through a memory map rather than a page cache of its own.
        QSqlQuery(db).exec(QStringLiteral("PRAGMA mmap_size = 268435456"));
        return prepareLookups(error);
    }
    bool prepareLookups(QString *error)
    {
        wordQuery = QSqlQuery(db);
        keyQuery = QSqlQuery(db);
        wordQuery.setForwardOnly(true);
        keyQuery.setForwardOnly(true);
        if (!wordQuery.prepare(QStringLiteral("SELECT Word FROM words WHERE Word = ?")))
            return failed(wordQuery.lastError().text(), error);
        if (!keyQuery.prepare(QStringLiteral("SELECT Word FROM words WHERE soundex = ?")))
            return failed(keyQuery.lastError().text(), error);
        return true;
    }
    static bool failed(const QString &reason, QString *error)
    {
        if (error)
            *error = reason;
        return false;
    }

    bool contains(const QString &word)
    {
        wordQuery.bindValue(0, word);
        const bool found = wordQuery.exec() && wordQuery.next();
        wordQuery.finish();
        return found;
    }
    void appendMatches(const QString &key, QStringList &out)
    {
        keyQuery.bindValue(0, key);
        if (keyQuery.exec())
            while (keyQuery.next()) {
                const QString word = keyQuery.value(0).toString();
                if (!out.contains(word))
                    out.append(word);
            }
        keyQuery.finish();
    }
};

WordStore::WordStore() = default;
WordStore::~WordStore() = default;

bool WordStore::open(QString *error)
{
    m_user.reset();
    m_shipped.reset();
    QString failedPath = ShippedWordStorePath();
    QString reason;
    auto store = std::make_unique<Connection>(failedPath, true);
    if (!QFileInfo(failedPath).isFile()) {
        reason = QStringLiteral("The file does not exist.");
    } else if (store->open(&reason)) {
        m_shipped = std::move(store);
        failedPath = UserWordStorePath();
        if (QFileInfo::exists(failedPath) && !openUser(false, &reason))
            m_shipped.reset();
    }
    if (!m_shipped && error)
        *error = QStringLiteral("The word store %1 can't be used:%2%3")
                     .arg(QDir::toNativeSeparators(failedPath), LineEnd, reason);
    return m_shipped != nullptr;
}

bool WordStore::openUser(bool create, QString *reason)
{
    const QString path = UserWordStorePath();
    if (create && !QDir().mkpath(QFileInfo(path).absolutePath()))
        return Connection::failed(QStringLiteral("Its folder can't be made."), reason);
    auto store = std::make_unique<Connection>(path, false);
    if (!store->db.open())
        return Connection::failed(reasonFor(store->db.lastError()), reason);
    if (create && !CreateWordTable(store->db, reason))
        return false;
    if (!store->prepareLookups(reason))
        return false;
    store->insert = QSqlQuery(store->db);
    if (!store->insert.prepare(QStringLiteral("INSERT INTO words (Word, soundex) VALUES (?, ?)")))
        return Connection::failed(reasonFor(store->insert.lastError()), reason);
    m_user = std::move(store);
    return true;
}

bool WordStore::contains(const QString &word)
{
    return (m_shipped && m_shipped->contains(word)) || (m_user && m_user->contains(word));
}

QStringList WordStore::suggestions(const QString &key)
{
    QStringList out;
    if (m_shipped)
        m_shipped->appendMatches(key, out);
    if (m_user)
        m_user->appendMatches(key, out);
    return out;
}

ErrorCode WordStore::add(const QString &word, QString *error)
{
    if (contains(word))
        return ErrorCode::DuplicateKey;
    QString reason;
    ErrorCode code = ErrorCode::PermissionDenied;
    if (m_user || openUser(true, &reason)) {
        m_user->insert.bindValue(0, word);
        m_user->insert.bindValue(1, SoundexName(word));
        if (m_user->insert.exec())
            return ErrorCode::None;
        const QSqlError e = m_user->insert.lastError();
        if (primaryCode(e) == SqliteConstraint)
            return ErrorCode::DuplicateKey;
        if (primaryCode(e) == SqliteFull)
            code = ErrorCode::PathFileAccess;
        reason = reasonFor(e);
    }
    if (error)
        *error = QStringLiteral("The word could not be added to %1:%2%3")
                     .arg(QDir::toNativeSeparators(UserWordStorePath()), LineEnd, reason);
    return code;
}

} // namespace pw
