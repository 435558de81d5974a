#pragma once

#include <QString>

#include <optional>

namespace pw {

class Workspace;
class frmDoc;

// Inserts one literal at the caret of a document, replacing any selection.
void PlaceSingleTag(Workspace &workspace, frmDoc &document, const QString &text);

// Puts a start and an end tag around the selection (or the caret) of a document, as one undo step,
// and leaves the caret in front of the end tag. On separate lines, each tag carries a line end.
void PlacePairedTag(Workspace &workspace, frmDoc &document, const QString &tag, bool separateLines,
                    const std::optional<QString> &attributes = std::nullopt);

// "Highlighted text will be replaced! Continue?": 6 for Yes, 7 for No.
int ConfirmSelectionReplace(Workspace &workspace);

// Asks ConfirmSelectionReplace when the document has a selection; at No gives the focus back to
// the document and answers false.
bool SelectionMayBeReplaced(Workspace &workspace, frmDoc &document);

} // namespace pw
