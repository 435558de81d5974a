#include "files/previous_lists.h"

#include "core/document_window.h"
#include "core/main_window.h"
#include "core/settings_store.h"

#include <QAction>
#include <QMenu>
#include <QPointer>

#include <array>

namespace pw {

namespace {

struct Item {
    QString entry;
    QString caption;
    bool visible = false;
};
// Items 1 to 10; 0 is unused so that numbers match the menu's.
using Items = std::array<Item, PreviousFileCount + 1>;

// The main window whose master items were filled from the settings' list.
QPointer<frmMDIMain> g_loadedFor;

QString itemName(int i)
{
    return QStringLiteral("mnuFilePrevious(%1)").arg(i);
}

// Looked up in the main window's own menus: a search from the main window itself would find a
// document's copy first, since documents are its children too.
QAction *masterAction(frmMDIMain &main, const QString &name)
{
    for (QMenu *menu : main.mainMenus())
        if (auto *action = menu->findChild<QAction *>(name))
            return action;
    return nullptr;
}

QString menuText(const QString &caption)
{
    QString text = caption;
    return text.replace(QLatin1Char('&'), QLatin1String("&&")); // a path's "&" is no mnemonic
}

Item shownItem(const QString &path)
{
    return {path, ShortenPathForMenu(path, PreviousCaptionLimit), true};
}

Items fromEntries(const QStringList &entries)
{
    Items items;
    for (int i = 1; i <= PreviousFileCount && i <= entries.size(); ++i)
        items[i] = shownItem(entries[i - 1]);
    return items;
}

QStringList visibleEntries(const Items &items)
{
    QStringList entries;
    for (int i = 1; i <= PreviousFileCount; ++i)
        if (items[i].visible)
            entries << items[i].entry;
    return entries;
}

Items readMaster(frmMDIMain &main)
{
    Items items;
    for (int i = 1; i <= PreviousFileCount; ++i) {
        if (QAction *action = masterAction(main, itemName(i)); action && action->isVisible())
            items[i] = shownItem(action->data().toString());
    }
    return items;
}

void copyItem(QAction *from, QAction *to)
{
    to->setData(from->data());
    to->setText(from->text());
    to->setVisible(from->isVisible());
}

void writeMaster(frmMDIMain &main, const Items &items)
{
    for (int i = 1; i <= PreviousFileCount; ++i) {
        if (QAction *action = masterAction(main, itemName(i))) {
            action->setData(items[i].entry);
            action->setText(menuText(items[i].caption));
            action->setVisible(items[i].visible);
        }
    }
    if (QAction *separator = masterAction(main, QStringLiteral("mnuFileSep1")))
        separator->setVisible(!visibleEntries(items).isEmpty());
}

void fillMaster(frmMDIMain &main)
{
    const Items items = fromEntries(PreviousEntries[PreviousKind::Files]);
    writeMaster(main, items);
    PreviousEntries[PreviousKind::Files] = visibleEntries(items);
    g_loadedFor = &main;
}

// The list as it stands: the master items, filled from the settings first if need be, or the
// settings' list alone when there is no main window.
Items currentItems()
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return fromEntries(PreviousEntries[PreviousKind::Files]);
    if (g_loadedFor != main)
        fillMaster(*main);
    return readMaster(*main);
}

// An item with the caption of the one before it is emptied and hidden; this closes what a
// removal left twice.
void tidy(Items &items)
{
    QString last;
    for (int i = 1; i <= PreviousFileCount; ++i) {
        if (items[i].caption == last)
            items[i] = Item{};
        else
            last = items[i].caption;
    }
}

void store(const Items &items)
{
    PreviousEntries[PreviousKind::Files] = visibleEntries(items);
    if (frmMDIMain *main = frmMDIMain::instance()) {
        writeMaster(*main, items);
        SyncDocumentMenus();
    }
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

void AddPreviousFile(const QString &path)
{
    Items items = currentItems();
    const Item added = shownItem(path);
    // A path already on the list leaves its place first, so that moving it up drops nothing.
    // Duplicates are found by caption, so two paths that shorten alike count as one.
    for (int i = 1; i <= PreviousFileCount && items[i].visible; ++i) {
        if (items[i].caption != added.caption)
            continue;
        for (int j = i; j < PreviousFileCount; ++j)
            items[j] = items[j + 1];
        items[PreviousFileCount] = Item{};
        break;
    }
    for (int i = PreviousFileCount - 1; i >= 1; --i)
        if (items[i].visible)
            items[i + 1] = items[i];
    items[1] = added;
    tidy(items);
    store(items);
}

void RemovePreviousFile(int index)
{
    if (index < 1 || index > PreviousFileCount)
        return;
    Items items = currentItems();
    for (int i = index; i < PreviousFileCount; ++i)
        items[i] = items[i + 1];
    items[PreviousFileCount] = Item{}; // so that the tenth entry can go too
    tidy(items);
    store(items);
}

void SyncDocumentMenus()
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return;
    DocumentSlots &slots = main->slots();
    const QList<int> open = slots.openSlots();
    for (int slot : open) {
        frmDoc *document = slots.document(slot);
        for (int i = 0; i <= PreviousFileCount; ++i) {
            const QString name = i == 0 ? QStringLiteral("mnuFileSep1") : itemName(i);
            QAction *from = masterAction(*main, name);
            QAction *to = document->item(name);
            if (from && to)
                copyItem(from, to);
        }
    }
}

void LoadPreviousFileMenus()
{
    frmMDIMain *main = frmMDIMain::instance();
    if (!main)
        return;
    fillMaster(*main);
    SyncDocumentMenus();
}

QString PreviousFile(int index)
{
    if (index < 1 || index > PreviousFileCount)
        return {};
    const Items items = currentItems();
    return items[index].visible ? items[index].entry : QString();
}

} // namespace pw
