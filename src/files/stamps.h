#pragma once

#include <QDateTime>
#include <QString>

namespace pw {

class Workspace;
class frmDoc;

// The four marker pairs whose contents are renewed with the date or time when a saved
// document closes.
enum class StampKind { LongDate, ShortDate, LongTime, ShortTime };

// "<!-- TPWLDATE -->" and "<!-- /TPWLDATE -->" and their twins.
QString StampStartMarker(StampKind kind);
QString StampEndMarker(StampKind kind);
// The value a pair is renewed with: the user's locale's long or short date or time format, with
// the time-zone field dropped.
QString StampValue(StampKind kind, const QDateTime &when);

// mnuAccretionLDate and its three twins: an empty marker pair at the caret, in the comment class.
void PlaceStamp(Workspace &workspace, frmDoc &document, StampKind kind);
// mnuEditPasteDate, mnuEditPasteTime: the long date or time at the caret, over a selection only
// after the question; in the font at the caret.
void PasteStamp(Workspace &workspace, frmDoc &document, StampKind kind);
// The closing pass over a document; rewrites its file when a stamp changed.
void StampDocument(Workspace &workspace, frmDoc &document);
// StampDocument when the closing document was saved and is clean and titled.
void StampOnClose(Workspace &workspace, frmDoc &document);

} // namespace pw
