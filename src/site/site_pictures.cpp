#include "site/site_pictures.h"

#include <QApplication>
#include <QHash>
#include <QStyle>
#include <QTreeWidgetItem>

namespace pw {

namespace {

constexpr int PictureRole = Qt::UserRole + 1;
constexpr int ExpandedPictureRole = Qt::UserRole + 2;

QIcon themed(const char *name, QStyle::StandardPixmap fallback)
{
    return QIcon::fromTheme(QLatin1String(name), QApplication::style()->standardIcon(fallback));
}

} // namespace

QIcon SitePicture(const QString &key)
{
    // Made once: a tree of twenty thousand nodes shares a handful of icons.
    static QHash<QString, QIcon> pictures;
    if (pictures.isEmpty()) {
        pictures.insert(QStringLiteral("closed"), themed("folder", QStyle::SP_DirClosedIcon));
        pictures.insert(QStringLiteral("open"), themed("folder-open", QStyle::SP_DirOpenIcon));
        pictures.insert(QStringLiteral("doc"), themed("text-html", QStyle::SP_FileLinkIcon));
        pictures.insert(QStringLiteral("htmldoc"), themed("text-html", QStyle::SP_FileIcon));
        pictures.insert(QStringLiteral("textdoc"), themed("text-x-generic", QStyle::SP_FileIcon));
        pictures.insert(QStringLiteral("image"), themed("image-x-generic", QStyle::SP_FileIcon));
        pictures.insert(QStringLiteral("sound"), themed("audio-x-generic", QStyle::SP_MediaVolume));
        pictures.insert(QStringLiteral("binfile"), themed("application-x-executable", QStyle::SP_FileIcon));
        pictures.insert(QStringLiteral("unknown"), themed("unknown", QStyle::SP_MessageBoxQuestion));
    }
    return pictures.value(key, pictures.value(QStringLiteral("unknown")));
}

QString pictureOf(const QTreeWidgetItem *item)
{
    return item->data(0, PictureRole).toString();
}

void setPicture(QTreeWidgetItem *item, const QString &key, const QString &expandedKey)
{
    item->setData(0, PictureRole, key);
    item->setData(0, ExpandedPictureRole, expandedKey.isEmpty() ? key : expandedKey);
    item->setIcon(0, SitePicture(key));
}

void showPictureFor(QTreeWidgetItem *item)
{
    const int role = item->isExpanded() ? ExpandedPictureRole : PictureRole;
    item->setIcon(0, SitePicture(item->data(0, role).toString()));
}

bool isFolderPicture(const QString &key)
{
    return key == QLatin1String("closed") || key == QLatin1String("open");
}

} // namespace pw
