#pragma once

#include <QString>

namespace pw {

// Whether a process of this user (other than this one) runs the program file: as its executable,
// or as the script an interpreter was started with. Paths are compared as real paths.
bool ProgramRunning(const QString &program);

} // namespace pw
