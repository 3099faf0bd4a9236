// What lies below the machine-wide data folder is private: whatever others put there, or in the way of an
// extraction, leads nowhere.

#include "support/host_calls.h"
#include "support/other_process.h"
#include "support/program_test.h"
#include "support/temporary_test.h"

#include <functional>
#include <map>

namespace {

using Zel::Archive;
using Zel::File;

class PosixPrivateTest : public test::TemporaryTest {
protected:
    PosixPrivateTest() : m_usual(test::commonDataFolder()) { test::chooseCommonDataFolder(path("data")); }
    ~PosixPrivateTest() override { test::chooseCommonDataFolder(m_usual); }

    /// Files that somebody else has, in directories that may be taken for ours.
    void writeForeignFiles() const {
        for (char const* name : kForeignFiles)
            writeFile(std::string("outside/") + name, "mine");
    }
    void expectForeignFiles(std::string const& fact) const {
        for (char const* name : kForeignFiles)
            EXPECT_EQ(readFile(std::string("outside/") + name), "mine") << fact;
        EXPECT_EQ(std::distance(fs::recursive_directory_iterator(path("outside")), {}), 13) << fact;
    }

    static constexpr char const* kForeignFiles[] = {
        "temp/tmp_1/file", "temp/tmp_1/maps/a.bin", "tmp_1/maps/a.bin", "maps/a.bin", "a.bin", "sub/b.bin"};

private:
    fs::path m_usual;
};

TEST_F(PosixPrivateTest, ATemporaryRootThatOthersCanReachIsLeftAlone) {
    Archive const archive(packArchive("a.bva", {{"maps\\a.bin", "x"}}));
    fs::path const ours = path("data/Brisvane");
    fs::path const temp = ours / "temp";
    auto const beginAnew = [this] {
        fs::remove_all(path("outside"));
        fs::remove_all(path("data"));
        fs::create_directory(path("data"));
        writeForeignFiles();
    };
    auto const expectLeftAlone = [this](std::string const& fact) {
        EXPECT_EQ(File::getTmpDir(), "") << fact;
        std::string name = "maps/a.bin";
        EXPECT_FALSE(File::extractFile(name)) << fact;
        File().forced_cleanup();
        EXPECT_TRUE(File::sm_extractedFiles.empty()) << fact;
        expectForeignFiles(fact);
    };
    for (auto const& [link, target] :
         {std::pair(ours, "outside"), {path("data/BRISVANE"), "outside"}, {temp, "outside/temp"}}) {
        beginAnew();
        fs::create_directories(link.parent_path());
        fs::create_directory_symlink(path(target), link);
        expectLeftAlone("a link: " + link.string());
    }
    uid_t const user = geteuid();
    for (auto const& [fact, directory, mode, owner] :
         {std::tuple("others may write Brisvane", ours, fs::perms::all, user),
          {"a group may write temp", temp, fs::perms::owner_all | fs::perms::group_all, user},
          {"temp belongs to somebody else", temp, fs::perms::owner_all, 65534U}}) {
        if (user != 0 && owner != user)
            continue; // root alone gives away
        beginAnew();
        fs::rename(path("outside"), ours);
        fs::create_directory_symlink(ours, path("outside"));
        fs::permissions(directory, mode);
        ASSERT_EQ(chown(directory.c_str(), owner, owner), 0);
        expectLeftAlone(fact);
    }
}

TEST_F(PosixPrivateTest, TheWayToTheDataFolderIsTheUsersChoice) {
    fs::create_directories(path("elsewhere/brisvane"));
    fs::permissions(path("elsewhere"), fs::perms::all);
    fs::permissions(path("elsewhere/brisvane"), static_cast<fs::perms>(0755));
    fs::create_directory_symlink("elsewhere", path("data"));
    std::string const directory = File::getTmpDir();
    EXPECT_TRUE(directory.starts_with(test::libraryPath(path("data")) + "\\Brisvane\\temp\\")) << directory;
    EXPECT_FALSE(fs::is_empty(path("elsewhere/brisvane/temp"))) << "found whatever its case";
    EXPECT_TRUE(test::isPrivate(path("elsewhere/brisvane/temp")));
    File::cleanup();
    EXPECT_TRUE(fs::is_empty(path("elsewhere/brisvane/temp")));
    EXPECT_NE(File::getTmpDir(), "");
    File().forced_cleanup();
    EXPECT_TRUE(fs::is_empty(path("elsewhere/brisvane")));
}

TEST_F(PosixPrivateTest, CleanupRemovesNothingThroughALinkAtOrAboveWhatWasRecorded) {
    Archive const archive(packArchive("a.bva", {{"maps\\a.bin", "x"}, {"maps\\sub\\b.bin", "x"}}));
    fs::path const maps = path("data/Brisvane/temp/tmp_1/maps");
    for (fs::path swapped = maps; swapped != path("data"); swapped = swapped.parent_path()) {
        File::setUniquePathNames(0);
        writeForeignFiles();
        extracted(File::extractDirectory, "maps");
        EXPECT_TRUE(test::isPrivate(maps) && test::isPrivate(maps / "sub"));
        fs::rename(swapped, path("moved"));
        fs::create_directory_symlink(path("outside"), swapped);
        File::cleanup();
        expectForeignFiles(swapped);
        EXPECT_TRUE(fs::exists(path("moved") / maps.lexically_relative(swapped) / "a.bin"))
            << "not where it was recorded";
        EXPECT_TRUE(File::sm_extractedFiles.empty());
        fs::remove(swapped);
        fs::remove_all(path("moved"));
        fs::remove_all(path("data"));
    }
}

class PosixRaceTest : public PosixPrivateTest {
protected:
    PosixRaceTest() {
        for (char const letter : std::string("abcdefgh")) {
            for (std::string const directory : {"", "sub\\"}) {
                m_entries.emplace_back("maps\\" + directory + letter, "x");
                writeFile("outside/" + std::string(directory.empty() ? "" : "sub/") + letter, "mine");
            }
        }
    }

