// zel extract

#include "support/hostile_names.h"
#include "support/program_test.h"

namespace {

using test::treeOf;
using testing::ElementsAre;
using testing::HasSubstr;

using ExtractTest = test::ProgramTest;

TEST_F(ExtractTest, WhatWasPackedComesBack) {
    std::string const large(200'000, '\xFE');
    writeFile("tree/Readme.TXT", "hello");
    writeFile("tree/Sub/Deeper/Large.bin", large);
    writeFile("tree/Sub/Small.bin", std::string("\0\n\r\x1A\xFF", 5));
    ASSERT_EQ(zel({"pack", "tree", "a.bva"}), 0) << err();
    expectOut({"extract", "a.bva", "new/out"}, "extracted 3 of 3 entries into new/out\n");
    EXPECT_EQ(readFile("new/out/readme.txt"), "hello");
    EXPECT_EQ(readFile("new/out/sub/deeper/large.bin"), large);
    EXPECT_EQ(readFile("new/out/sub/small.bin"), readFile("tree/Sub/Small.bin"));
    EXPECT_EQ(treeOf(path("new")).size(), 6u) << "and nothing else";
}

TEST_F(ExtractTest, APartOfTheNamesInAnySpellingIsEnough) {
    packArchive("a.bva", {{"Maps\\One.bin", "1"}, {"maps\\two.bin", "2"}, {"sounds\\one.bin", "3"}});
    EXPECT_EQ(zel({"extract", "a.bva", "out", "mAPS/o"}), 0) << err();
    EXPECT_EQ(readFile("out/Maps/One.bin"), "1") << "as the archive spells it";
    EXPECT_THAT(treeOf(path("out")), ElementsAre("Maps", "Maps/One.bin"));
    expectErr({"extract", "a.bva", "none", "three"}, 3, "zel: a.bva has no entry with three in its name\n");
    EXPECT_FALSE(fs::exists(path("none")));
}

TEST_F(ExtractTest, FilesThatAreThereAreReplacedByWholeOnesOnly) {
    packArchive("a.bva", {{"damaged", std::string(100'000, 'x')}, {"sound", "new"}});
    std::string bytes = readFile("a.bva");
    bytes[bytes.size() - 4] ^= 1; // the last byte of the first entry
    writeFile("a.bva", bytes);
    writeFile("out/damaged", "older");
    writeFile("out/sound", "older and longer");
    expectErr({"extract", "a.bva", "out"}, 1, "zel: not extracted: damaged: File \"damaged\" is corrupted\n");
    EXPECT_EQ(out(), "extracted 1 of 2 entries into out\n");
    EXPECT_EQ(readFile("out/damaged"), "older");
    EXPECT_EQ(readFile("out/sound"), "new");
    EXPECT_THAT(treeOf(path("out")), ElementsAre("damaged", "sound")) << "no temporary file";
}

TEST_F(ExtractTest, NamesThatLeadAstrayAreRefusedAndTheRestGoesOn) {
    for (std::string const& name : test::hostileNames()) {
        packArchive("a.bva", {{name, "x"}, {"in\\order", "y"}});
        fs::remove_all(path("sub/out"));
        SCOPED_TRACE(name);
        expectErr({"extract", "a.bva", "sub/out"}, 1,
                  HasSubstr("zel: not extracted: " + zel::printableName(name) + ": "));
        EXPECT_THAT(treeOf(path(".")),
                    ElementsAre("a.bva", "sub", "sub/out", "sub/out/in", "sub/out/in/order"));
    }
    for (std::string const& name : test::harmlessNames()) {
        packArchive("a.bva", {{name, "x"}});
        fs::remove_all(path("sub/out"));
        EXPECT_EQ(zel({"extract", "a.bva", "sub/out"}), 0) << name << err();
    }
}

TEST_F(ExtractTest, EntriesThatAreInEachOthersWayAreNamed) {
    packArchive("a.bva", {{"A", "1"}, {"a", "2"}, {"b", "3"}, {"b\\c", "4"}, {"d/e", "5"}, {"d\\e", "6"}});
    fs::create_directories(path("out/last"));
    expectErr({"extract", "a.bva", "out"}, 1,
              testing::AllOf(HasSubstr("not extracted: a: it would be the same file as A\n"),
                             HasSubstr("not extracted: b\\c: out"), HasSubstr("b is no directory\n"),
                             HasSubstr("not extracted: d\\e: it would be the same file as d/e\n")));
    packArchive("b.bva", {{"last", "x"}});
    expectErr({"extract", "b.bva", "out"}, 1, HasSubstr("last is a directory\n"));
    EXPECT_EQ(zel({"extract", "b.bva", "b.bva"}), 3) << "a file is no directory to extract into";
}

TEST_F(ExtractTest, WhatTheHostTakesForOneNameKeepsTheEarlierEntry) {
    std::vector<std::vector<std::string>> const spellings = {
        {"readme.txt", "readme.txt ", "readme.txt."},
        {"\xC4.txt", "\xE4.txt"}, // capital and small, in the Western code page
        {"sub.\\a", "sub\\a"},
    };
    for (auto const& names : spellings) {
        test::Entries entries;
        for (std::string const& name : names)
            entries.emplace_back(name, name);
        packArchive("a.bva", entries);
        fs::remove_all(path("out"));
        bool const isOneName = test::hasReservedNames();
        EXPECT_EQ(zel({"extract", "a.bva", "out"}), isOneName ? 1 : 0) << err();
        EXPECT_THAT(out(), HasSubstr("extracted " + std::to_string(isOneName ? 1 : names.size()) + " of"));
        for (auto const& entry : fs::recursive_directory_iterator(path("out")))
            EXPECT_TRUE(!isOneName || entry.is_directory() || entry.file_size() == names.front().size())
                << "the first has stayed";
        EXPECT_EQ(err().find(": it would be the same file as ") != std::string::npos, isOneName);
    }
}

} // namespace
