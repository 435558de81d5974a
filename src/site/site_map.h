#pragma once

#include "site/site_walk.h"

#include <QDockWidget>
#include <QTreeWidget>

class QComboBox;
class QFileSystemModel;
class QMainWindow;
class QMenu;
class QPushButton;
class QTreeView;

namespace pw {

class Workspace;

// The tree of the site map: it tells of the context menu (right button or the menu key) with the
// node it is for, and of taking the focus.
class SiteTreeView : public QTreeWidget
{
    Q_OBJECT

public:
    explicit SiteTreeView(QWidget *parent = nullptr);

Q_SIGNALS:
    void menuRequested(QTreeWidgetItem *item, const QPoint &globalPos);
    void gotFocus();

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    void focusInEvent(QFocusEvent *event) override;
};

// The site map: a dock along the left of the main window with the tree of the base folder of the
// user's site, every file typed by its name. A double click opens a file; the context menus open or
// delete a file, or choose another base folder. Closing the dock switches its option off.
class frmSiteMap : public QDockWidget
{
    Q_OBJECT

public:
    frmSiteMap(Workspace &workspace, QMainWindow &main);
    ~frmSiteMap() override;

    SiteTreeView *TreeView1 = nullptr;
    QComboBox *Drive1 = nullptr;
    QTreeView *Dir1 = nullptr;
    QPushButton *Command1 = nullptr;
    QMenu *mnuSiteMap = nullptr;
    QMenu *mnuFoldMap = nullptr;

    static QString captionPrefix() { return QStringLiteral("Tessaline Site Map - "); }
    QString BaseDir() const { return m_baseDir; }

    void Form_Load();
    // The folder Dir1 stands at; setting it moves the chooser there.
    QString dir1Path() const;
    void setDir1Path(const QString &path);
    void Command1_Click();
    void BuildSiteMap(const QString &path);
    void AddToSiteMap(const QString &path);
    // The node of a key, or none.
    QTreeWidgetItem *node(const QString &key) const { return m_nodes.value(key); }

    void mnuSiteMapEdit_Click();
    void mnuSiteMapDelete_Click();
    void mnuChangeBaseDir_Click();
    // The inbound links of every file, in a second column; pages nothing links to in grey italics.
    void mnuCountLinks_Click();
    // Find in Files over the folder chosen (the whole site at the root).
    void mnuFindInFiles_Click();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void enterChoosingMode();
    void Drive1_Change(int index);
    void TreeView1_DblClick(QTreeWidgetItem *item);
    void TreeView1_MouseDown(QTreeWidgetItem *item, const QPoint &globalPos);
    void TreeView1_GotFocus();
    void showTree(bool show);
    void clearTree();

    Workspace &m_workspace;
    QFileSystemModel *m_folders = nullptr;
    QString m_baseDir;
    SiteNodes m_nodes;
};

// The dock of main, or none.
frmSiteMap *SiteMapOf(const QMainWindow &main);
// mnuOptionSiteMap checked: the dock shown (made and loaded once), a quarter of main's width.
frmSiteMap *ShowSiteMap(Workspace &workspace, QMainWindow &main);
// mnuOptionSiteMap unchecked: the dock goes.
void UnloadSiteMap(QMainWindow &main);

} // namespace pw
