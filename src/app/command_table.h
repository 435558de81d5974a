#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <functional>

class QAction;
class QMenu;
class QObject;
class QWidget;

namespace pw {

class Options;
class frmDoc;
class frmMDIMain;

// One row of a menu: an item (or a sub-menu, or a separator) with its caption and shortcut.
struct MenuRow {
    int depth = 0;       // 0 for a menu of the bar
    QString name;        // objectName; "-" for a separator; arrays as "mnuHeadings(1)"
    QString caption;
    QString shortcut;
};

// The toolbar buttons. Their objectNames are their keys ("imgFileSave").
enum class Button {
    FileNew, FileOpen, FileSave, EditCopy, EditCut, EditPaste, Undo, Spell, Find, Replace, Help, Exit,
    Resources, Body, HyperLink, AnchorName, Image, Char, List, Table, Frame, Form, Test,
};
constexpr int ButtonCount = int(Button::Test) + 1;
QString buttonKey(Button button);

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
    // Called with the document whose menu was used, the current document for a toolbar button, or
    // nullptr from the main window's menu and when no document is open.
    using Handler = std::function<void(frmDoc *)>;

    static const QList<MenuRow> &mainMenuRows();
    static const QList<MenuRow> &documentMenuRows();
    static const QList<ButtonRow> &toolbar1Rows();
    static const QList<ButtonRow> &toolbar2Rows();

    void setHandler(const QString &name, Handler handler);
    // A handler for a command that acts on a document; without one it does nothing.
    void setDocumentHandler(const QString &name, std::function<void(frmDoc &)> handler);
    bool hasHandler(const QString &name) const { return m_handlers.contains(name); }
    QStringList handlerNames() const { return m_handlers.keys(); }
    void run(const QString &name, frmDoc *document) const;

    // Builds the menus of rows under owner; each item's triggered() runs its handler.
    // Option items show the shared state of options.
    QList<QMenu *> buildMenus(const QList<MenuRow> &rows, QWidget *owner, frmDoc *document, Options &options) const;
    // Fills Toolbar1 and Toolbar2 of the main window with their buttons (QActions named by key,
    // children of the main window). A click first gives the focus to the current document.
    void buildToolbars(frmMDIMain &main) const;
    static QAction *button(const frmMDIMain &main, Button button);

private:
    QHash<QString, Handler> m_handlers;
};

// Parses the indented menu text ("name|caption|shortcut", two blanks a level).
QList<MenuRow> parseMenuRows(const char *text);

} // namespace pw
