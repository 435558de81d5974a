#include "files/open_document.h"

#include <QFileInfo>

namespace pw {

QString LongPathOf(const QString &path) { return QFileInfo(path).absoluteFilePath(); }
frmDoc *OpenFromDialog() { return nullptr; }
frmDoc *OpenFromCommandLine(const QString &, const std::function<void()> &) { return nullptr; }
frmDoc *OpenFromHandOver(const QString &) { return nullptr; }
frmDoc *OpenFromSiteMap(const QString &) { return nullptr; }
frmDoc *OpenPrevious(int) { return nullptr; }
frmDoc *RecoverFile(const QString &) { return nullptr; }
void ImportFile() {}
void FindLocalNames(int) {}

} // namespace pw
