#pragma once

#include "site/site_find.h"

#include <QDialog>

class QCheckBox;
class QLabel;
class QLineEdit;
class QListWidget;
class QListWidgetItem;
class QPushButton;

namespace pw {

class Workspace;

// Find in Files: searches the files below a folder of the site map, open or not, and lists the
// hits as "relative/path.html:LINE: text of the line". A double click on a hit, or Enter,
// opens its file, or brings it forward, with the hit selected. A tool window, not modal.
class frmSiteFind : public QDialog
{
    Q_OBJECT

public:
    frmSiteFind(Workspace &workspace, const QString &folder, QWidget *parent);

    QLineEdit *tbSiteFind = nullptr;
    QCheckBox *chkCase = nullptr;
    QPushButton *cmdSiteFind = nullptr;
    QPushButton *cmdClose = nullptr;
    QLabel *lblSiteHits = nullptr;
    QListWidget *lstSiteHits = nullptr;

    QString folder() const { return m_folder; }
    void setFolder(const QString &folder);
    void cmdSiteFind_Click();
    void lstSiteHits_Activated(QListWidgetItem *item);

private:
    void showResult(const SiteSearchResult &result, int targetLength);

    Workspace &m_workspace;
    QString m_folder;
};

// Opens Find in Files over parent for folder (or brings the open one forward, moved to folder),
// with the current document's selection as the text when it has one.
frmSiteFind *ShowSiteFind(Workspace &workspace, const QString &folder, QWidget *parent);

} // namespace pw
