#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <zel/zel.h>

namespace {

TEST(ExceptionTest, EveryKindWritesItsMessage) {
    EXPECT_STREQ(Zel::Exception_ArchiveVersionInvalid("a.bva", -1, 44).getError(),
                 "Archive \"a.bva\" has invalid version -1 (expected 44)");
    EXPECT_STREQ(Zel::Exception_ArchiveCorrupt("a").getError(), "Archive \"a\" is corrupt");
    EXPECT_STREQ(Zel::FileException_OpenFailed("a").getError(), "Failed to open file \"a\"");
    EXPECT_STREQ(Zel::FileException_GetSizeFailed("a").getError(), "Failed to determine size of file \"a\"");
    EXPECT_STREQ(Zel::FileException_ReadError("a").getError(), "Read error in \"a\"");
    EXPECT_STREQ(Zel::FileException_WriteError("a").getError(), "Write error in \"a\"");
    EXPECT_STREQ(Zel::FileException_SeekError("a").getError(), "Seek error in \"a\"");
    EXPECT_STREQ(Zel::FileException_DirectoryNotFound("a").getError(), "Directory \"a\" not found");
    EXPECT_STREQ(Zel::FileException_GetCurrentDirFailed().getError(),
                 "Failed to determine current directory");
    EXPECT_STREQ(Zel::FileException_GetStartupDirFailed().getError(),
                 "Failed to determine startup directory");
    EXPECT_STREQ(Zel::FileException_GetTempNameFailed("a%u").getError(),
                 "Failed to find temporary filename with pattern \"a%u\"");
    EXPECT_STREQ(Zel::FileException_NotAllowedToWriteArchivedFile("a").getError(),
                 "Not allowed to write archived file a");
    EXPECT_STREQ(Zel::FileException_FileCorrupted("a").getError(), "File \"a\" is corrupted");
}

TEST(ExceptionTest, ADefaultMessageIsEmpty) {
    EXPECT_STREQ(Zel::Exception().getError(), "");
    EXPECT_STREQ(Zel::Exception_ArchiveVersionInvalid().getError(), "");
    EXPECT_STREQ(Zel::FileException_OpenFailed().getError(), "");
}

TEST(ExceptionTest, FormattingKeepsAtMost1023Characters) {
    Zel::Exception exception;
    for (std::size_t length : {1022u, 1023u, 1024u, 5000u}) {
        exception.setError("%s", std::string(length, 'x').c_str());
        EXPECT_EQ(exception.getError(), std::string(std::min<std::size_t>(length, 1023), 'x'));
    }
    exception.setError("%d%%", 7);
    EXPECT_STREQ(exception.getError(), "7%");
}

TEST(ExceptionTest, ACopyOutlivesItsSource) {
    Zel::Exception copy;
    {
        Zel::FileException_ReadError const source("gone.txt");
        copy = source;
    }
    EXPECT_STREQ(Zel::Exception(copy).getError(), "Read error in \"gone.txt\"");
}

TEST(ExceptionTest, ArchiveExceptionsAreNoFileExceptions) {
    static_assert(std::is_base_of_v<Zel::FileException, Zel::FileException_SeekError>);
    static_assert(std::is_base_of_v<Zel::Exception, Zel::Exception_ArchiveCorrupt>);
    static_assert(!std::is_base_of_v<Zel::FileException, Zel::Exception_ArchiveCorrupt>);
    static_assert(!std::is_base_of_v<Zel::FileException, Zel::Exception_ArchiveVersionInvalid>);
    static_assert(sizeof(Zel::FileException_SeekError) == sizeof(Zel::Exception), "leaves add no data");
    // Across the library's border, too.
    EXPECT_THROW(Zel::File("no such file", Zel::File::READ), Zel::FileException);
}

} // namespace
