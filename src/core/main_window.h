#pragma once

#include <QMainWindow>
#include <QPointer>

#include <memory>

class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QProgressBar;
class QTimer;
class QToolBar;

namespace pw {

class EditingSurface;
class Platform;
class StatusPresenter;
class Workspace;
class frmDoc;

// The main window, a shell: the documents' area, the two toolbars, the status bar, the progress
// strip, the autosave timer and the hidden scratch surface. The controls are named as the rest of
// the program addresses them; what the program knows lives in the workspace it holds.
class frmMDIMain : public QMainWindow
{
    Q_OBJECT

public:
    explicit frmMDIMain(Platform &platform, QWidget *parent = nullptr);
    ~frmMDIMain() override;

    QMdiArea *mdiArea = nullptr;
    QToolBar *Toolbar1 = nullptr;
    QToolBar *Toolbar2 = nullptr;
    QStatusBar *StatusBar1 = nullptr;
    QLabel *Panel1 = nullptr; // messages
    QLabel *Panel2 = nullptr; // line
    QLabel *Panel3 = nullptr; // size
    QLabel *Panel4 = nullptr; // the encoding of the file in front
    QWidget *Picture1 = nullptr;
    QProgressBar *ProgressBar = nullptr;
    EditingSurface *Text = nullptr; // the scratch surface, never shown
    QTimer *tmrAutoSave = nullptr;

    Workspace &workspace() { return *m_workspace; }

    // A toolbar button by key ("imgFileSave"), or nullptr before the toolbars are built.
    QAction *button(const QString &key) const;

    // The main window's own menus, shown while no document is open.
    void setMainMenus(const QList<QMenu *> &menus);
    const QList<QMenu *> &mainMenus() const { return m_mainMenus; }
    // Shows the menus of the active document, or the main window's own when none is open.
    void showMenusFor(frmDoc *document);

    frmDoc *activeDocument() const;

    // Shows the window again after it was minimised, in the state it had before: a window that was
    // maximised comes back maximised.
    void restoreFromMinimized();

Q_SIGNALS:
    // Asked when the main window is about to close; a handler may set *cancel.
    void queryUnload(bool *cancel);
    void unloaded();

protected:
    void closeEvent(QCloseEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void onSubWindowActivated(QMdiSubWindow *window);

    std::unique_ptr<StatusPresenter> m_status;
    std::unique_ptr<Workspace> m_workspace;
    QList<QMenu *> m_mainMenus;
    QPointer<frmDoc> m_menusOf;
    Qt::WindowStates m_stateBeforeMinimize;
    bool m_unloaded = false;
};

} // namespace pw
