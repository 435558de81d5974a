#include "site/resource_view.h"

#include "core/app_state.h"
#include "core/document_window.h"
#include "core/editing_surface.h"
#include "core/long_pass.h"
#include "core/settings_store.h"
#include "core/workspace.h"
#include "platform/dialog_look.h"
#include "platform/platform.h"
#include "site/resource_status.h"
#include "site/site_pictures.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QPointer>
#include <QPushButton>
#include <QScreen>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace pw {

namespace {

struct FixedNode {
    const char *key;
    const char *text;
    const char *parent; // nullptr: under the root
};

const FixedNode kFixedNodes[] = {
    {"url", "URLs", nullptr},         {"local", "Local", "url"},   {"http", "HTTP", "url"},
    {"ftp", "FTP", "url"},            {"mailto", "MAILTO", "url"}, {"gopher", "GOPHER", "url"},
    {"telnet", "TELNET", "url"},      {"wais", "WAIS", "url"},     {"news", "NEWS", "url"},
    {"file", "FILE", "url"},          {"other_urls", "other", "url"}, {"image", "Images", nullptr},
    {"bmp", "BMP", "image"},          {"gif", "GIF", "image"},     {"jpg", "JPG", "image"},
    {"other_images", "others", "image"},
};

const QString RootKey = QStringLiteral("p");

// A leaf's first reference in the text, and what stands on disk for it.
constexpr int StartRole = Qt::UserRole + 3;
constexpr int LengthRole = Qt::UserRole + 4;
constexpr int DiskRole = Qt::UserRole + 5;

QRect placementRect(const WindowPlacement &p)
{
    return QRect(twipsToPixels(p.Left), twipsToPixels(p.Top), twipsToPixels(p.Width), twipsToPixels(p.Height));
}

bool onSomeScreen(const QRect &rect)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(),
                       [&rect](const QScreen *s) { return s->availableGeometry().intersects(rect); });
}

} // namespace

ResourceKind ClassifyUrl(const QString &url)
{
    const qsizetype colon = url.indexOf(QLatin1Char(':'));
    if (colon < 0)
        return {QStringLiteral("local"), QStringLiteral("doc")};
    const QString scheme = url.left(colon).toLower();
    static const QStringList known = {QStringLiteral("http"),   QStringLiteral("ftp"),    QStringLiteral("mailto"),
                                      QStringLiteral("wais"),   QStringLiteral("gopher"), QStringLiteral("telnet"),
                                      QStringLiteral("news"),   QStringLiteral("file")};
    if (known.contains(scheme))
        return {scheme, QStringLiteral("doc")};
    return {QStringLiteral("other_urls"), QStringLiteral("unknown")};
}

ResourceKind ClassifyImage(const QString &url)
{
    const QString ending = url.right(3).toLower();
    const QString image = QStringLiteral("image");
    if (ending == QLatin1String("gif"))
        return {QStringLiteral("gif"), image};
    if (ending == QLatin1String("jpg") || ending == QLatin1String("peg"))
        return {QStringLiteral("jpg"), image};
    if (ending == QLatin1String("bmp"))
        return {QStringLiteral("bmp"), image};
    return {QStringLiteral("other_images"), QStringLiteral("unknown")};
}

frmResources::frmResources(Workspace &workspace, frmDoc &document, QWidget *parent)
    : QDialog(parent), m_workspace(workspace), m_document(document)
{
    SetDialogLook(*this);
    setObjectName(QStringLiteral("frmResources"));
    setWindowTitle(QStringLiteral("Resources"));
    setAttribute(Qt::WA_DeleteOnClose);

    TreeView1 = new QTreeWidget(this);
    TreeView1->setObjectName(QStringLiteral("TreeView1"));
    TreeView1->setHeaderHidden(true);
    TreeView1->setIconSize(QSize(13, 13));
    TreeView1->setUniformRowHeights(true);
    TreeView1->setSelectionMode(QAbstractItemView::SingleSelection);
    connect(TreeView1, &QTreeWidget::itemExpanded, this, &showPictureFor);
    connect(TreeView1, &QTreeWidget::itemCollapsed, this, &showPictureFor);
    connect(TreeView1, &QTreeWidget::itemDoubleClicked, this, &frmResources::TreeView1_DblClick);

    Command1 = new QPushButton(QStringLiteral("Done"), this);
    Command1->setObjectName(QStringLiteral("Command1"));
    Command1->setDefault(true);
    Command1->setEnabled(false);
    Command1->hide();
    connect(Command1, &QPushButton::clicked, this, &QDialog::accept);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(TreeView1);
    layout->addWidget(Command1);
}

