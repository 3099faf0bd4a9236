// What the tests of temporary files share: a temporary root without anything in it, before and after.
#pragma once

#include "support/library_test.h"

#include <algorithm>

namespace test {

class TemporaryTest : public LibraryTest {
protected:
    TemporaryTest() { removeTemporaryRoot(); }
    ~TemporaryTest() override { removeTemporaryRoot(); }

    static fs::path temporaryRoot() { return commonDataFolder() / "Brisvane" / "temp"; }

    /// The file or directory that the library has told below the temporary root.
    static fs::path onDisk(std::string const& libraryPath) {
        std::string const root = "\\Brisvane\\temp\\";
        std::size_t const at = libraryPath.find(root);
        EXPECT_NE(at, std::string::npos) << libraryPath;
        std::string below = libraryPath.substr(at + root.size());
        std::replace(below.begin(), below.end(), '\\', '/');
        return temporaryRoot() / below;
    }

    /// What extracting makes of a name.
    static std::string extracted(bool (*extract)(std::string& name), std::string name) {
        EXPECT_TRUE(extract(name)) << name;
        return name;
    }

private:
    static void removeTemporaryRoot() { fs::remove_all(temporaryRoot()); }
};

} // namespace test
