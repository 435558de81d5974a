#pragma once

#include <QHash>
#include <QList>
#include <QString>

#include <functional>

class QAction;
class QMenu;
class QObject;
class QWidget;

namespace pw {

class frmDoc;
class frmMDIMain;

// One row of a menu: an item (or a sub-menu, or a separator) with its caption and shortcut.
struct MenuRow {
    int depth = 0;       // 0 for a menu of the bar
    QString name;        // objectName; "-" for a separator; arrays as "mnuHeadings(1)"
    QString caption;
    QString shortcut;
};

// One toolbar button: its key, tip, description and icon; a separator has the key "-".
struct ButtonRow {
    QString key;
    QString toolTip;
    QString description;
    QString themeIcon;
};

// The command table: the rows of both menu bars and both toolbars, and the handler of each
// command by name. Building a menu bar makes every row; an item whose handler is not registered
// stays visible and disabled.
class CommandTable
{
public:
    // Called with the document whose menu was used, or nullptr from the main window's menu.
    using Handler = std::function<void(frmDoc *)>;

    static const QList<MenuRow> &mainMenuRows();
    static const QList<MenuRow> &documentMenuRows();
    static const QList<ButtonRow> &toolbar1Rows();
    static const QList<ButtonRow> &toolbar2Rows();

    void setHandler(const QString &name, Handler handler);
    bool hasHandler(const QString &name) const { return m_handlers.contains(name); }
    void run(const QString &name, frmDoc *document) const;

    // Builds the menus of rows under owner; each item's triggered() runs its handler.
    QList<QMenu *> buildMenus(const QList<MenuRow> &rows, QWidget *owner, frmDoc *document) const;
    // Fills Toolbar1 and Toolbar2 of the main window with their buttons (QActions named by key,
    // children of the main window).
    void buildToolbars(frmMDIMain &main) const;

private:
    QHash<QString, Handler> m_handlers;
};

// Parses the indented menu text ("name|caption|shortcut", two blanks a level).
QList<MenuRow> parseMenuRows(const char *text);

} // namespace pw
