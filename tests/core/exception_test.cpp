#include <gtest/gtest.h>
#include <string>
#include <type_traits>
#include <utility>
#include <zel/zel.h>

namespace {

// What is made of one thing alone is made of it silently, too.
template <class... Exceptions>
constexpr bool kMadeOfText = (std::is_convertible_v<char const*, Exceptions> && ...);
static_assert(kMadeOfText<Zel::Exception_ArchiveCorrupt, Zel::FileException_OpenFailed,
                          Zel::FileException_GetSizeFailed, Zel::FileException_ReadError,
                          Zel::FileException_WriteError, Zel::FileException_SeekError,
                          Zel::FileException_DirectoryNotFound, Zel::FileException_GetTempNameFailed,
                          Zel::FileException_NotAllowedToWriteArchivedFile, Zel::FileException_FileCorrupted,
                          Zel::ImageException_UnknownImageFormat, Zel::TGALoaderException_NoPalette,
                          Zel::PCXLoaderException_NotPCXFile, Zel::ScriptException_UnexpectedEndOfFile>);
static_assert(std::is_convertible_v<std::string, Zel::Archive>);
static_assert(std::is_convertible_v<std::string, Zel::Image>);
static_assert(std::is_convertible_v<std::string, Zel::MemoryFile>);
static_assert(std::is_convertible_v<Zel::Timer::Type, Zel::Timer>);
static_assert(!std::is_convertible_v<std::string, Zel::Path> && !std::is_convertible_v<int, Zel::Image>);

static_assert(std::is_base_of_v<Zel::FileException, Zel::FileException_SeekError>);
static_assert(std::is_base_of_v<Zel::Exception, Zel::Exception_ArchiveCorrupt>);
static_assert(!std::is_base_of_v<Zel::FileException, Zel::Exception_ArchiveCorrupt>);
static_assert(!std::is_base_of_v<Zel::FileException, Zel::Exception_ArchiveVersionInvalid>);
static_assert(sizeof(Zel::FileException_SeekError) == sizeof(Zel::Exception), "leaves add no data");

TEST(ExceptionTest, KindsThatHardlyAnythingThrowsHaveTheirMessages) {
    std::pair<Zel::Exception, char const*> const cases[] = {
        {Zel::Exception(), ""},
        {Zel::Exception_ArchiveVersionInvalid(), ""},
        {Zel::FileException_OpenFailed(), ""},
        {Zel::FileException_GetSizeFailed("a"), "Failed to determine size of file \"a\""},
        {Zel::FileException_GetCurrentDirFailed(), "Failed to determine current directory"},
        {Zel::FileException_GetStartupDirFailed(), "Failed to determine startup directory"},
        {Zel::FileException_NotAllowedToWriteArchivedFile("a"), "Not allowed to write archived file a"},
        {Zel::Exception_NoTimerHardware(), "Timer hardware not found."},
        {Zel::Exception_SystemTimeConversionFailed(), "System time conversion failed."},
        {Zel::TGALoaderException_BadColormapStart("a"), "Bad colormap start value in \"a\""},
    };
    for (auto const& [exception, message] : cases)
        EXPECT_STREQ(exception.getError(), message);
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

} // namespace
