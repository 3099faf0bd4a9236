// Names that an archive may give its entries, and that must not be followed.
#pragma once

#include "support/host.h"

#include <string>
#include <vector>

namespace test {

/// Names under which nothing is extracted on this host.
inline std::vector<std::string> hostileNames() {
    std::vector<std::string> names = {"..\\up",        "..",
                                      "a\\..\\..\\up", "a/../../up",
                                      "a\\..",         "..\\..\\..\\up",
                                      "c:\\drive",     "z:/drive",
                                      "z:drive",       "a\\c:\\b",
                                      "a:stream",      "\\leading",
                                      "/leading",      "\\\\server\\share\\up",
                                      "//server/up",   "a\\",
                                      "a\\."};
    names.emplace_back("zero\0byte", 9);
    names.emplace_back("\0", 1);
    if (!hasReservedNames())
        return names;
    for (char const* name : {"nul", "CON", "aux.txt", "prn .txt", "a\\com1", "lpt9.x\\a", "com\xB9", "conin$",
                             ".. \\up", "...\\up", "a\\ "})
        names.emplace_back(name);
    return names;
}

/// Names like them that every host takes as they are.
inline std::vector<std::string> harmlessNames() {
    return {"..a", "a..b", "...a\\b", "com",  "com10", "null",   "console.txt",
            "a~1", " a",   "a\\\\b",  "a//b", ".\\a",  "a\\.\\b"};
}

} // namespace test
