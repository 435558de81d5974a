#include "site/site_map.h"

#include "core/app_state.h"
#include "core/long_pass.h"
#include "core/settings_store.h"
#include "core/status_presenter.h"
#include "core/workspace.h"
#include "files/open_document.h"
#include "files/save_document.h"
#include "platform/file_handles.h"
#include "platform/message_box.h"
#include "site/link_counts.h"
#include "site/site_find_window.h"
#include "site/site_pictures.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QDir>
#include <QFile>
#include <QFileSystemModel>
#include <QMainWindow>
#include <QMenu>
#include <QPushButton>
#include <QStorageInfo>
#include <QTreeView>
#include <QVBoxLayout>

namespace pw {

namespace {

QString keyOf(const QTreeWidgetItem *item)
{
    return item ? item->data(0, Qt::UserRole).toString() : QString();
}

QString lines(std::initializer_list<const char *> parts)
{
    QStringList joined;
    for (const char *part : parts)
        joined << QLatin1String(part);
    return joined.join(LineEnd);
}

bool isBelow(const QString &path, const QString &folder)
{
    return path.startsWith(folder, Qt::CaseInsensitive);
}

// Qt 6.4 puts the trash's folders beside the home folder when the user's data folder is missing.
bool moveToTrash(QFile &file)
{
    QString dataHome = qEnvironmentVariable("XDG_DATA_HOME");
    if (dataHome.isEmpty())
        dataHome = QDir::homePath() + QStringLiteral("/.local/share");
    QDir().mkpath(dataHome);
    return file.moveToTrash();
}

} // namespace

SiteTreeView::SiteTreeView(QWidget *parent) : QTreeWidget(parent)
{
}

void SiteTreeView::contextMenuEvent(QContextMenuEvent *event)
{
    // The menu key is for the node that has the keyboard; the mouse for the node under it.
    QTreeWidgetItem *item = event->reason() == QContextMenuEvent::Keyboard ? currentItem() : itemAt(event->pos());
    QPoint at = event->globalPos();
    if (item && event->reason() == QContextMenuEvent::Keyboard)
        at = viewport()->mapToGlobal(visualItemRect(item).center());
    Q_EMIT menuRequested(item, at);
    event->accept();
}

void SiteTreeView::focusInEvent(QFocusEvent *event)
{
    QTreeWidget::focusInEvent(event);
    Q_EMIT gotFocus();
}

frmSiteMap::frmSiteMap(Workspace &workspace, QMainWindow &main)
    : QDockWidget(captionPrefix(), &main), m_workspace(workspace)
{
    setObjectName(QStringLiteral("frmSiteMap"));
    setAttribute(Qt::WA_DeleteOnClose);
    setFeatures(QDockWidget::DockWidgetClosable | QDockWidget::DockWidgetMovable);
    setAllowedAreas(Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea);

    auto *body = new QWidget(this);
    TreeView1 = new SiteTreeView(body);
    TreeView1->setObjectName(QStringLiteral("TreeView1"));
    TreeView1->setHeaderHidden(true);
    TreeView1->setIconSize(QSize(13, 13));
    TreeView1->setUniformRowHeights(true);
    TreeView1->setExpandsOnDoubleClick(true);
    connect(TreeView1, &QTreeWidget::itemExpanded, this, &showPictureFor);
    connect(TreeView1, &QTreeWidget::itemCollapsed, this, &showPictureFor);
    connect(TreeView1, &QTreeWidget::itemDoubleClicked, this, &frmSiteMap::TreeView1_DblClick);
    connect(TreeView1, &SiteTreeView::menuRequested, this, &frmSiteMap::TreeView1_MouseDown);
    connect(TreeView1, &SiteTreeView::gotFocus, this, &frmSiteMap::TreeView1_GotFocus);

    Drive1 = new QComboBox(body);
    Drive1->setObjectName(QStringLiteral("Drive1"));
    Drive1->addItem(QDir::homePath(), QDir::homePath());
    for (const QStorageInfo &volume : QStorageInfo::mountedVolumes())
        if (volume.isValid() && volume.isReady() && Drive1->findData(volume.rootPath()) < 0)
            Drive1->addItem(volume.rootPath(), volume.rootPath());
    m_folders = new QFileSystemModel(this);
    m_folders->setFilter(QDir::AllDirs | QDir::NoDotAndDotDot);
    m_folders->setRootPath(QDir::rootPath());
    Dir1 = new QTreeView(body);
    Dir1->setObjectName(QStringLiteral("Dir1"));
    Dir1->setModel(m_folders);
    Dir1->setHeaderHidden(true);
    for (int column = 1; column < m_folders->columnCount(); ++column)
        Dir1->hideColumn(column);
    connect(Drive1, &QComboBox::currentIndexChanged, this, &frmSiteMap::Drive1_Change);
    Drive1_Change(0);
    Command1 = new QPushButton(QStringLiteral("&Done"), body);
    Command1->setObjectName(QStringLiteral("Command1"));
    connect(Command1, &QPushButton::clicked, this, &frmSiteMap::Command1_Click);

    auto *layout = new QVBoxLayout(body);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(TreeView1);
    layout->addWidget(Drive1);
    layout->addWidget(Dir1);
    layout->addWidget(Command1);
    setWidget(body);
    showTree(true);

    mnuSiteMap = new QMenu(QStringLiteral("SiteMap"), this);
    mnuSiteMap->setObjectName(QStringLiteral("mnuSiteMap"));
    QAction *edit = mnuSiteMap->addAction(QStringLiteral("Edit"), this, &frmSiteMap::mnuSiteMapEdit_Click);
    edit->setObjectName(QStringLiteral("mnuSiteMapEdit"));
    mnuSiteMap->setDefaultAction(edit);
    mnuSiteMap->addSeparator()->setObjectName(QStringLiteral("mnusitemapsep1"));
    mnuSiteMap->addAction(QStringLiteral("Delete"), this, &frmSiteMap::mnuSiteMapDelete_Click)
        ->setObjectName(QStringLiteral("mnuSiteMapDelete"));
    mnuFoldMap = new QMenu(QStringLiteral("FolderMap"), this);
    mnuFoldMap->setObjectName(QStringLiteral("mnuFoldMap"));
    mnuFoldMap->addAction(QStringLiteral("Change Base Dir"), this, &frmSiteMap::mnuChangeBaseDir_Click)
        ->setObjectName(QStringLiteral("mnuChangeBaseDir"));
    mnuFoldMap->addAction(QStringLiteral("Count Inbound Links"), this, &frmSiteMap::mnuCountLinks_Click)
        ->setObjectName(QStringLiteral("mnuCountLinks"));
    mnuFoldMap->addAction(QStringLiteral("Find in Files..."), this, &frmSiteMap::mnuFindInFiles_Click)
        ->setObjectName(QStringLiteral("mnuFindInFiles"));

    // Files saved under a new name come into the tree while it is up.
    SetSiteMapEntry([map = QPointer<frmSiteMap>(this)](const QString &path) {
        if (map)
            map->AddToSiteMap(path);
    });
}

frmSiteMap::~frmSiteMap()
{
    SetSiteMapEntry(nullptr);
}

void frmSiteMap::Form_Load()
{
    m_baseDir = SettingsStore().readString(Setting::SiteMapPath);
    if (!m_baseDir.isEmpty())
        m_baseDir = QDir::cleanPath(m_baseDir); // keys and look-ups never meet a trailing "/"
    if (m_baseDir.isEmpty()) {
        m_workspace.MsgBox(lines({"You currently do not have a base directory", "selected as the root of your web site.",
                                  "Please select the base directory for your", "web site."}),
                           MsgStyle::Information);
        enterChoosingMode();
        return;
    }
    if (!QFileInfo(m_baseDir).isDir()) {
        m_workspace.MsgBox(lines({"there was an error will trying to", "load your current base directory.",
                                  "Please reselect the base directory for your", "web site."}),
                           MsgStyle::Information);
        enterChoosingMode();
        return;
    }
    setDir1Path(m_baseDir);
    BuildSiteMap(m_baseDir);
    setWindowTitle(captionPrefix() + m_baseDir);
}

void frmSiteMap::showTree(bool show)
{
    TreeView1->setVisible(show);
    Drive1->setVisible(!show);
    Dir1->setVisible(!show);
    Command1->setVisible(!show);
    Command1->setEnabled(!show);
}

void frmSiteMap::enterChoosingMode()
{
    showTree(false);
    // The chooser starts at the home folder, or at the base folder of before when it still stands.
    setDir1Path(QFileInfo(m_baseDir).isDir() ? m_baseDir : QDir::homePath());
}

QString frmSiteMap::dir1Path() const
{
    const QModelIndex index = Dir1->currentIndex();
    return index.isValid() ? m_folders->filePath(index) : m_folders->filePath(Dir1->rootIndex());
}

void frmSiteMap::setDir1Path(const QString &path)
{
    const QString clean = QDir::cleanPath(path);
    // The drive that holds it: the longest root that begins it.
    int best = -1;
    for (int i = 0; i < Drive1->count(); ++i) {
        const QString root = Drive1->itemData(i).toString();
        if ((clean == root || clean.startsWith(ChildPath(root, QString()))) &&
            (best < 0 || root.size() > Drive1->itemData(best).toString().size()))
            best = i;
    }
    if (best >= 0 && best != Drive1->currentIndex())
        Drive1->setCurrentIndex(best);
    const QModelIndex index = m_folders->index(clean);
    Dir1->setCurrentIndex(index);
    Dir1->scrollTo(index);
}

void frmSiteMap::Drive1_Change(int index)
{
    const QString root = Drive1->itemData(index).toString();
    Dir1->setRootIndex(m_folders->index(root));
    Dir1->setCurrentIndex(QModelIndex());
}

void frmSiteMap::Command1_Click()
{
    m_baseDir = dir1Path();
    showTree(true);
    SettingsStore store;
    store.writeString(Setting::SiteMapPath, m_baseDir);
    store.sync();
    BuildSiteMap(m_baseDir);
    setWindowTitle(captionPrefix() + m_baseDir);
}

void frmSiteMap::BuildSiteMap(const QString &path)
{
    clearTree();
    LongPass pass(m_workspace, QString(), false);
    QTreeWidgetItem *root = WalkSiteFolder(path, nullptr, m_nodes, [&pass] { return pass.escapePressed(); });
    // Sorted once, before the view sees a node.
    SortSiteTree(root);
    TreeView1->addTopLevelItem(root);
    root->setExpanded(true);
}

void frmSiteMap::clearTree()
{
    TreeView1->clear();
    TreeView1->setColumnCount(1);
    m_nodes.clear();
}

void frmSiteMap::AddToSiteMap(const QString &path)
{
    if (m_nodes.contains(path) || m_baseDir.isEmpty() || !isBelow(path, m_baseDir))
        return;
    QTreeWidgetItem *folder = m_nodes.value(QFileInfo(path).path());
    if (!folder)
        return; // a folder made since the walk: not in the tree
    const QString name = LastPathComponent(path);
    auto *item = new QTreeWidgetItem(QStringList{name});
    item->setData(0, Qt::UserRole, path);
    setPicture(item, ClassifyFileType(path.right(3)));
    folder->insertChild(SortedPosition(folder, name), item);
    m_nodes.insert(path, item);
}

void frmSiteMap::TreeView1_DblClick(QTreeWidgetItem *item)
{
    // Folders only open and close.
    if (item && !isFolderPicture(pictureOf(item)))
        OpenFromSiteMap(m_workspace, keyOf(item));
}

void frmSiteMap::TreeView1_MouseDown(QTreeWidgetItem *item, const QPoint &globalPos)
{
    if (!item)
        return;
    TreeView1->setCurrentItem(item);
    (isFolderPicture(pictureOf(item)) ? mnuFoldMap : mnuSiteMap)->popup(globalPos);
}

void frmSiteMap::TreeView1_GotFocus()
{
    // With the focus here no document is the target of the markup tools.
    if (m_workspace.options.isChecked(Option::Toolbar) && !m_workspace.markupToolsHidden())
        m_workspace.SetMarkupToolsHidden(true);
}

void frmSiteMap::mnuSiteMapEdit_Click()
{
    if (QTreeWidgetItem *item = TreeView1->currentItem(); item && !isFolderPicture(pictureOf(item)))
        OpenFromSiteMap(m_workspace, keyOf(item));
}

void frmSiteMap::mnuSiteMapDelete_Click()
{
    QTreeWidgetItem *item = TreeView1->currentItem();
    if (!item || isFolderPicture(pictureOf(item)))
        return;
    const QString path = keyOf(item);
    // A file an open document (or another program's lock) holds is spared.
    if (tryExclusive(path) == ErrorCode::PermissionDenied) {
        m_workspace.MsgBox(QStringLiteral("Permission denied!"), MsgStyle::Exclamation);
        return;
    }
    if (m_workspace.MsgBox(QStringLiteral("Delete ") + path + QLatin1Char('?'), MsgStyle::YesNo + MsgStyle::Question) !=
        MsgAnswer::Yes)
        return;
    QFile file(path);
    if (!moveToTrash(file) && !file.remove()) {
        m_workspace.MsgBox(QStringLiteral("%1 could not be deleted:%2%3").arg(path, LineEnd, file.errorString()),
                           MsgStyle::Exclamation);
        return;
    }
    ForgetSiteNodes(item, m_nodes);
    delete item;
}

void frmSiteMap::mnuChangeBaseDir_Click()
{
    // The stored base folder stays until a new one is chosen with Done.
    clearTree();
    enterChoosingMode();
    setWindowTitle(captionPrefix());
}

void frmSiteMap::mnuCountLinks_Click()
{
    QStringList pages;
    for (auto it = m_nodes.cbegin(); it != m_nodes.cend(); ++it)
        if (!isFolderPicture(pictureOf(it.value())) && IsPageName(it.key()))
            pages << it.key();
    QHash<QString, int> counts;
    {
        LongPass pass(m_workspace, QStringLiteral("Counting links..."));
        qint64 done = 0;
        counts = CountInboundLinks(pages, [&] {
            pass.step(done++, pages.size());
            return pass.escapePressed();
        });
    }
    TreeView1->setColumnCount(2);
    QFont orphan = TreeView1->font();
    orphan.setItalic(true);
    for (auto it = m_nodes.cbegin(); it != m_nodes.cend(); ++it) {
        QTreeWidgetItem *item = it.value();
        if (isFolderPicture(pictureOf(item)))
            continue;
        const int count = counts.value(it.key());
        item->setText(1, count ? QString::number(count) : QString());
        // The home page of the site is where visitors come in; nothing need link to it.
        const bool home = item->parent() && !item->parent()->parent() &&
                          item->text(0).startsWith(QLatin1String("index."), Qt::CaseInsensitive);
        if (count == 0 && IsPageName(it.key()) && !home) {
            item->setFont(0, orphan);
            item->setForeground(0, QColor(Qt::gray));
            item->setToolTip(0, QStringLiteral("No other page links here."));
        } else {
            item->setFont(0, TreeView1->font());
            item->setData(0, Qt::ForegroundRole, QVariant());
            item->setToolTip(0, count == 1 ? QStringLiteral("1 page links here.")
                                           : QStringLiteral("%1 pages link here.").arg(count));
        }
    }
    TreeView1->resizeColumnToContents(0);
}

void frmSiteMap::mnuFindInFiles_Click()
{
    QTreeWidgetItem *item = TreeView1->currentItem();
    if (item && isFolderPicture(pictureOf(item)))
        ShowSiteFind(m_workspace, keyOf(item), parentWidget());
}

void frmSiteMap::closeEvent(QCloseEvent *event)
{
    QDockWidget::closeEvent(event);
    if (!event->isAccepted())
        return;
    // Going (deleted on close): a new one may be made at once.
    setObjectName(QString());
    m_workspace.options.setChecked(Option::SiteMap, false);
}

frmSiteMap *SiteMapOf(const QMainWindow &main)
{
    return main.findChild<frmSiteMap *>(QStringLiteral("frmSiteMap"), Qt::FindDirectChildrenOnly);
}

frmSiteMap *ShowSiteMap(Workspace &workspace, QMainWindow &main)
{
    if (frmSiteMap *map = SiteMapOf(main)) {
        map->show();
        return map;
    }
    auto *map = new frmSiteMap(workspace, main);
    main.addDockWidget(Qt::LeftDockWidgetArea, map);
    main.resizeDocks({map}, {qMax(1, main.width() / 4)}, Qt::Horizontal);
    map->show();
    map->Form_Load();
    return map;
}

void UnloadSiteMap(QMainWindow &main)
{
    if (frmSiteMap *map = SiteMapOf(main))
        map->close();
}

} // namespace pw
