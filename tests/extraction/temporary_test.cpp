// Temporary directories and names.

#include "support/temporary_test.h"
#include "support/clock.h"

namespace {

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
    // The time of day in 100 ns since 1601, its low 32 bits first, and the performance counter alike.
    EXPECT_TRUE(first.ends_with("\\Brisvane\\temp\\tmp_1_598810624_27114231_2764472320_232830\\")) << first;
    EXPECT_TRUE(second.ends_with("\\Brisvane\\temp\\tmp_2_598810624_27114231_2764472320_232830\\")) << second;
    EXPECT_EQ(test::treeOf(temporaryRoot()).size(), 2u) << "nothing is in them";
    EXPECT_TRUE(test::isPrivate(onDisk(first)) && test::isPrivate(onDisk(second)));
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

TEST_F(TemporaryTest, TempNamesTakeTheFirstFreeNumberInEveryNotation) {
    fs::current_path(path("."));
    writeFile("a0.txt", "x");
    struct {
        char const* pattern;
        int taken; ///< how many of its names there are made before
        char const* expected;
    } const cases[] = {{"a%u.txt", 0, "a1.txt"},  {"b%03d", 1, "b001"},        {"100%%_%x", 12, "100%_c"},
                       {"c%-3d|", 0, "c0  |"},    {"free.txt", 0, "free.txt"}, {"100%%", 0, "100%"},
                       {"d%i", 1, "d1"},          {"e%.3u", 0, "e000"},        {"f%+05d", 0, "f+0000"},
                       {"g%5.3i|", 0, "g  000|"}, {"i% u", 0, "i0"},           {"k%#.0o", 0, "k0"},
                       {"l%#x", 1, "l0x1"},       {"m%.0u", 1, "m1"},          {"n%-#6Xz", 1, "n0X1   z"},
                       {"o%u", 12, "o12"},        {"p%#06X", 12, "p0X000C"},   {"q%o", 12, "q14"},
                       {"r%#o", 12, "r014"},      {"s%-4oz", 12, "s14  z"},    {"t%+.3i", 12, "t+012"}};
    for (auto const& [pattern, taken, expected] : cases) {
        for (int number = 0; number < taken; ++number)
            writeFile(File::getTempName(pattern), "x");
        EXPECT_EQ(File::getTempName(pattern), expected);
    }
    EXPECT_EQ(File::getTempName("%05.3u"), "  000") << "a precision makes the 0 a mere flag";
    EXPECT_EQ(File::getTempName("% d"), " 0") << "what has no sign shows none";
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
