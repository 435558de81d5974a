#include "files/save_document.h"

namespace pw {

bool SaveDocument() { return false; }
bool SaveDocumentAs() { return false; }
QString ForceExtension(const QString &fileName, int, QChar) { return fileName; }
void AddToSiteMap(const QString &) {}
void Form_QueryUnload(frmDoc &, bool *, int) {}

} // namespace pw
