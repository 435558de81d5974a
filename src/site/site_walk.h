#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>

class QTreeWidgetItem;

namespace pw {

// The picture key of a file by its last three characters, compared exactly: "tml" is an HTML page
// ("page.html"), while "page.htm" and "PAGE.HTML" are "unknown"; "au" and "ra" match only a name of
// two characters.
QString ClassifyFileType(const QString &ending);
// The part of a path behind its last separator; the whole of it when it has none.
QString LastPathComponent(const QString &path, QChar separator = QLatin1Char('/'));
// A file's key: its folder's path, a separator, the name (a root folder's separator not doubled).
QString ChildPath(const QString &folder, const QString &name);

// The nodes of a site map by key (real paths), so that a key is found without a search.
using SiteNodes = QHash<QString, QTreeWidgetItem *>;

// Adds the folder `path` under `parent` (the root when parent is null: key and text the path)
// with all it holds, files before folders, depth first; returns its node. The walk reads with QDir
// and never moves the current directory; dot-files and special files are left out. A linked
// folder is followed unless its real folder is one it lies in already (a loop), and a folder that
// can't be read shows empty with a tool tip that says why. stop is asked once per folder; true
// ends the walk where it stands. Children are not sorted: SortSiteTree does that once.
QTreeWidgetItem *WalkSiteFolder(const QString &path, QTreeWidgetItem *parent, SiteNodes &nodes,
                                const std::function<bool()> &stop = {});
// Sorts the children of every folder below (and of) folder by their text.
void SortSiteTree(QTreeWidgetItem *folder);
// Where a child with this text goes among folder's sorted children.
int SortedPosition(const QTreeWidgetItem *folder, const QString &text);
// Removes a node and all below it from nodes (the items are not deleted).
void ForgetSiteNodes(QTreeWidgetItem *item, SiteNodes &nodes);

} // namespace pw