void frmResources::Form_Load()
{
    GetResourceRegData();
    EditingSurface &text = *m_document.Text;
    const int caret = text.SelStart();
    {
        LongPass pass(m_workspace, QStringLiteral("Searching ") + m_document.Caption() +
                                       QStringLiteral(".  Hit ESC to abort."));
        pass.step(0, 1);
        addFixedNodes();
        m_workspace.platform.escapePressed(); // forgets a press from before
        for (Scan scan : {Scan::Href, Scan::Background, Scan::Src})
            if (!runScan(scan, pass))
                break;
        pass.step(1, 1);
    }
    text.setSelStart(caret);
    text.setSelLength(0);
    markLocalLeaves();
    // Made apart from the view, so that thousands of leaves go in at once.
    TreeView1->addTopLevelItem(m_root);
    for (const char *key : {"other_urls", "other_images"})
        TreeView1->scrollToItem(m_nodes.value(QLatin1String(key)));
    for (QTreeWidgetItem *folder : {m_root, m_nodes.value(QStringLiteral("url")), m_nodes.value(QStringLiteral("image"))})
        folder->setExpanded(true);
    TreeView1->setCurrentItem(nullptr);
    Command1->setEnabled(true);
    Command1->show();
}

void frmResources::addFixedNodes()
{
    m_root = new QTreeWidgetItem(QStringList{m_document.Caption()});
    setPicture(m_root, QStringLiteral("closed"), QStringLiteral("open"));
    m_nodes.insert(RootKey, m_root);
    for (const FixedNode &fixed : kFixedNodes)
        addNode(fixed.parent ? QLatin1String(fixed.parent) : RootKey, QLatin1String(fixed.key),
                QLatin1String(fixed.text), QStringLiteral("closed"));
}

QTreeWidgetItem *frmResources::addNode(const QString &parentKey, const QString &key, const QString &text,
                                       const QString &picture)
{
    auto *item = new QTreeWidgetItem(m_nodes.value(parentKey), QStringList{text});
    setPicture(item, picture, isFolderPicture(picture) ? QStringLiteral("open") : QString());
    m_nodes.insert(key, item);
    return item;
}

bool frmResources::runScan(Scan scan, LongPass &pass)
{
    static const QString patterns[] = {QStringLiteral("A HREF=\""), QStringLiteral("BACKGROUND=\""),
                                       QStringLiteral("SRC=\"")};
    const QString &pattern = patterns[int(scan)];
    const QString quote = QStringLiteral("\"");
    EditingSurface &text = *m_document.Text;
    if (scan == Scan::Background)
        pass.step(1, 2);
    int position = 0;
    for (;;) {
        const int found = text.Find(pattern, position + 1, -1, EditingSurface::NoHighlight);
        if (found < 0)
            return true;
        const qint64 length = qMax(1, text.TextLength());
        if (scan == Scan::Href)
            pass.step(found, 2 * length);
        else if (scan == Scan::Src)
            pass.step(length + found, 2 * length);
        const int start = found + int(pattern.size());
        // An empty value ("") is found empty rather than running on to the next value's mark.
        const int closing = text.Find(quote, start, -1, EditingSurface::NoHighlight);
        if (closing < 0)
            return true; // unclosed: this kind ends here
        const QString url = text.Mid(start, closing - start);
        if (!url.isEmpty() && !m_nodes.contains(url)) {
            const ResourceKind kind = scan == Scan::Href ? ClassifyUrl(url) : ClassifyImage(url);
            QTreeWidgetItem *leaf = addNode(kind.folder, url, url, kind.picture);
            leaf->setData(0, StartRole, start);
            leaf->setData(0, LengthRole, closing - start);
            m_leaves.append(leaf);
        }
        if (m_workspace.platform.escapePressed())
            return false;
        position = closing;
    }
}

