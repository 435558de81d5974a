#pragma once

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>

namespace pw {

// Whether a file name is a page whose links are counted (.html, .htm, .shtml, any case).
bool IsPageName(const QString &name);

// The inbound links of a site: for every file a page refers to (HREF, SRC, BACKGROUND, quoted, any
// case, blanks around "=" allowed), how many other pages refer to it, each page counted once per
// target. References are resolved against the referring page's folder, without fragment or query;
// references with a scheme are left out. stop is asked once per page; true ends the count there.
QHash<QString, int> CountInboundLinks(const QStringList &pages, const std::function<bool()> &stop = {});

} // namespace pw
