#pragma once

#include <QString>

namespace pw {

// Whether a link or a picture source names a file of this disk that is there, letter case included:
// a name that differs only in case works where names ignore case and breaks on most web servers.
struct TargetCheck {
    enum Kind { NotLocal, Fine, Missing, CaseDiffers };
    Kind kind = NotLocal;
    QString path;  // the file looked for
    QString found; // for CaseDiffers: the path as it is on disk
    bool operator==(const TargetCheck &) const = default;
};

// url as written in the page: relative to documentPath (nothing is checked for an untitled page),
// absolute, or "file://"; a "#name" or "?query" behind it is left out. Other schemes, "#name" alone
// and an empty url are NotLocal.
TargetCheck CheckLocalTarget(const QString &url, const QString &documentPath);
// What the wizards show under the field: empty when there is nothing to say.
QString TargetCheckText(const TargetCheck &check);

} // namespace pw
