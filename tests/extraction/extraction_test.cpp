// Extraction: what lands where, what is recorded, what is refused, and what is left behind: nothing.

#include "archive/archive_writer.h"
#include "support/hostile_names.h"
#include "support/temporary_test.h"

#include <fstream>

namespace {

using test::errorOf;
using test::readThroughLibrary;
using test::treeOf;
using testing::ElementsAre;
using Zel::Archive;
using Zel::File;
using Zel::FileException;

class ExtractionTest : public test::TemporaryTest {
protected:
    /// Cleans up, and expects the machine to be as it was before the extraction.
    static void expectNothingAfterCleanup() {
        File::cleanup();
        EXPECT_TRUE(File::sm_extractedFiles.empty());
        EXPECT_THAT(treeOf(temporaryRoot()), ElementsAre());
    }

    /// An existing directory to extract into, as the library wants it.
    std::string destination() const {
        fs::create_directories(path("out"));
        return test::libraryPath(path("out/"));
    }
};

TEST_F(ExtractionTest, AFileGetsARealPathOfItsOwn) {
    std::string const content = std::string(3 * 16384, '\xFF') + "the end";
    Archive const archive(packArchive("a.bva", {{"other", "x"}, {"sub\\file.bin", content}}));
    std::string const first = extracted(File::extractFile, "SUB/File.BIN");
    EXPECT_NE(first, extracted(File::extractFile, "SUB/File.BIN"));
    EXPECT_TRUE(first.ends_with("\\sub\\file.bin")) << first;
    EXPECT_EQ(readThroughLibrary(first), content);
    EXPECT_EQ(fs::file_size(onDisk(first)), content.size());
    test::LogCapture const log;
    archive.dumpUnaccessedFiles();
    EXPECT_THAT(log.messages(), ElementsAre(testing::_, testing::HasSubstr("other"), testing::_));
    expectNothingAfterCleanup();
}

TEST_F(ExtractionTest, ADirectoryIsRecordedInTheOrderOfItsMaking) {
    Archive const archive(
        packArchive("a.bva", {{"maps\\a.bin", "a"}, {"maps\\sub\\b.bin", "b"}, {"mapsnot\\c", "c"}}));
    std::string const dir = extracted(File::extractDirectory, "Maps");
    std::string const temporary = File::sm_extractedFiles.front();
    EXPECT_EQ(dir, temporary + "Maps\\") << "the argument as it was given";
    EXPECT_THAT(File::sm_extractedFiles,
                ElementsAre(temporary, temporary + "maps\\", temporary + "maps\\a.bin",
                            temporary + "maps\\sub\\", temporary + "maps\\sub\\b.bin"));
    EXPECT_THAT(treeOf(onDisk(temporary)), ElementsAre("maps", "maps/a.bin", "maps/sub", "maps/sub/b.bin"));
    expectNothingAfterCleanup();
}

TEST_F(ExtractionTest, CleanupLeavesWhatSomebodyElseHasPutThere) {
    Archive const archive(packArchive("a.bva", {{"maps\\a.bin", "a"}}));
    fs::path const copy = onDisk(extracted(File::extractDirectory, "maps/"));
    { std::ofstream(copy / "foreign") << "x"; }
    File::cleanup();
    EXPECT_THAT(treeOf(copy), ElementsAre("foreign"));
}

TEST_F(ExtractionTest, WhatNoArchiveHasIsLookedForOnDiskUnlessArchivesAreAll) {
    Archive const archive(packArchive("a.bva", {{"sub\\a", "a"}}));
    writeFile("loose/file", "x");
    auto const expectTold = [](auto extract, int archiveOnly, std::string name, bool found,
                               std::string const& told) {
        File::setArchiveOnly(archiveOnly);
        EXPECT_EQ(extract(name), found) << told;
        EXPECT_EQ(name, told);
        EXPECT_EQ(File::sm_extractedFiles.size(), 1u) << "it has made its directory all the same: " << told;
        expectNothingAfterCleanup();
    };
    expectTold(File::extractFile, 0, "LOOSE/File", true, key("loose\\file"));
    expectTold(File::extractFile, 1, "LOOSE/File", false, key("loose\\file"));
    expectTold(File::extractFile, 0, "missing", false, key("missing"));
    expectTold(File::extractDirectory, 0, "Loose", true, key("loose\\"));
    expectTold(File::extractDirectory, 0, "missing", false, key("missing\\"));
    expectTold(File::extractDirectory, 1, "Loose", false, "Loose");
}

TEST_F(ExtractionTest, OnlyTheNewestArchiveWithAMatchIsUsed) {
    Archive const older(packArchive("older.bva", {{"d\\a", "old"}, {"d\\b", "old"}}));
    Archive const newer(packArchive("newer.bva", {{"d\\a", "new"}}));
    Archive const newest(packArchive("newest.bva", {{"e\\a", "x"}}));
    EXPECT_EQ(readThroughLibrary(extracted(File::extractFile, "d/a")), "new");
    std::string const dir = extracted(File::extractDirectory, "d");
    EXPECT_THAT(treeOf(onDisk(dir)), ElementsAre("a"));
    EXPECT_EQ(readThroughLibrary(dir + "a"), "new");
}

TEST_F(ExtractionTest, APermanentExtractionStaysAndOverwrites) {
    Archive const archive(packArchive("a.bva", {{"d\\a", "new"}, {"d\\sub\\b", "b"}}));
    std::string const destination = this->destination();
    writeFile("out/d/a", "an older and longer one");
    std::string dir = "d";
    EXPECT_TRUE(File::extractDirectoryPermanent(dir, destination));
    EXPECT_EQ(dir, destination + "d\\");
    EXPECT_TRUE(File::sm_extractedFiles.empty());
    File::cleanup();
    EXPECT_THAT(treeOf(path("out")), ElementsAre("d", "d/a", "d/sub", "d/sub/b"));
    EXPECT_EQ(readFile("out/d/a"), "new");

    for (std::string const& nowhere : {std::string(), destination + "missing\\"}) {
        dir = "d";
        EXPECT_FALSE(File::extractDirectoryPermanent(dir, nowhere)) << nowhere;
        EXPECT_EQ(dir, "d");
    }
    EXPECT_FALSE(fs::exists("d")) << "an empty destination is refused before anything is made";
}

TEST_F(ExtractionTest, TheRelativePartIsTheKeyWithoutTheDataDirectory) {
    std::string const scratch = test::libraryPath(path(""));
    std::string const archiveFile = packArchive("a.bva", {{"dir\\a", "x"}});
    fs::current_path(path("."));
    for (std::string const& dataDirectory :
         {std::string(), scratch.substr(0, 3), scratch, scratch + "Capitals"}) {
        File::sm_datadir = Zel::Path();
        File::setDataDir(dataDirectory);
        Archive const archive(archiveFile);
        std::string const name = extracted(File::extractFile, "Dir/A");
        EXPECT_EQ(name, File::sm_extractedFiles.front() + "dir\\a") << dataDirectory;
        expectNothingAfterCleanup();

        File::setDataDir(scratch + "elsewhere");
        std::string dir = scratch.substr(0, 3);
        EXPECT_FALSE(File::extractDirectory(dir)) << "the key does not begin with the data directory";
        expectNothingAfterCleanup();
    }
}

TEST_F(ExtractionTest, NamesThatLeadAstrayAreRefused) {
    std::string const destination = this->destination();
    for (std::string const& name : test::hostileNames()) {
        EXPECT_NE(File::whyNotExtracted(name), nullptr) << name;
        Archive const archive(packArchive("a.bva", {{name, "x"}}));
        auto const before = treeOf(path("."));
        std::string dir;
        EXPECT_FALSE(File::extractDirectory(dir)) << name;
        EXPECT_EQ(File::sm_extractedFiles.size(), 1u) << name;
        expectNothingAfterCleanup();
        EXPECT_FALSE(File::extractDirectoryPermanent(dir, destination)) << name;
        EXPECT_EQ(treeOf(path(".")), before) << name;
    }
    for (std::string const& name : test::harmlessNames()) {
        Archive const archive(packArchive("a.bva", {{name, "x"}}));
        EXPECT_NE(extracted(File::extractDirectory, ""), "") << name;
    }
    expectNothingAfterCleanup();
}

TEST_F(ExtractionTest, TheFirstFailureEndsTheExtraction) {
    std::pair<test::Entries, std::vector<std::string>> const cases[] = {
        {{{"d\\a", "1"}, {"d\\a\\b", "2"}, {"d\\c", "3"}}, {"d", "d/a"}}, // one name is another's directory
        {{{"d\\", "0"}, {"d\\a", "1"}}, {}},                              // a name leads out
        {{{"d\\a", "1"}, {"d\\b\\..\\c", "2"}, {"d\\d", "3"}}, {"d", "d/a"}}, // a later one does
    };
    for (auto const& [entries, extracted] : cases) {
        SCOPED_TRACE(entries.front().first);
        Archive const archive(packArchive("a.bva", entries));
        std::string dir = "d";
        EXPECT_FALSE(File::extractDirectory(dir));
        std::string const temporary = File::sm_extractedFiles.front();
        EXPECT_EQ(dir, extracted.empty() ? "d" : temporary + "d\\");
        EXPECT_THAT(treeOf(onDisk(temporary)), testing::ElementsAreArray(extracted));
        EXPECT_TRUE(extracted.empty() || readThroughLibrary(temporary + "d\\a") == "1");
        expectNothingAfterCleanup();
    }
}

TEST_F(ExtractionTest, OfEntriesThatAreOneFileTheLastStays) {
    std::string const destination = this->destination();
    for (std::string const other : {"d\\A.bin", "d/a.bin", "d\\\\a.bin", "d\\.\\a.bin"}) {
        Archive const archive(packArchive("a.bva", {{other, "first"}, {"d\\a.bin", "last"}, {"d\\b", "b"}}));
        for (bool const permanent : {false, true}) {
            std::string dir;
            EXPECT_TRUE(permanent ? File::extractDirectoryPermanent(dir, destination)
                                  : File::extractDirectory(dir));
            EXPECT_EQ(readThroughLibrary(dir + "d\\a.bin"), "last") << other;
            EXPECT_EQ(readThroughLibrary(dir + "d\\b"), "b") << other;
        }
        expectNothingAfterCleanup();
    }
}

TEST_F(ExtractionTest, DamageIsAnExceptionThatNamesTheKeyAndLeavesNoFile) {
    std::string const archiveFile = packArchive("a.bva", {{"d\\a", std::string(20'000, 'x')}});
    std::string const sound = readFile("a.bva");
    std::string const cut = sound.substr(0, sound.size() - 1);
    std::string const quoted = "\"" + key("d\\a") + "\"";
    std::pair<std::string, std::string> const cases[] = {
        {cut + static_cast<char>(sound.back() ^ 1), "File " + quoted + " is corrupted"},
        {cut, "Read error in " + quoted},
        {zel::archiveHead({{"d\\a", 1, 0x80000000, 0}}), "Seek error in " + quoted},
        {zel::archiveHead({{"d\\a", 0xFFFFFFFF, 8, 0}}), "Read error in " + quoted},
    };
    std::string const destination = this->destination();
    for (auto const& [bytes, error] : cases) {
        writeFile("a.bva", bytes);
        writeFile("out/d/a", "older");
        Archive const archive(archiveFile);
        std::string dir = "d", name = "d\\a";
        EXPECT_EQ(errorOf<FileException>([&] { File::extractDirectory(dir); }), error);
        EXPECT_EQ(dir, "d");
        EXPECT_EQ(File::sm_extractedFiles.size(), 2u) << "the directories, which were made before";
        expectNothingAfterCleanup();
        EXPECT_EQ(errorOf<FileException>([&] { File::extractFile(name); }), error);
        expectNothingAfterCleanup();
        EXPECT_EQ(errorOf<FileException>([&] { File::extractDirectoryPermanent(dir, destination); }), error);
        EXPECT_EQ(readFile("out/d/a"), "older") << "not touched by an entry that is damaged";
    }
}

TEST_F(ExtractionTest, WithoutItsArchiveFileOrATemporaryDirectoryNothingIsExtracted) {
    Archive const archive(packArchive("a.bva", {{"a", "x"}}));
    File::setUniquePathNames(0);
    for (int number = 1; number <= 50; ++number)
        fs::create_directories(temporaryRoot() / ("tmp_" + std::to_string(number)));
    std::string name = "a";
    EXPECT_FALSE(File::extractFile(name));
    EXPECT_TRUE(File::sm_extractedFiles.empty());
    fs::remove_all(temporaryRoot());
    fs::rename(path("a.bva"), path("b.bva"));
    name = "a";
    EXPECT_FALSE(File::extractFile(name));
    expectNothingAfterCleanup();
}

TEST_F(ExtractionTest, NamesThatLeadNowhereMakeNoDirectory) {
    std::string name = "..\\..\\..\\..\\..\\..\\..\\..\\..\\..\\..\\..\\a";
    std::string const destination = this->destination();
    EXPECT_THROW(File::extractFile(name), Zel::FileException_DirectoryNotFound);
    EXPECT_THROW(File::extractDirectory(name), Zel::FileException_DirectoryNotFound);
    EXPECT_THROW(File::extractDirectoryPermanent(name, destination), Zel::FileException_DirectoryNotFound);
    EXPECT_TRUE(File::sm_extractedFiles.empty());
    EXPECT_FALSE(fs::exists(temporaryRoot()));
}

TEST_F(ExtractionTest, ForcedRemovalTakesTheWholeTreeWithWhatIsReadOnly) {
    writeFile("tree/a", "x");
    writeFile("tree/sub/deeper/b", "x");
    fs::permissions(path("tree/sub/deeper/b"), fs::perms::owner_read);
    fs::permissions(path("tree/sub"), fs::perms::owner_read | fs::perms::owner_exec);
    writeFile("beside", "x");
    fs::perms const permissions = fs::status(path("beside")).permissions();
    File file;
    file.forced_remove_directory((test::libraryPath(path("tree")) + "\\").c_str());
    EXPECT_THAT(treeOf(path(".")), ElementsAre("beside"));
    file.forced_remove_directory(test::libraryPath(path("missing")).c_str());
    file.forced_remove_directory(test::libraryPath(path("beside")).c_str());
    EXPECT_THAT(treeOf(path(".")), ElementsAre("beside")) << "a file is no directory";
    EXPECT_EQ(fs::status(path("beside")).permissions(), permissions) << "and is left as it is";
}

TEST_F(ExtractionTest, ForcedCleanupTakesWhatEveryRunHasLeft) {
    Archive const archive(packArchive("a.bva", {{"d\\a", "x"}}));
    extracted(File::extractFile, "d/a");
    File::sm_extractedFiles.clear(); // as after a crash
    EXPECT_NE(File::getTmpDir(), "");
    File().forced_cleanup();
    EXPECT_FALSE(fs::exists(temporaryRoot()));
    EXPECT_TRUE(fs::exists(temporaryRoot().parent_path()));
    File::cleanup(); // of what is gone already
    EXPECT_TRUE(File::sm_extractedFiles.empty());
}

} // namespace
