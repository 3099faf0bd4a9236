// Where the log goes is determined once in a process: each test here is a process of its own.

#include "support/library_test.h"

#include <cstdlib>
#include <fstream>
#include <functional>
#include <iostream>
#include <iterator>
#include <sys/stat.h>

namespace {

class PosixLogTest : public test::LibraryTest {
protected:
    PosixLogTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); } // a process begun anew, not a copy

    static std::string fileName() { return "verbose_" + test::computerName() + ".txt"; }
    fs::path logFolder() const { return path("data/Brisvane/Trelwyn"); }
    static fs::path startupLog() { return fs::read_symlink("/proc/self/exe").parent_path() / fileName(); }

    static std::string textOf(fs::path const& file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }

    /// What the other process does: it logs after `prepare`, and tells the texts of all logs on its way out.
    [[noreturn]] void logAndTell(std::function<void()> const& prepare) const {
        test::chooseCommonDataFolder(path("data"));
        prepare();
        Zel::enableVerbose(true);
        Zel::verbose("one");
        std::cerr << "ours: " << textOf(logFolder() / fileName()) << "startup: " << textOf(startupLog())
                  << "foreign: " << textOf(path("outside") / fileName());
        Zel::clearVerbose();
        std::exit(fs::exists(startupLog()) ? 1 : 0);
    }
};

TEST_F(PosixLogTest, NothingIsMadeWhileNobodyListens) {
    EXPECT_EXIT(
        {
            test::chooseCommonDataFolder(path("data"));
            Zel::verbose("unheard");
            std::exit(fs::exists(path("data")) ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

TEST_F(PosixLogTest, ThePathStaysAsItWasFirstDetermined) {
    EXPECT_EXIT(logAndTell([this] {
                    Zel::enableVerbose(true);
                    Zel::verbose("first");
                    test::chooseCommonDataFolder(path("other"));
                }),
                testing::ExitedWithCode(0), "ours: first\none\nstartup: foreign: ");
    EXPECT_FALSE(fs::exists(path("other")));
    EXPECT_TRUE(fs::exists(logFolder()));
    EXPECT_FALSE(fs::exists(logFolder() / fileName())) << "cleared";
}

TEST_F(PosixLogTest, WithoutAFolderOfOursItLiesBesideTheProgram) {
    EXPECT_EXIT(logAndTell([this] { test::chooseCommonDataFolder(path("a:b")); }), testing::ExitedWithCode(0),
                "ours: startup: one\nforeign: ");
    EXPECT_EXIT(logAndTell([this] { writeFile("data", "a file"); }), testing::ExitedWithCode(0),
                "ours: startup: one\nforeign: ");
    EXPECT_EXIT(logAndTell([this] {
                    fs::create_directories(path("outside"));
                    fs::create_directories(logFolder().parent_path());
                    fs::create_directory_symlink(path("outside"), logFolder());
                }),
                testing::ExitedWithCode(0), "ours: startup: one\nforeign: ");
    EXPECT_EXIT(logAndTell([this] {
                    fs::create_directories(logFolder());
                    fs::permissions(logFolder(), fs::perms::all);
                }),
                testing::ExitedWithCode(0), "ours: startup: one\nforeign: ");
}

TEST_F(PosixLogTest, WhatIsPlantedLaterIsNeitherWrittenNorDeletedThrough) {
    writeFile("outside/" + fileName(), "mine\n");
    struct {
        char const* fact;
        std::function<void()> plant;
    } const cases[] = {
        {"a link as folder",
         [this] {
             fs::rename(logFolder(), path("moved"));
             fs::create_directory_symlink(path("outside"), logFolder());
         }},
        {"a link as file",
         [this] {
             fs::remove(logFolder() / fileName());
             fs::create_symlink(path("outside") / fileName(), logFolder() / fileName());
         }},
        {"a pipe as file",
         [this] {
             fs::remove(logFolder() / fileName());
             ASSERT_EQ(mkfifo((logFolder() / fileName()).c_str(), 0600), 0);
         }},
    };
    for (auto const& [fact, plant] : cases) {
        EXPECT_EXIT(
            {
                test::chooseCommonDataFolder(path("data"));
                Zel::enableVerbose(true);
                Zel::verbose("ours");
                plant();
                Zel::verbose("lost");
                Zel::clearVerbose();
                std::exit(0);
            },
            testing::ExitedWithCode(0), "")
            << fact;
        EXPECT_EQ(readFile("outside/" + fileName()), "mine\n") << fact;
    }
}

} // namespace
