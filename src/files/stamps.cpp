#include "files/stamps.h"

namespace pw {

void PlaceStamp(StampKind) {}
void StampDocument(int) {}
void StampOnClose(int) {}

} // namespace pw
