#pragma once

#include "platform/platform.h"

namespace pw {

// "No printer is set up on this computer."
QString NoPrinterText();

// The default printer as lines drawn in its own font, one page after another. Null with *error set
// when it can't be opened.
std::unique_ptr<LineSink> openDefaultPrinter(const QString &documentName, QString *error);

// The same lines and pages written to a PDF file at path, for where no printer is set up. Null with
// *error saying why when the file can't be written.
std::unique_ptr<LineSink> openPdfFile(const QString &path, const QString &documentName, QString *error);

} // namespace pw
