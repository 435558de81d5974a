#pragma once

#include <QString>

namespace pw {

class Workspace;
class frmDoc;

// A platform colour (red in the low byte) as six upper-case hex digits, red, green, blue, without
// "#"; empty for a value of more than six digits (a system colour).
QString ColorToHtml(qint64 color);

// mnuFontSize(1..7), mnuFontPlusOne, mnuFontMinus: <FONT SIZE="..."> around the selection; size is
// what stands between the quotes ("3", "+1", "-1").
void PlaceFontSize(Workspace &workspace, frmDoc &document, const QString &size);
// mnuFontColor: the colour dialog, starting from the colour it last held; cancelling places nothing.
void mnuFontColor_Click(Workspace &workspace, frmDoc &document);
// mnuFontFace: the font dialog; only the name is used.
void mnuFontFace_Click(Workspace &workspace, frmDoc &document);
// mnuHTMLComment: "<!-- ", the selection, " -->" in the comment font; without a selection the caret
// lands where the comment is typed.
void mnuHTMLComment_Click(frmDoc &document);

} // namespace pw
