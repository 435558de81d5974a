#pragma once

#include "core/document_slots.h"
#include "core/options.h"
#include "platform/common_dialog.h"

#include <QMainWindow>
#include <QPointer>

class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QProgressBar;
class QTimer;
class QToolBar;

namespace pw {

class EditingSurface;
class frmDoc;

// The main window: the documents' area, the two toolbars, the status bar, the progress strip, the
// shared dialog, the autosave timer and the hidden scratch surface. There is one at a time, reached
// through instance(); the controls are named as the rest of the program addresses them.
class frmMDIMain : public QMainWindow
{
    Q_OBJECT

public:
    explicit frmMDIMain(QWidget *parent = nullptr);
    ~frmMDIMain() override;

    static frmMDIMain *instance();

    QMdiArea *mdiArea = nullptr;
    QToolBar *Toolbar1 = nullptr;
    QToolBar *Toolbar2 = nullptr;
    QStatusBar *StatusBar1 = nullptr;
    QLabel *Panel1 = nullptr; // messages
    QLabel *Panel2 = nullptr; // line
    QLabel *Panel3 = nullptr; // size
    QWidget *Picture1 = nullptr;
    QProgressBar *ProgressBar = nullptr;
    EditingSurface *Text = nullptr; // the scratch surface, never shown
    CommonDialog CMDialog1;
    QTimer *tmrAutoSave = nullptr;

    DocumentSlots &slots() { return m_slots; }
    Options &options() { return m_options; }

    // A toolbar button by key ("imgFileSave"), or nullptr before the toolbars are built.
    QAction *button(const QString &key) const;
    void setButtonEnabled(const QString &key, bool enabled);

    // The main window's own menus, shown while no document is open.
    void setMainMenus(const QList<QMenu *> &menus);
    const QList<QMenu *> &mainMenus() const { return m_mainMenus; }
    // Shows the menus of the active document, or the main window's own when none is open.
    void showMenusFor(frmDoc *document);

    frmDoc *activeDocument() const;

    bool markupToolsHidden() const { return m_markupToolsHidden; }
    // Shows or hides what is useless with no document: Toolbar1's buttons from the fourth to the
    // fourth from last, separators counted, and the whole of Toolbar2.
    void SetMarkupToolsHidden(bool hide);

Q_SIGNALS:
    // A document window was made for a slot, before its Form_Load: the place to build its menus and
    // connect its events.
    void documentWindowCreated(pw::frmDoc *document);
    // Asked when the main window is about to close; a handler may set *cancel.
    void queryUnload(bool *cancel);
    void unloaded();

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    void onSubWindowActivated(QMdiSubWindow *window);

    DocumentSlots m_slots;
    Options m_options;
    QList<QMenu *> m_mainMenus;
    QPointer<frmDoc> m_menusOf;
    bool m_markupToolsHidden = false;
};

inline void SetMarkupToolsHidden(bool hide)
{
    if (frmMDIMain *main = frmMDIMain::instance())
        main->SetMarkupToolsHidden(hide);
}

// The document the commands act on (CurrentDocument's window); none without a main window or an
// open document.
frmDoc *CurrentDocumentWindow();

} // namespace pw
