#pragma once

namespace pw {

class Workspace;
class frmDoc;

// Printed lines are cut hard at this many characters; a page holds the header, a blank line and
// the lines up to this count.
constexpr int PrintLineLength = 80;
constexpr int PrintPageLimit = 60;

// mnuFilePrint: a document's text to the default printer, as counted lines; where no printer is
// set up, the user may have the same pages written to a PDF file.
void PrintDocument(Workspace &workspace, frmDoc &document);
// mnuFilePrintSelected: its selected text, each header marked " - Selected text".
void PrintSelection(Workspace &workspace, frmDoc &document);

} // namespace pw
