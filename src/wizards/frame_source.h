#pragma once

#include <QString>

namespace pw
{

// What stands at a frame's source, as a page in folder would reach it.
struct SourceCheck {
    enum Kind {
        Unchecked, // empty, a URL with a scheme, or no folder to start from
        Found,
        Missing,
        CaseDiffers, // only a file whose name differs in case: a server that tells case apart misses it
    };
    Kind kind = Unchecked;
    QString actual; // the path as it stands on disk, for CaseDiffers
};

// source is a URL ("/" separators) as written in SRC, without or with "#name" or "?query".
SourceCheck CheckFrameSource(const QString &source, const QString &folder);

} // namespace pw
