#pragma once

#include "core/document_state.h"

#include <QMdiSubWindow>

class QLineEdit;
class QMenu;

namespace pw {

class EditingSurface;
class Workspace;

// One open document: its surface, its own menus, its state, and the hidden box of the browser
// test. The title is the caption with "*" while the document is changed. The window raises its
// events as signals; the program's handlers are connected from outside.
class frmDoc : public QMdiSubWindow
{
    Q_OBJECT

public:
    frmDoc(Workspace &workspace, int slot, const QString &untitledName);
    ~frmDoc() override;

    EditingSurface *Text = nullptr;
    QLineEdit *Text1 = nullptr; // hidden
    QString Tag;                // the slot number as text
    qint16 LastKeyAscii = 0;

    DocumentState &state() { return m_state; }
    const DocumentState &state() const { return m_state; }
    int slot() const { return Tag.toInt(); }
    QString Caption() const { return m_state.caption(); }
    bool isUntitled() const { return m_state.isUntitled(); }

    // The document's menu bar, shown in the main window while this document is active.
    QList<QMenu *> &menus() { return m_menus; }
    QMenu *menu(const QString &name) const;
    QAction *item(const QString &name) const;

    void Form_Load();
    void Form_Activate();
    // Closes the window without asking (after a failed open).
    void unloadQuietly();
    // Closes the window because the main window closes: the question about changes offers no
    // Cancel, and the window goes whatever the answer.
    void unloadForShutdown();

    // Why a window closes, as QueryUnload reports it.
    static constexpr int UnloadByUser = 0;
    static constexpr int UnloadByMainWindow = 4;

Q_SIGNALS:
    // Before closing: a handler may set *cancel. unloadMode 0 is the user's close, 1 the program's.
    void QueryUnload(bool *cancel, int unloadMode);
    // After the slot is free: release the file, the closing stamp pass.
    void Unloaded();
    void Activated();
    // F1 to F12 in the document, before its surface sees them (keyCode 0x70 to 0x7B; shift bits 1
    // shift, 2 control, 4 alt). A handler that sets *keyCode to 0 swallows the key.
    void KeyDown(int *keyCode, int shift);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void closeEvent(QCloseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    void Form_Unload();
    void showTitle();

    Workspace &m_workspace;
    DocumentState m_state;
    QList<QMenu *> m_menus;
    bool m_quiet = false;
    int m_unloadMode = UnloadByUser;
    bool m_unloaded = false;
};

} // namespace pw
