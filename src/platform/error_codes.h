#pragma once

namespace pw {

// The error numbers the file and dialog layers report; callers test them after the fact.
enum class ErrorCode : int {
    None = 0,
    FileNotFound = 53,
    PermissionDenied = 70,
    PathFileAccess = 75,
    InvalidPropertyValue = 380,
    DuplicateKey = 3022,
    Cancel = 32755,
};

} // namespace pw
