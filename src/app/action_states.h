#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

class QAction;

namespace pw {

class CommandTable;
class Workspace;
class frmDoc;
class frmMDIMain;

// The one owner of what is enabled and shown: every document-dependent menu item and toolbar
// button, the markup tools, and what the status panels follow. It follows the current document's
// selection, undo, Dirty and name, the clipboard, and documents opening and closing; no operation
// switches a button or writes a panel by itself.
class ActionStates : public QObject
{
    Q_OBJECT

public:
    ActionStates(frmMDIMain &main, Workspace &workspace, const CommandTable &commands);

    // Sets every state from the current document (or from none).
    void updateActions();
    // Without a word store the spell checker stays off for the whole run.
    void setSpellAvailable(bool available);

private:
    void follow(frmDoc *document);
    void onDocumentClosed();
    void showToolbars();
    void setEnabled(QAction *action, bool enabled) const;

    frmMDIMain &m_main;
    Workspace &m_workspace;
    const CommandTable &m_commands;
    QPointer<frmDoc> m_followed;
    QList<QMetaObject::Connection> m_connections;
    bool m_clipboardHasText = false;
    bool m_spellAvailable = true;
};

} // namespace pw
