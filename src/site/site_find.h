#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <optional>

namespace pw {

// A line of a file that holds the text looked for.
struct SiteHit {
    QString path;     // the file as the walk named it
    int line = 0;     // from 1
    int column = 0;   // of the line's first hit, from 0
    QString lineText; // the line, blanks at its ends cut, at most 200 characters
};

struct SiteSearchResult {
    QList<SiteHit> hits;
    int searched = 0;   // files whose text was searched
    int unreadable = 0; // files that could not be read
    int binary = 0;     // files left out as not text
    bool stopped = false;
};

// The text an open document holds for a file, unsaved changes and all; nothing when none is open.
using OpenTextOf = std::function<std::optional<QString>(const QString &path)>;
// Asked before each file with the files done and the whole; true stops the search there.
using SiteSearchStop = std::function<bool(qint64 done, qint64 total)>;

// Every file below folder, walked as the site map walks it, pictures and sounds left out; sorted.
QStringList SiteTextFiles(const QString &folder, const std::function<bool()> &stop = {});

// One hit per line of each file that holds target; files are read as a document would read them
// (byte-order mark, charset), and those that look binary are left out. An open document's text
// stands for its file.
SiteSearchResult SearchSiteFiles(const QStringList &files, const QString &target, Qt::CaseSensitivity cs,
                                 const OpenTextOf &openText = {}, const SiteSearchStop &stop = {});

// "3 hits in 2 files", "0 hits", with the files that could not be read and a stop after it.
QString SiteSearchSummary(const SiteSearchResult &result);

} // namespace pw
