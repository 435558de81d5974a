#include "platform/file_handles.h"

#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>

// lock_holder PATH [lock]: holds PATH as a document of another copy of the program would,
// says "locked" (or "error N") and keeps it until its input closes.
int main(int argc, char **argv)
{
    if (argc < 2)
        return 2;
    pw::FileHandles handles;
    pw::ErrorCode error = handles.open(1, QString::fromLocal8Bit(argv[1]));
    if (error == pw::ErrorCode::None && argc > 2 && std::strcmp(argv[2], "lock") == 0)
        error = handles.lock(1);
    if (error == pw::ErrorCode::None)
        std::printf("locked\n");
    else
        std::printf("error %d\n", int(error));
    std::fflush(stdout);
    std::string line;
    while (std::getline(std::cin, line)) {
    }
    return 0;
}
