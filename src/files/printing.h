#pragma once

namespace pw {

// Printed lines are cut hard at this many characters; a page holds the header, a blank line and
// the lines up to this count.
constexpr int PrintLineLength = 80;
constexpr int PrintPageLimit = 60;

// mnuFilePrint: the current document's text to the default printer, as counted lines.
void PrintDocument();
// mnuFilePrintSelected: its selected text, each header marked " - Selected text".
void PrintSelection();

} // namespace pw
