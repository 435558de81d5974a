#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace pw {

// The five remembered lists, in the order they are saved.
enum class PreviousKind { Files, Textures, URLs, Images, ExtraTags };
constexpr int PreviousKindCount = 5;
// No list keeps more than this between runs.
constexpr int PreviousSavedMax = 10;

// The remembered lists, newest first, as the settings hold them.
struct PreviousLists {
    std::array<QStringList, PreviousKindCount> lists;
    QStringList &operator[](PreviousKind kind) { return lists[size_t(kind)]; }
    const QStringList &operator[](PreviousKind kind) const { return lists[size_t(kind)]; }
};

// The last names used in the file dialogs, and the browser program.
struct HistoryPaths {
    QString Open;
    QString IOpen;
    QString Reference;
    QString Browser;
    bool operator==(const HistoryPaths &) const = default;
};

} // namespace pw
