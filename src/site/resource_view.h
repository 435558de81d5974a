#pragma once

#include <QDialog>
#include <QHash>
#include <QString>

class QPushButton;
class QTreeWidget;
class QTreeWidgetItem;

namespace pw {

class LongPass;
class Workspace;
class frmDoc;

// Where a reference is filed: the key of its kind's folder and its picture.
struct ResourceKind {
    QString folder;
    QString picture;
    bool operator==(const ResourceKind &) const = default;
};
// A URL of "A HREF=": no ":" is local; else its scheme, lowered, names the folder when it is one of
// the known ones, and anything else is "other_urls".
ResourceKind ClassifyUrl(const QString &url);
// A picture of "BACKGROUND=" or "SRC=", by the last three characters lowered.
ResourceKind ClassifyImage(const QString &url);

// "Resources": every URL and picture the current document refers to, sorted into kinds. The work
// is done in Form_Load, before the window shows; the tree is a report and the document is left
// as it was found (caret, no selection, Dirty).
class frmResources : public QDialog
{
    Q_OBJECT

public:
    frmResources(Workspace &workspace, frmDoc &document, QWidget *parent);

    QTreeWidget *TreeView1 = nullptr;
    QPushButton *Command1 = nullptr;

    void Form_Load();
    // The node of a key, or none.
    QTreeWidgetItem *node(const QString &key) const { return m_nodes.value(key); }
    // What stands on disk for a local leaf: "found", "missing", "case", or empty when not checked.
    static QString diskStatusOf(const QTreeWidgetItem *leaf);

protected:
    void done(int result) override;
    void closeEvent(QCloseEvent *event) override;

private:
    enum class Scan { Href, Background, Src };
    void GetResourceRegData();
    void SaveResourceRegData();
    void addFixedNodes();
    QTreeWidgetItem *addNode(const QString &parentKey, const QString &key, const QString &text,
                             const QString &picture);
    // False when Escape stopped the search.
    bool runScan(Scan scan, LongPass &pass);
    void markLocalLeaves();
    void TreeView1_DblClick(QTreeWidgetItem *item);
    void Form_Unload();

    Workspace &m_workspace;
    frmDoc &m_document;
    QHash<QString, QTreeWidgetItem *> m_nodes;
    QList<QTreeWidgetItem *> m_leaves;
    QTreeWidgetItem *m_root = nullptr;
    bool m_unloaded = false;
};

// mnuFileResources, imgResources: the view of the current document, shown modally.
frmResources *ShowResources(Workspace &workspace, QWidget *parent);

} // namespace pw
