#pragma once

#include <QList>
#include <QObject>
#include <QPointer>

#include <array>

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
    // The encoding items mark the one the followed document's file is in; a reopen answered No
    // leaves the encoding, but the item's own click moved the mark.
    void showEncoding();
    void setEnabled(QAction *action, bool enabled) const;

    // The followed document's items that follow its state, found once when it comes to the front.
    enum Item { FileSave, FilePrintSelected, EditCopy, EditCut, EditPaste, EditUndo, FileEncoding, HTMLUcase, ItemCount };

    frmMDIMain &m_main;
    Workspace &m_workspace;
    const CommandTable &m_commands;
    QPointer<frmDoc> m_followed;
    std::array<QAction *, ItemCount> m_items{};
    // The toolbar buttons that follow the document, found once: the toolbars stand before this.
    QAction *m_save, *m_copy, *m_cut, *m_paste, *m_undo, *m_spell;
    QList<QMetaObject::Connection> m_connections;
    bool m_clipboardHasText = false;
    bool m_spellAvailable = true;
};

} // namespace pw
