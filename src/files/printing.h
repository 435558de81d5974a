#pragma once

namespace pw {

// mnuFilePrint: the current document's text to the default printer, as counted lines.
void PrintDocument();
// mnuFilePrintSelected: its selected text, each header marked " - Selected text".
void PrintSelection();

} // namespace pw