    /// Extracts many times while somebody puts a link in the place of a directory, and that back again.
    void race(int attempts, fs::path const& directory, std::function<void()> const& extract,
              std::function<void()> const& tidyUp) const {
        test::Swapper const swapper(directory, path("link"));
        for (; attempts > 0; --attempts) {
            fs::remove_all(path("link"));
            fs::create_directory_symlink(path("outside"), path("link"));
            swapper.run();
            extract();
            swapper.wait();
            tidyUp();
        }
        for (auto const& entry : fs::recursive_directory_iterator(path("outside")))
            EXPECT_TRUE(entry.is_directory() || entry.file_size() == 4) << entry.path();
        EXPECT_EQ(std::distance(fs::recursive_directory_iterator(path("outside")), {}), 17);
    }

    test::Entries m_entries;
};

TEST_F(PosixRaceTest, ATemporaryExtractionTouchesNothingOutside) {
    Archive const archive(packArchive("a.bva", m_entries));
    File::setUniquePathNames(0);
    race(
        150, temporaryRoot() / "tmp_1/maps",
        [] {
            std::string dir = "maps";
            try {
                File::extractDirectory(dir);
            } catch (Zel::FileException const&) { // as when a full disk refuses a file
            }
            File::cleanup();
        },
        [] { File().forced_cleanup(); });
}

TEST_F(PosixRaceTest, ZelExtractTouchesNothingOutside) {
    packArchive("a.bva", m_entries);
    fs::current_path(path("."));
    race(
        50, path("out/maps"),
        [] {
            std::stringstream streams;
            File::sm_datadir = Zel::Path();
            zel::run({"extract", "a.bva", "out"}, {streams, streams, streams});
        },
        [this] { fs::remove_all(path("out")); });
}

/// The directory of an entry, one of so many, in trees of many shapes.
using Shape = std::string (*)(int entry, int count);

std::string aDirectoryForEach(int entry, int /*count*/) { return std::to_string(entry); }

std::string aDeepDirectory(int /*entry*/, int count) {
    std::string directory = "c";
    for (int depth = 1; depth < count; ++depth)
        directory += "\\c";
    return directory;
}

std::string oneDirectoryInManySpellings(int entry, int /*count*/) {
    std::string directory = "abcdefghij";
    for (std::size_t letter = 0; letter < directory.size(); ++letter)
        directory[letter] =
            static_cast<char>(directory[letter] - ((entry >> letter) % 2 == 1 ? 'a' - 'A' : 0));
    return directory;
}

class PosixGrowthTest : public PosixPrivateTest {
protected:
    /// The calls to the host of each way to extract and to remove.
    std::map<std::string, long> callsFor(Shape shape, int count) const {
        test::Entries entries;
        for (int entry = 0; entry < count; ++entry)
            entries.emplace_back("d\\" + shape(entry, count) + "\\" + std::to_string(entry), "x");
        std::string const destination = test::libraryPath(path("out/"));
        fs::create_directory(path("out"));
        std::map<std::string, long> calls;
        {
            Archive const archive(packArchive("a.bva", entries));
            std::string dir;
            calls["temporary"] = callsOf([] { extracted(File::extractDirectory, "d"); });
            calls["cleanup"] = callsOf([] { File::cleanup(); });
            EXPECT_TRUE(fs::is_empty(temporaryRoot()));
            for (char const* what : {"permanent", "permanent again"})
                calls[what] =
                    callsOf([&] { EXPECT_TRUE(File::extractDirectoryPermanent(dir = "d", destination)); });
            calls["forced removal"] = callsOf([&] { File().forced_remove_directory(destination.c_str()); });
            EXPECT_FALSE(fs::exists(path("out")));
        }
        fs::current_path(path("."));
        std::stringstream streams;
        calls["zel extract"] = callsOf([&] {
            zel::run({"extract", "a.bva", "zel"}, {streams, streams, streams});
        });
        EXPECT_THAT(streams.str(), testing::HasSubstr("extracted " + std::to_string(entries.size()) + " of"));
        fs::remove_all(path("zel"));
        return calls;
    }

private:
    static long callsOf(std::function<void()> const& act) {
        long const before = test::hostCalls();
        act();
        return test::hostCalls() - before;
    }
};

TEST_F(PosixGrowthTest, ExtractionAndRemovalAskTheHostInProportion) {
    for (Shape const shape : {aDirectoryForEach, aDeepDirectory, oneDirectoryInManySpellings}) {
        auto const once = callsFor(shape, 100);
        for (auto const& [what, calls] : callsFor(shape, 200)) {
            EXPECT_GT(calls, 200) << what;
            EXPECT_LE(calls, once.at(what) * 22 / 10) << what << ' ' << shape(1, 1);
        }
    }
}

} // namespace
