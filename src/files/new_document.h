#pragma once

#include <QString>

namespace pw {

class Workspace;
class frmDoc;

// The skeleton of an HTML 3.2 page that new documents start with.
QString BlankTemplate();

// Makes an empty document in a new window, with the blank template when that option is on.
frmDoc *NewDocument(Workspace &workspace);
// Writes the template into a document and puts the caret between the title tags.
void FillBlankTemplate(Workspace &workspace, frmDoc &document);

} // namespace pw
