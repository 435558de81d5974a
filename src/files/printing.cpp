#include "files/printing.h"

namespace pw {

void PrintDocument() {}
void PrintSelection() {}

} // namespace pw
