// The program's commands, run in this process.

#include "support/program_test.h"

#include <nlohmann/json.hpp>
#include <regex>

namespace {

using testing::HasSubstr;

class ZelTest : public test::ProgramTest {
protected:
    void writeTree() const {
        writeFile("tree/Readme.TXT", "hello");
        writeFile("tree/Sub/Data.bin", std::string("\0\n\r\x1A\xFF", 5));
    }

    /// The contents of a file whose last byte is damaged.
    std::string damaged(std::string const& name) const {
        std::string bytes = readFile(name);
        bytes.back() ^= 1;
        return bytes;
    }
};

TEST_F(ZelTest, PacksListsVerifiesAndShows) {
    writeTree();
    expectOut({"pack", "tree", "Out.bva"}, testing::StartsWith("packed 2 files into Out.bva, "));
    EXPECT_THAT(out(), testing::EndsWith(" " + std::to_string(readFile("Out.bva").size()) + " bytes\n"));
    expectOut({"list", "Out.bva"}, "      size  crc32     name\n" // the CRC-32 as zlib has it
                                   "         5  3610a686  readme.txt\n"
                                   "         5  3c68917c  sub\\data.bin\n"
                                   "2 entries, 10 bytes\n");
    expectOut({"verify", path("Out.bva").string()}, HasSubstr("2 entries, 10 bytes, all intact"));
    expectOut({"cat", "Out.bva", "SUB/./data.BIN"}, readFile("tree/Sub/Data.bin"));
    expectErr({"cat", "Out.bva", "nothing"}, 3, "zel: Out.bva has no entry nothing\n");
}

TEST_F(ZelTest, ListAndVerifyAnswerInJson) {
    packArchive("a.bva", {{"a\xFF", "hello"}, {"b", "x"}});
    EXPECT_EQ(zel({"list", "--json", "a.bva"}), 0);
    auto const list = nlohmann::json::parse(out());
    EXPECT_EQ(list["count"], 2);
    EXPECT_EQ(list["bytes"], 6);
    EXPECT_EQ(list["entries"][0]["name"], "a\xEF\xBF\xBD");
    EXPECT_EQ(list["entries"][0]["crc32"], 0x3610A686u);

    writeFile("a.bva", damaged("a.bva"));
    EXPECT_EQ(zel({"verify", "--json", "a.bva"}), 1);
    auto const verified = nlohmann::json::parse(out());
    EXPECT_EQ(verified["intact"], false);
    EXPECT_EQ(verified["damaged"].size(), 1u);
    EXPECT_EQ(verified["damaged"][0]["name"], "b");
}

TEST_F(ZelTest, AnyFlippedBitIsFoundAndItsEntryNamed) {
    packArchive("a.bva", {{"first", "11"}, {"Second", "22"}});
    std::string const sound = readFile("a.bva");
    for (std::size_t bit = 0; bit < sound.size() * 8; ++bit) {
        std::string flipped = sound;
        flipped[bit / 8] ^= static_cast<char>(1 << bit % 8);
        writeFile("a.bva", flipped);
        SCOPED_TRACE(bit);
        std::size_t const fromEnd = sound.size() - bit / 8;
        expectErr({"verify", "a.bva"}, 1,
                  HasSubstr(fromEnd <= 2   ? "\"Second\""
                            : fromEnd <= 4 ? "\"first\""
                                           : "\"a.bva\""));
    }
    writeFile("a.bva", sound.substr(0, sound.size() - 1));
    expectErr({"verify", "a.bva"}, 1, "zel: a.bva: Read error in \"Second\"\n");
    EXPECT_EQ(zel({"cat", "a.bva", "Second"}), 1);
    EXPECT_EQ(out(), "");
    expectOut({"cat", "a.bva", "first"}, "11"); // what is sound can still be had

    packArchive("b.bva", {{"large", std::string(200'000, 'x')}});
    writeFile("b.bva", damaged("b.bva"));
    EXPECT_EQ(zel({"cat", "b.bva", "large"}), 1);
    EXPECT_EQ(out(), "") << "nor is a piece of what is not";
}

TEST_F(ZelTest, PackNamesEverythingItRefusesAndWritesNothing) {
    writeTree();
    writeFile("tree/empty", "");
    writeFile("tree/Sub/empty.too", "");
    auto const namesBoth = testing::AllOf(HasSubstr("empty is empty"), HasSubstr("empty.too is empty"));
    expectErr({"pack", "tree", "out.bva"}, 1, namesBoth);
    EXPECT_FALSE(fs::exists(path("out.bva")));
    expectOut({"pack", "--skip-empty", "tree", "out.bva"}, HasSubstr("packed 2 files"));
    EXPECT_THAT(err(), namesBoth);
    std::string const older = readFile("out.bva");
    EXPECT_EQ(zel({"pack", "tree", "out.bva"}), 1);
    EXPECT_EQ(readFile("out.bva"), older);

    fs::create_directory(path("none"));
    expectErr({"pack", "none", "none.bva"}, 1, HasSubstr("holds no file to pack"));
    writeFile("huge/a", "x");
    fs::resize_file(path("huge/a"), 0x7FFFFFFF);
    expectErr({"pack", "huge", "huge.bva"}, 1, HasSubstr("more than 2 GiB"));
}

TEST_F(ZelTest, PackLeavesTheArchiveItselfOut) {
    writeTree();
    EXPECT_EQ(zel({"pack", "tree", "tree/all.bva"}), 0);
    std::string const first = readFile("tree/all.bva");
    EXPECT_EQ(zel({"pack", "tree", "tree/all.bva"}), 0);
    EXPECT_THAT(err(), HasSubstr("is the archive itself"));
    EXPECT_EQ(readFile("tree/all.bva"), first) << "the same tree gives the same bytes";
}

TEST_F(ZelTest, AFileThatChangesWhileItIsPackedLeavesNoArchive) {
    for (auto const size : {70'001U, 69'999U, 0U}) { // 0: the file is gone
        writeFile("tree/big", std::string(70'000, 'x'));
        test::Watcher watcher([this, size] {
            size > 0 ? fs::resize_file(path("tree/big"), size) : void(fs::remove(path("tree/big")));
        });
        EXPECT_EQ(zel({"pack", "tree", "out.bva"}, "", &watcher), 3);
        EXPECT_THAT(err(),
                    HasSubstr(size > 0 ? "big has changed its size since it was counted" : "cannot read "));
        EXPECT_FALSE(fs::exists(path("out.bva")));
    }
    EXPECT_THAT(test::treeOf(path(".")), testing::ElementsAre("tree"));
}

TEST_F(ZelTest, NothingThatIsPrintedControlsTheTerminal) {
    std::string const bad = "\x1B[31m\n\xC2\x9B\xE2\x80\xAE\"\x7F\xFF";
    std::string const shown = R"("\x1b[31m\n\xc2\x9b\xe2\x80\xae\"\x7f\xff")";
    packArchive("a.bva", {{bad, "x"}, {bad + "\\2", "y"}});
    packArchive("b.bva", {{bad + "\\2", "z"}, {"plain\\name", "x"}});
    writeFile("damaged.bva", damaged("a.bva"));
    writeFile("s", "[a] x = \"" + bad.substr(0, 10) + "\";");
    writeFile("inc", "#include \"" + bad.substr(0, 5) + "\x9B\"");
    for (auto const& command :
         {Command{"list", "a.bva"}, Command{"list", "--json", "a.bva"}, Command{"verify", "damaged.bva"},
          Command{"verify", "--json", "damaged.bva"}, Command{"diff", "a.bva", "b.bva"},
          Command{"extract", "damaged.bva", "out", "2"}, Command{"extract", "a.bva", "out", bad + "3"},
          Command{"cat", "a.bva", bad + "3"}, Command{"pack", bad, "new.bva"}, Command{"script", "dump", "s"},
          Command{"script", "dump", "--json", "s"}, Command{"script", "check", "inc", bad},
          Command{"image", "info", bad + ".bmp"}, Command{"image", "convert", "s", bad},
          Command{"noise", bad + ".bmp", "--size", bad}, Command{bad}, Command{"list", "a.bva", bad}}) {
        zel(command);
        std::string const printed = out() + err();
        EXPECT_EQ(zel::printableLine(printed), std::regex_replace(printed, std::regex("\n"), "\\n"))
            << "nothing but line feeds to escape: " << command.front();
        EXPECT_THAT(err(), testing::Not(HasSubstr("\n["))) << "no message of more than a line";
    }
    expectOut({"list", "a.bva"}, HasSubstr("  " + shown + "\n"));
    EXPECT_EQ(zel({"diff", "a.bva", "b.bva"}), 1);
    EXPECT_THAT(out(), HasSubstr("added    plain\\name\nremoved  " + shown + "\nchanged  "));
    expectOut({"cat", "a.bva", bad}, "x"); // names are given as they are
}

TEST_F(ZelTest, AFailedPackLeavesNothingBehind) {
    writeTree();
    fs::create_directory(path("taken.bva"));
    EXPECT_EQ(zel({"pack", "tree", "taken.bva"}), 3);
    expectErr({"pack", "tree", "no/such/directory.bva"}, 3,
              HasSubstr("zel: cannot write no/such/directory.bva: "));
    EXPECT_EQ(std::distance(fs::directory_iterator(path(".")), {}), 2) << "no temporary file";
}

TEST_F(ZelTest, PathsMayBeWrittenAsTheHostTakesThem) {
    writeTree();
    EXPECT_EQ(zel({"pack", "tree//", "tree/..//Out.bva"}), 0) << err();
    EXPECT_EQ(zel({"list", ".//Out.bva"}), 0) << err();
    fs::current_path(path("tree"));
    EXPECT_EQ(zel({"verify", "../Out.bva"}), 0) << err();
}

TEST_F(ZelTest, EveryListedNameCanBeShown) {
    packArchive("a.bva", {{"..\\..\\..\\..\\..\\..\\..\\..\\up", "1"}, {"Capital", "2"}, {"a/b", "3"}});
    expectOut({"cat", "a.bva", "..\\..\\..\\..\\..\\..\\..\\..\\up"}, "1");
    expectOut({"cat", "a.bva", "Capital"}, "2");
    EXPECT_EQ(zel({"cat", "a.bva", "capital"}), 3);
    expectOut({"cat", "a.bva", "a/b"}, "3");
}

TEST_F(ZelTest, WhatGoesWrongHasItsExitCode) {
    writeFile("bad.bva", "no archive at all"); // 1629515630 is "no a"
    packArchive("good.bva", {{"a", "x"}});
    auto const expectSaid = [this](Command const& arguments, int exitCode, char const* said) {
        expectErr(arguments, exitCode, testing::AllOf(testing::StartsWith("zel: "), HasSubstr(said)));
    };
    expectSaid({"list", "missing.bva"}, 3, "zel: Failed to open file \"missing.bva\"\n");
    expectSaid({"verify", "missing.bva"}, 3, "zel: Failed to open file \"missing.bva\"\n");
    expectSaid({"list", "bad.bva"}, 1,
               "zel: Archive \"bad.bva\" has invalid version 1629515630 (expected 44)\n");
    expectSaid({"verify", "bad.bva"}, 1, "zel: bad.bva: Archive \"bad.bva\" has invalid version 1629515630");
    expectSaid({"pack", "missing", "out.bva"}, 3, "zel: missing is no directory\n");
    expectSaid({}, 2, "");
    expectSaid({"paint"}, 2, "");
    expectSaid({"list"}, 2, "ARCHIVE is required");
    expectSaid({"list", "good.bva", "--unknown"}, 2, "--unknown");
    expectOut({"--version"}, "zel 1.0.0\n");
    expectOut({"pack", "--help"}, HasSubstr("--skip-empty"));
}

TEST_F(ZelTest, OutputThatCannotBeWrittenIsAFailure) {
    packArchive("good.bva", {{"a", "x"}});
    std::istringstream in;
    std::ostringstream out, err;
    out.setstate(std::ios::badbit);
    EXPECT_EQ(zel::run({"list", "good.bva"}, {in, out, err}), 3);
    EXPECT_EQ(err.str(), "zel: cannot write the output\n");
}

TEST_F(ZelTest, ABarThatCountsBytesIsDrawnForAWatcherAndWipedAway) {
    packArchive("a.bva", {{"a", std::string(100'000, 'x')}, {"b", std::string(100'000, 'x')}});
    for (auto const& [command, bar] :
         {std::pair(Command{"extract", "a.bva", "out"},
                    "\rextracting [############............................] 32%"),
          {Command{"verify", "a.bva"}, "\rverifying [####################....................] 50%"}}) {
        std::ostringstream terminal;
        EXPECT_EQ(zel(command, "", &terminal), 0) << err();
        EXPECT_THAT(terminal.str(), HasSubstr(bar));
        EXPECT_THAT(terminal.str(), HasSubstr("ing [########################################] 100%"));
        EXPECT_EQ(terminal.str().back(), '\r');
    }
}

} // namespace
