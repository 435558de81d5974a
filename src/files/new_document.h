#pragma once

#include <QString>

namespace pw {

class frmDoc;

// The skeleton of an HTML 3.2 page that new documents start with.
QString BlankTemplate();

// Makes an empty document in a new window, with the blank template when that option is on.
frmDoc *NewDocument();
// Writes the template into a document and puts the caret between the title tags.
void FillBlankTemplate(frmDoc &window);

} // namespace pw
