#include "support/library_test.h"

#include <string_view>

namespace {

class MemoryFileTest : public test::LibraryTest {
protected:
    static std::string_view contentOf(Zel::MemoryFile const& file) {
        return {static_cast<char const*>(file.getAddress()), static_cast<std::size_t>(file.getSize())};
    }
};

TEST_F(MemoryFileTest, HoldsTheWholeFilePlain) {
    writeFile("loose", "loose bytes");
    writeFile("empty", "");
    Zel::Archive const archive(packArchive("a.bva", {{"packed", "packed bytes"}}));
    EXPECT_EQ(contentOf(Zel::MemoryFile("loose")), "loose bytes");
    EXPECT_EQ(contentOf(Zel::MemoryFile("PACKED")), "packed bytes");
    EXPECT_EQ(Zel::MemoryFile("empty").getAddress(), nullptr);
    EXPECT_EQ(Zel::MemoryFile("empty").getSize(), 0);
}

TEST_F(MemoryFileTest, PassesOnWhatOpeningThrows) {
    EXPECT_EQ(test::errorOf<Zel::FileException_OpenFailed>([] { Zel::MemoryFile("Missing"); }),
              "Failed to open file \"Missing\"");
    EXPECT_THROW(Zel::MemoryFile("q:/../.."), Zel::FileException_DirectoryNotFound);
}

TEST_F(MemoryFileTest, ACopySharesTheBlock) {
    writeFile("loose", "bytes");
    Zel::MemoryFile const file("loose");
    alignas(Zel::MemoryFile) std::byte storage[sizeof(Zel::MemoryFile)];
    auto const* const copy = new (storage) Zel::MemoryFile(file); // not destroyed: it shares the block
    EXPECT_EQ(copy->getAddress(), file.getAddress());
    EXPECT_EQ(copy->getSize(), 5);
}

} // namespace
