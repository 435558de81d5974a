#pragma once

#include <QDir>
#include <QString>

namespace pw {

// The path rule of the wizards: a path has `separator` between its parts ("\" as paths are written
// in the markup's home, the host's own here), a URL has "/". Positions count from 1.

// The path of target as seen from the folder of the referring file base. Comparisons are exact
// (case counts), whole prefixes with their closing separator. A target on another drive (another
// first character) comes back unchanged; so does one for an empty base or a base without any
// separator, which has no folders to compare.
QString MakeRelativeUrl(const QString &base, const QString &target, QChar separator = QDir::separator());

// Every separator becomes "/".
QString UrlFromPath(const QString &path, QChar separator = QDir::separator());
// Every "/" becomes the separator.
QString PathFromUrl(const QString &url, QChar separator = QDir::separator());
// base without its file name (the text behind its last separator), then PathFromUrl of url.
QString ResolveRelativeUrl(const QString &base, const QString &url, QChar separator = QDir::separator());

} // namespace pw
