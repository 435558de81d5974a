#pragma once

#include "platform/error_codes.h"

#include <QString>
#include <QStringList>

#include <memory>

namespace pw {

// The shipped store "spwords.tpw": the install's share dir, or beside the binary in the build
// tree. A path set by setShippedWordStorePath wins (tests, benchmarks); empty goes back.
QString ShippedWordStorePath();
void setShippedWordStorePath(const QString &path);
// The user's own store of added words, in the per-user data dir; made at the first Add.
QString UserWordStorePath();
// False when there is no shipped store to check against.
bool WordStoreAvailable();

// The two stores as one: a word is known when either holds it, suggestions come from both,
// added words go to the user's store only. Each query is prepared once, at open.
class WordStore
{
public:
    WordStore();
    ~WordStore();
    WordStore(const WordStore &) = delete;
    WordStore &operator=(const WordStore &) = delete;

    // Opens the shipped store read-only and the user's store if it exists. On failure *error
    // names the file and the reason, and nothing stays open.
    bool open(QString *error);
    bool isOpen() const { return m_shipped != nullptr; }

    // word is in lower case.
    bool contains(const QString &word);
    // The words of both stores with this key: the shipped ones first, each in query order.
    QStringList suggestions(const QString &key);

    // Adds a lower-case word and its key to the user's store. DuplicateKey when either store
    // holds it; PermissionDenied or PathFileAccess with *error saying why when it can't be written.
    ErrorCode add(const QString &word, QString *error);

private:
    struct Connection;
    bool openUser(bool create, QString *error);

    std::unique_ptr<Connection> m_shipped;
    std::unique_ptr<Connection> m_user;
};

} // namespace pw
