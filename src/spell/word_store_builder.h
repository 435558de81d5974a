#pragma once

#include <QString>
#include <QStringList>

class QSqlDatabase;

namespace pw {

// The longest word the store keeps.
constexpr int MaxStoredWordLength = 20;

// The words of a list as the store keeps them: lower case, only the letters a to z (so no
// possessives or accented words, which the walk can never ask for), at most 20 letters, each
// once, sorted.
QStringList StoreWords(const QStringList &lines);

// Makes the table "words" (Word unique, soundex) and the index on soundex in an open database.
bool CreateWordTable(QSqlDatabase &db, QString *error);

// Writes a new store of the given words, keys by SoundexName, in one transaction. The file is
// written beside path and renamed over it, so a failed build leaves no half store.
bool BuildWordStore(const QStringList &words, const QString &path, QString *error);

// Reads a word list (UTF-8, one word a line) and builds the store from it.
bool BuildWordStoreFromList(const QString &listPath, const QString &storePath, QString *error,
                            int *wordCount = nullptr);

} // namespace pw
