#pragma once

#include <QIcon>
#include <QString>

class QTreeWidgetItem;

namespace pw {

// The pictures of the resource and site trees by key ("closed", "open", "doc", "htmldoc", "image",
// "textdoc", "sound", "binfile", "unknown"), drawn at 13 by 13 pixels.
QIcon SitePicture(const QString &key);

// A node's picture key, and the one it shows expanded (folders: "open").
QString pictureOf(const QTreeWidgetItem *item);
void setPicture(QTreeWidgetItem *item, const QString &key, const QString &expandedKey = QString());
// Shows the expanded or the plain picture, as the node stands.
void showPictureFor(QTreeWidgetItem *item);
bool isFolderPicture(const QString &key);

} // namespace pw
