#pragma once

#include <QString>

#include <optional>

namespace pw {

// Inserts one literal at the caret of the current document, replacing any selection.
void PlaceSingleTag(const QString &text);

// Puts a start and an end tag around the selection (or the caret) of the current document and
// leaves the caret in front of the end tag. On separate lines, each tag carries a line end.
void PlacePairedTag(const QString &tag, bool separateLines,
                    const std::optional<QString> &attributes = std::nullopt);

// "Highlighted text will be replaced! Continue?": 6 for Yes, 7 for No.
int ConfirmSelectionReplace();

// Asks ConfirmSelectionReplace when the current document has a selection; at No gives the focus
// back to the document and answers false.
bool SelectionMayBeReplaced();

} // namespace pw