// Local references of a saved page, looked for beside it: a missing file in red, one whose letter
// case differs (found here, not on a case-sensitive server) in dark yellow, each with a tool tip.
void frmResources::markLocalLeaves()
{
    if (m_document.isUntitled())
        return;
    const QString page = m_document.state().path();
    FolderListings listings;
    for (QTreeWidgetItem *leaf : std::as_const(m_leaves)) {
        QString actual;
        switch (CheckLocalReference(page, leaf->text(0), &actual, &listings)) {
        case LocalStatus::NotLocal:
            break;
        case LocalStatus::Found:
            leaf->setData(0, DiskRole, QStringLiteral("found"));
            leaf->setToolTip(0, actual);
            break;
        case LocalStatus::Missing:
            leaf->setData(0, DiskRole, QStringLiteral("missing"));
            leaf->setToolTip(0, QStringLiteral("Not found: ") + actual);
            leaf->setForeground(0, QColor(Qt::red));
            break;
        case LocalStatus::CaseDiffers:
            leaf->setData(0, DiskRole, QStringLiteral("case"));
            leaf->setToolTip(0, QStringLiteral("Found only in other letter case: ") + actual);
            leaf->setForeground(0, QColor(Qt::darkYellow));
            break;
        }
    }
}

QString frmResources::diskStatusOf(const QTreeWidgetItem *leaf)
{
    return leaf->data(0, DiskRole).toString();
}

// A leaf: the view goes and its first reference is selected in the document.
void frmResources::TreeView1_DblClick(QTreeWidgetItem *item)
{
    if (!item || !item->data(0, StartRole).isValid())
        return;
    const int start = item->data(0, StartRole).toInt();
    const int length = item->data(0, LengthRole).toInt();
    QPointer<frmDoc> document(&m_document);
    accept();
    if (document) {
        document->Text->setSelStart(start);
        document->Text->setSelLength(length);
    }
}

void frmResources::GetResourceRegData()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    const QRect available = screen ? screen->availableGeometry() : QRect(0, 0, 800, 600);
    const SettingsStore store;
    WindowPlacement placement = store.resourceWinState(available);
    QRect place = placementRect(placement);
    if (!onSomeScreen(place)) {
        // Stored for a screen that is gone: centred as when nothing is stored.
        place.moveLeft(available.left() + (available.width() - place.width()) / 2);
        place.moveTop(available.top() + int((available.height() - place.height()) * 0.8 / 2));
    }
    resize(place.size());
    move(place.topLeft());
}

void frmResources::SaveResourceRegData()
{
    SettingsStore store;
    store.setResourceWinState({pixelsToTwips(y()), pixelsToTwips(x()), pixelsToTwips(width()), pixelsToTwips(height())});
    store.sync();
}

void frmResources::done(int result)
{
    QDialog::done(result);
    Form_Unload();
}

void frmResources::closeEvent(QCloseEvent *event)
{
    QDialog::closeEvent(event);
    if (event->isAccepted())
        Form_Unload();
}

void frmResources::Form_Unload()
{
    if (std::exchange(m_unloaded, true))
        return;
    SaveResourceRegData();
    hide();
    m_workspace.FocusCurrentDocument();
}

frmResources *ShowResources(Workspace &workspace, QWidget *parent)
{
    frmDoc *document = workspace.AnyDocumentOpen() ? workspace.current() : nullptr;
    if (!document)
        return nullptr;
    auto *form = new frmResources(workspace, *document, parent);
    form->Form_Load();
    form->setWindowModality(Qt::WindowModal);
    form->show();
    return form;
}

} // namespace pw
