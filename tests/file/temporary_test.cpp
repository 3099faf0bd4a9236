// Temporary directories and names.

#include "support/temporary_test.h"
#include "support/clock.h"

#include <gmock/gmock.h>

namespace {

namespace fs = std::filesystem;
using namespace std::string_literals;
using Zel::File;

using test::TemporaryTest;

TEST_F(TemporaryTest, TemporaryDirectoriesAreNewEmptyAndRecorded) {
    std::string first;
    std::string second;
    {
        test::StoppedClock const clock;
        first = File::getTmpDir();
        second = File::getTmpDir();
    }
    EXPECT_THAT(File::sm_extractedFiles, testing::ElementsAre(first, second));
    // The time of day, its low 32 bits first, and the performance counter alike.
    EXPECT_TRUE(first.ends_with("\\Brisvane\\temp\\tmp_1_598810624_27114231_2764472320_232830\\")) << first;
    EXPECT_TRUE(second.ends_with("\\Brisvane\\temp\\tmp_2_598810624_27114231_2764472320_232830\\")) << second;
    int count = 0;
    for (auto const& entry : fs::directory_iterator(temporaryRoot())) {
        ++count;
        EXPECT_TRUE(fs::is_empty(entry.path()));
        EXPECT_TRUE(test::isPrivate(entry.path()));
    }
    EXPECT_EQ(count, 2);
    // The path is one that the library's own files can use.
    { File(first + "made.txt", File::WRITE).write("x", 1); }
    EXPECT_EQ(test::readThroughLibrary(first + "made.txt"), "x");
}

TEST_F(TemporaryTest, NumberedDirectoriesTakeTheFirstFreeNumberUpTo50) {
    File::setUniquePathNames(0);
    fs::create_directories(temporaryRoot() / "tmp_1");
    std::string const second = File::getTmpDir();
    EXPECT_TRUE(second.ends_with("\\Brisvane\\temp\\tmp_2\\")) << second;
    for (int number = 3; number <= 50; ++number)
        EXPECT_TRUE(File::getTmpDir().ends_with("\\tmp_" + std::to_string(number) + "\\"));
    EXPECT_EQ(File::getTmpDir(), "");
    EXPECT_EQ(File::sm_extractedFiles.size(), 49u) << "a failure records nothing";
}

TEST_F(TemporaryTest, TempNamesTakeTheFirstFreeNumber) {
    fs::current_path(path("."));
    struct {
        char const* pattern;
        char const* existing;
        char const* expected;
    } const cases[] = {
        {"new%u.txt", "", "new0.txt"},
        {"a%u.txt", "a0.txt", "a1.txt"},
        {"b%03d", "b000", "b001"},
        {"100%%_%x", "100%_0", "100%_1"},
        {"c%-3d|", "", "c0  |"},
        {"free.txt", "", "free.txt"},
        {"100%%", "", "100%"},
        {"d%i", "d0", "d1"},
        {"e%.3u", "", "e000"},
        {"f%+05d", "", "f+0000"},
        {"g%5.3i|", "", "g  000|"},
        {"h%05.3u", "", "h  000"}, // a precision makes the 0 a mere flag
        {"i% u", "", "i0"},
        {"j% d", "", "j 0"}, // what has no sign shows none
        {"k%#.0o", "", "k0"},
        {"l%#x", "l0", "l0x1"},
        {"m%.0u", "m", "m1"},
        {"n%-#6Xz", "n0     z", "n0X1   z"},
    };
    for (auto const& [pattern, existing, expected] : cases) {
        if (*existing != '\0')
            writeFile(existing, "x");
        EXPECT_EQ(File::getTempName(pattern), expected);
    }
}

TEST_F(TemporaryTest, TempNamesCountInEveryNotation) {
    fs::current_path(path("."));
    std::pair<std::string, std::string> const twelfth[] = {
        {"a%u", "a12"},   {"b%%%x", "b%c"},     {"c%#06X", "c0X000C"}, {"d%o", "d14"},
        {"e%#o", "e014"}, {"f%-4oz", "f14  z"}, {"g%+.3i", "g+012"}};
    for (auto const& [pattern, expected] : twelfth) {
        for (int number = 0; number < 12; ++number)
            writeFile(File::getTempName(pattern), "x");
        EXPECT_EQ(File::getTempName(pattern), expected);
    }
}

TEST_F(TemporaryTest, PatternsThatGiveNoNameOfTheirOwnAreRefused) {
    fs::current_path(path("."));
    writeFile("taken", "x");
    std::string const longest(259, 'x');
    EXPECT_EQ(File::getTempName(longest), longest);
    EXPECT_EQ(File::getTempName("%259d"), std::string(258, ' ') + "0");
    for (std::string const& pattern :
         {"taken"s, "%s"s, "%u%u"s, "%"s, "50%"s, "%n"s, "%c"s, "%lu"s, "%hd"s, "%*u"s, "%.*u"s, "%.-3u"s,
          "%.3"s, "%260u"s, "%.260x"s, "%99999999999999999999u"s, longest + "x", longest + "%u"}) {
        EXPECT_EQ(test::errorOf<Zel::FileException_GetTempNameFailed>([&] { File::getTempName(pattern); }),
                  "Failed to find temporary filename with pattern \"" + pattern + "\"");
    }
}

} // namespace
