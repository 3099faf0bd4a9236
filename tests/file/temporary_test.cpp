// Temporary directories and names.

#include "support/temporary_test.h"
#include "support/clock.h"

#include <gmock/gmock.h>

namespace {

namespace fs = std::filesystem;
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
        {"new%u.txt", "", "new0.txt"}, {"a%u.txt", "a0.txt", "a1.txt"},
        {"b%03d", "b000", "b001"},     {"100%%_%x", "100%_0", "100%_1"},
        {"c%-3d|", "", "c0  |"},       {"free.txt", "", "free.txt"},
        {"100%%", "", "100%"},
    };
    for (auto const& [pattern, existing, expected] : cases) {
        if (*existing != '\0')
            writeFile(existing, "x");
        EXPECT_EQ(File::getTempName(pattern), expected);
    }
    for (int number = 0; number < 12; ++number)
        writeFile("many" + std::to_string(number), "x");
    EXPECT_EQ(File::getTempName("many%u"), "many12");
}

TEST_F(TemporaryTest, PatternsThatGiveNoNameOfTheirOwnAreRefused) {
    fs::current_path(path("."));
    writeFile("taken", "x");
    std::string const longest(259, 'x');
    EXPECT_EQ(File::getTempName(longest), longest);
    for (std::string const& pattern :
         {std::string("taken"), std::string("%s"), std::string("%u%u"), std::string("%"), std::string("50%"),
          std::string("%n"), std::string("%lu"), std::string("%.3u"), std::string("%*u"), std::string("%i"),
          std::string("%300u"), std::string("%99999999999u"), longest + "x", longest + "%u"}) {
        EXPECT_EQ(test::errorOf<Zel::FileException_GetTempNameFailed>([&] { File::getTempName(pattern); }),
                  "Failed to find temporary filename with pattern \"" + pattern + "\"");
    }
}

} // namespace
