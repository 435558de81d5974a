#pragma once

#include "core/document_slots.h"
#include "core/font_class.h"
#include "core/function_key_records.h"
#include "core/options.h"
#include "core/remembered_lists.h"
#include "platform/common_dialog.h"

#include <QObject>
#include <QStringList>

class QMdiArea;

namespace pw {

class EditingSurface;
class Platform;
class StatusPresenter;

// What an operation works with besides its document: the slots, the options, the class fonts, the
// function keys, the remembered lists and paths, the shared dialog, the status line, the scratch
// surface and the platform. One per main window; handed to the operations, never looked up. Every
// first-run value comes from the settings registry.
class Workspace : public QObject
{
    Q_OBJECT

public:
    Workspace(Platform &platform, StatusPresenter &status, EditingSurface &scratch, QMdiArea &area);

    Platform &platform;
    StatusPresenter &status;
    EditingSurface &scratch; // the main window's hidden surface: fragments are composed on it
    Options options;
    ClassFonts fonts;
    FunctionKeyTable functionKeys;
    PreviousLists previous;
    HistoryPaths history;
    CommonDialog CMDialog1;
    qint32 backColor;
    // The answer to "Highlight open documents?"; false at the start.
    bool HighlightOpenDocuments = false;
    // Words of the spell checker's Ignore All, kept for later checks in the same run.
    QStringList IgnoreList;
    DocumentSlots slots;

    // The current document (CurrentDocument's window), or none.
    frmDoc *current() const { return slots.current(); }
    // True when any document is open; otherwise clears the status text.
    bool AnyDocumentOpen();
    // The focus back to the document in front, when one is open (a dialog or a pass ends).
    void FocusCurrentDocument();

    // A message box titled AppTitle.
    int MsgBox(const QString &text, int style);

    // Whether the markup tools are put away (no document, or the focus in the site map).
    bool markupToolsHidden() const { return m_markupToolsHidden; }
    void SetMarkupToolsHidden(bool hide);

    // The previous-file list, newest first; the menus follow it.
    const QStringList &previousFiles() const { return previous[PreviousKind::Files]; }
    void setPreviousFiles(const QStringList &entries);

Q_SIGNALS:
    void markupToolsChanged(bool hidden);
    void previousFilesChanged();

private:
    bool m_markupToolsHidden = false;
};

} // namespace pw
