#include "site/site_walk.h"

#include "site/site_pictures.h"

#include <QDir>
#include <QFileInfo>
#include <QTreeWidgetItem>

#include <algorithm>

namespace pw {

namespace {

// By text ignoring case, then with case, so that the order is the same on every run.
bool textBefore(const QString &a, const QString &b)
{
    const int folded = QString::compare(a, b, Qt::CaseInsensitive);
    return folded != 0 ? folded < 0 : a < b;
}

QString keyOf(const QTreeWidgetItem *item)
{
    return item->data(0, Qt::UserRole).toString();
}

QTreeWidgetItem *newNode(QTreeWidgetItem *parent, const QString &key, const QString &text, const QString &picture,
                         SiteNodes &nodes)
{
    auto *item = parent ? new QTreeWidgetItem(parent, QStringList{text}) : new QTreeWidgetItem(QStringList{text});
    item->setData(0, Qt::UserRole, key);
    setPicture(item, picture, isFolderPicture(picture) ? QStringLiteral("open") : QString());
    nodes.insert(key, item);
    return item;
}

class Walk
{
public:
    Walk(SiteNodes &nodes, const std::function<bool()> &stop) : m_nodes(nodes), m_stop(stop) {}

    void folder(const QString &path, QTreeWidgetItem *node)
    {
        if (m_stopped || (m_stop && m_stop())) {
            m_stopped = true;
            return;
        }
        const QFileInfo info(path);
        if (!info.isReadable() || !info.isExecutable()) {
            node->setToolTip(0, QStringLiteral("This folder can't be read: you have no permission to list it."));
            return;
        }
        const QString real = info.canonicalFilePath();
        if (m_above.contains(real)) {
            node->setToolTip(0, QStringLiteral("A link to %1, which this folder lies in already; "
                                               "it is not followed again.").arg(real));
            return;
        }
        m_above.append(real);
        const QDir dir(path);
        // Without QDir::Hidden and QDir::System: no dot-files, devices, pipes, sockets or broken links.
        for (const QString &name : dir.entryList(QDir::Files, QDir::NoSort)) {
            const QString key = ChildPath(path, name);
            newNode(node, key, name, ClassifyFileType(name.right(3)), m_nodes);
        }
        for (const QString &name : dir.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::NoSort)) {
            const QString key = ChildPath(path, name);
            folder(key, newNode(node, key, name, QStringLiteral("closed"), m_nodes));
            if (m_stopped)
                break;
        }
        m_above.removeLast();
    }

private:
    SiteNodes &m_nodes;
    const std::function<bool()> &m_stop;
    QStringList m_above; // the real folders the walk stands in
    bool m_stopped = false;
};

} // namespace

QString ClassifyFileType(const QString &ending)
{
    static const QHash<QString, QString> types = [] {
        QHash<QString, QString> t;
        t.insert(QStringLiteral("tml"), QStringLiteral("htmldoc"));
        t.insert(QStringLiteral("txt"), QStringLiteral("textdoc"));
        for (const char *e : {"gif", "bmx", "jpg", "peg", "bmp", "avi", "mov", "pv2", "mpg", "wrl"})
            t.insert(QLatin1String(e), QStringLiteral("image"));
        for (const char *e : {"wav", "au", "ra", "voc", "mid", "idi", "ram"})
            t.insert(QLatin1String(e), QStringLiteral("sound"));
        for (const char *e : {"exe", "bin", "tar", "zip", ".gz"})
            t.insert(QLatin1String(e), QStringLiteral("binfile"));
        return t;
    }();
    return types.value(ending, QStringLiteral("unknown"));
}

QString LastPathComponent(const QString &path, QChar separator)
{
    return path.mid(path.lastIndexOf(separator) + 1);
}

QString ChildPath(const QString &folder, const QString &name)
{
    return folder.endsWith(QLatin1Char('/')) ? folder + name : folder + QLatin1Char('/') + name;
}

QTreeWidgetItem *WalkSiteFolder(const QString &path, QTreeWidgetItem *parent, SiteNodes &nodes,
                                const std::function<bool()> &stop)
{
    QTreeWidgetItem *node = newNode(parent, path, parent ? LastPathComponent(path) : path, QStringLiteral("closed"), nodes);
    Walk(nodes, stop).folder(path, node);
    return node;
}

void SortSiteTree(QTreeWidgetItem *folder)
{
    if (folder->childCount() == 0)
        return;
    QList<QTreeWidgetItem *> children = folder->takeChildren();
    std::stable_sort(children.begin(), children.end(),
                     [](const QTreeWidgetItem *a, const QTreeWidgetItem *b) { return textBefore(a->text(0), b->text(0)); });
    folder->addChildren(children);
    for (QTreeWidgetItem *child : children)
        SortSiteTree(child);
}

int SortedPosition(const QTreeWidgetItem *folder, const QString &text)
{
    int low = 0;
    int high = folder->childCount();
    while (low < high) {
        const int middle = (low + high) / 2;
        if (textBefore(folder->child(middle)->text(0), text))
            low = middle + 1;
        else
            high = middle;
    }
    return low;
}

void ForgetSiteNodes(QTreeWidgetItem *item, SiteNodes &nodes)
{
    nodes.remove(keyOf(item));
    for (int i = 0; i < item->childCount(); ++i)
        ForgetSiteNodes(item->child(i), nodes);
}

} // namespace pw
