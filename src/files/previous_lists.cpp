#include "files/previous_lists.h"

#include "core/workspace.h"

#include <QAction>

namespace pw {

namespace {

QString captionOf(const QString &path)
{
    return ShortenPathForMenu(path, PreviousCaptionLimit);
}

// An entry with the caption of the one before it goes; this closes what a removal left twice.
QStringList tidy(QStringList entries)
{
    QString last;
    for (qsizetype i = 0; i < entries.size();) {
        const QString caption = captionOf(entries[i]);
        if (caption == last) {
            entries.removeAt(i);
        } else {
            last = caption;
            ++i;
        }
    }
    return entries;
}

} // namespace

QString ShortenPathForMenu(const QString &path, int limit, QChar separator)
{
    const qsizetype length = path.size();
    if (length <= limit)
        return path;

    QString head;
    if (length >= 3 && path[0].isLetter() && path[1] == QLatin1Char(':')) {
        head = path.left(3);
    } else {
        qsizetype lead = 0;
        while (lead < length && path[lead] == separator)
            ++lead;
        const qsizetype end = path.indexOf(separator, lead);
        head = end < 0 || end + 1 > limit / 2 ? path.left(lead) : path.left(end + 1);
    }

    // The stretch searched starts at position length - k, counted from 1.
    const qsizetype k = limit - 3 - head.size();
    const qsizetype from = qMax(qsizetype(head.size()), length - k - 1);
    const qsizetype boundary = from < length ? path.indexOf(separator, from) : -1;
    return head + QLatin1String("...") + (boundary < 0 ? QString() : path.mid(boundary));
}

QStringList WithPreviousFile(const QStringList &entries, const QString &path)
{
    QStringList list = entries;
    const QString caption = captionOf(path);
    for (qsizetype i = 0; i < list.size(); ++i) {
        if (captionOf(list[i]) == caption) {
            list.removeAt(i);
            break;
        }
    }
    list.prepend(path);
    return tidy(list.mid(0, PreviousFileCount));
}

QStringList WithoutPreviousFile(const QStringList &entries, int index)
{
    QStringList list = entries;
    if (index >= 1 && index <= list.size())
        list.removeAt(index - 1);
    return tidy(list);
}

void AddPreviousFile(Workspace &workspace, const QString &path)
{
    workspace.setPreviousFiles(WithPreviousFile(workspace.previousFiles(), path));
}

void RemovePreviousFile(Workspace &workspace, int index)
{
    workspace.setPreviousFiles(WithoutPreviousFile(workspace.previousFiles(), index));
}

QString PreviousFile(const Workspace &workspace, int index)
{
    const QStringList &entries = workspace.previousFiles();
    return index >= 1 && index <= qMin(PreviousFileCount, int(entries.size())) ? entries[index - 1] : QString();
}

void ShowPreviousFiles(const std::function<QAction *(const QString &name)> &item, const QStringList &entries)
{
    for (int i = 1; i <= PreviousFileCount; ++i) {
        QAction *action = item(QStringLiteral("mnuFilePrevious(%1)").arg(i));
        if (!action)
            continue;
        const QString entry = entries.value(i - 1);
        QString caption = captionOf(entry);
        action->setData(entry);
        action->setText(caption.replace(QLatin1Char('&'), QLatin1String("&&"))); // a path's "&" is no mnemonic
        action->setVisible(!entry.isEmpty());
    }
    if (QAction *separator = item(QStringLiteral("mnuFileSep1")))
        separator->setVisible(!entries.isEmpty());
}

} // namespace pw
