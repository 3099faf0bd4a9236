// What only Windows asks for: COM, initialised by the caller.

#include "support/library_test.h"
#include "support/pictures.h"

namespace {

using WindowsJpegTest = test::LibraryTest;

TEST_F(WindowsJpegTest, WithoutComBothCodecsFail) {
    writeFile("colour.jpg", test::testData("colour.jpg"));
    std::string const name = test::libraryPath(path("colour.jpg"));
    EXPECT_EQ(test::errorOf<Zel::JPEGLoaderException_LoadFailed>([&] { Zel::Image{name}; }), "");
    EXPECT_EQ(test::errorOf<Zel::JPEGSaverException_SaveFailed>([&] { Zel::Image(1, 1).save(name); }), "");
}

} // namespace
