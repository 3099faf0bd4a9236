// The program on a host that tells case, has links, and takes every byte but two in a name.

#include "support/allocations.h"
#include "support/full_disk.h"
#include "support/host_calls.h"
#include "support/ordinary_user.h"
#include "support/pictures.h"
#include "support/program_test.h"

#include <cerrno>
#include <csignal>
#include <dlfcn.h>
#include <sys/stat.h>
#include <sys/wait.h>

namespace {

/// What was brought to the disk, and what was renamed, in order.
std::vector<std::string> s_diskCalls;
bool s_diskFails = false;

} // namespace

// The program's own functions come before those of the C library.
extern "C" {

int fsync(int descriptor) {
    struct stat status = {};
    fstat(descriptor, &status);
    s_diskCalls.emplace_back(S_ISDIR(status.st_mode) ? "directory" : "file");
    errno = EIO;
    return s_diskFails ? -1 : 0;
}

int rename(char const* from, char const* to) noexcept {
    s_diskCalls.emplace_back("rename");
    return reinterpret_cast<decltype(&rename)>(dlsym(RTLD_NEXT, "rename"))(from, to);
}

} // extern "C"

namespace {

using testing::HasSubstr;

using PosixZelTest = test::ProgramTest;

TEST_F(PosixZelTest, PackNamesOnceWhatIsStoredAsOneAndWhatCannotBeLookedUp) {
    for (char const* name : {"t/A/x", "t/a/X", "t/a/x", "t/b", "t/c/b", "t/d:e", "t/d\\e"})
        writeFile(name, "1");
    expectErr({"pack", "t", "out.bva"}, 1,
              testing::AllOf(HasSubstr("zel: refused: t/d:e has a ':' or a '\\' in its name\n"),
                             HasSubstr("zel: refused: t/d\\e has a ':' or a '\\' in its name\n"),
                             testing::EndsWith("name\nzel: refused: t/A/x and t/a/X would be the same entry\n"
                                               "zel: refused: t/A/x and t/a/x would be the same entry\n")));
    EXPECT_FALSE(fs::exists(path("out.bva")));
}

TEST_F(PosixZelTest, PackFollowsLinksToFilesAlone) {
    writeFile("t/file", "content");
    fs::create_symlink("file", path("t/link"));
    fs::create_symlink("nowhere", path("t/dangling"));
    fs::create_symlink("loop", path("t/loop"));
    fs::create_directory_symlink(".", path("t/self"));
    EXPECT_EQ(zel({"pack", "t", "out.bva"}), 0);
    for (char const* told :
         {"left out: t/dangling is no file", "left out: t/loop is no file",
          "left out: t/self is a link to a directory", "followed: t/link is a link to a file\n"})
        EXPECT_THAT(err(), HasSubstr(told));
    expectOut({"cat", "out.bva", "link"}, "content");
    expectOut({"pack", "--no-links", "t", "out.bva"}, HasSubstr("packed 1 file"));
    EXPECT_THAT(err(), HasSubstr("left out: t/link is a link to a file\n"));
}

TEST_F(PosixZelTest, PackNamesTheDirectoryThatItCannotRead) {
    writeFile("t/file", "content");
    fs::create_directories(path("t/closed/below"));
    fs::permissions(path("t/closed"), fs::perms::none);
    {
        test::OrdinaryUser const user;
        expectErr({"pack", "t", "out.bva"}, 3, "zel: cannot read t/closed: Permission denied\n");
    }
    fs::permissions(path("t/closed"), fs::perms::owner_all);
}

TEST_F(PosixZelTest, OutputsThatAreNoFilesAreRefusedAndKept) {
    writeFile("t/file", "content");
    fs::create_directory(path("directory.bmp"));
    ASSERT_EQ(mkfifo(path("fifo.bmp").c_str(), 0600), 0);
    ASSERT_EQ(mknod(path("socket.bmp").c_str(), S_IFSOCK | 0600, 0), 0);
    fs::create_symlink("fifo.bmp", path("link.bmp"));
    for (char const* name : {"directory.bmp", "fifo.bmp", "socket.bmp", "link.bmp"}) {
        auto const before = fs::symlink_status(path(name)).type();
        for (auto const& command : {Command{"pack", "t", name}, {"noise", name, "--size", "1x1"}})
            expectErr(command, 3, std::string("zel: cannot write ") + name + ": it is no regular file\n");
        EXPECT_EQ(fs::symlink_status(path(name)).type(), before) << name;
    }
    fs::create_symlink("circle.bmp", path("circle.bmp"));
    expectErr({"pack", "t", "circle.bmp"}, 3, HasSubstr("zel: cannot write circle.bmp: "));
}

TEST_F(PosixZelTest, OutputsAreWrittenThroughLinks) {
    writeFile("t/file", "content");
    writeFile("real/older.bva", "the older one");
    fs::create_symlink("older.bva", path("real/inner"));
    fs::create_symlink("real/inner", path("outer.bva"));
    fs::create_symlink("real/new.bva", path("dangling.bva"));
    for (auto const& [link, target] :
         {std::pair("outer.bva", "real/older.bva"), {"dangling.bva", "real/new.bva"}}) {
        EXPECT_EQ(zel({"pack", "t", link}), 0) << err();
        EXPECT_TRUE(fs::is_symlink(path(link)));
        EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(path(target))));
        expectOut({"cat", target, "file"}, "content");
    }
    EXPECT_THAT(test::treeOf(path("real")), testing::ElementsAre("inner", "new.bva", "older.bva"));
}

TEST_F(PosixZelTest, AFileThatHasBecomeAFifoIsNotWaitedFor) {
    writeFile("t/file", "content");
    test::Watcher watcher([this] {
        fs::remove(path("t/file"));
        ASSERT_EQ(mkfifo(path("t/file").c_str(), 0600), 0);
    });
    EXPECT_EQ(zel({"pack", "t", "out.bva"}, "", &watcher), 3);
    EXPECT_EQ(err(), "zel: cannot read t/file: it is no regular file\n");
    EXPECT_FALSE(fs::exists(path("out.bva")));
}

TEST_F(PosixZelTest, ASignalLeavesTheOlderArchiveAndNothingElse) {
    writeFile("t/file", "content");
    for (auto const& [signal, isIgnored] :
         {std::pair(SIGINT, false), {SIGTERM, false}, {SIGHUP, false}, {SIGHUP, true}}) {
        writeFile("out.bva", "the older one");
        pid_t const child = fork();
        if (child == 0) {
            std::signal(signal, isIgnored ? SIG_IGN : SIG_DFL);
            test::Watcher watcher([this, sent = signal] {
                if (std::distance(fs::directory_iterator(path(".")), {}) != 3)
                    _exit(99); // there is no temporary file, which could be left
                raise(sent);
            });
            _exit(zel({"pack", "t", "out.bva"}, "", &watcher));
        }
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(WIFSIGNALED(status) ? WTERMSIG(status) : -WEXITSTATUS(status), isIgnored ? 0 : signal);
        EXPECT_EQ(readFile("out.bva") == "the older one", !isIgnored);
        EXPECT_EQ(std::distance(fs::directory_iterator(path(".")), {}), 2);
    }
}

TEST_F(PosixZelTest, WhatIsReplacedIsOnTheDiskFirst) {
    writeFile("t/file", "content");
    for (auto const& command : {Command{"pack", "t", "out.bva"}, {"noise", "out.bmp", "--size", "1x1"}}) {
        s_diskCalls.clear();
        EXPECT_EQ(zel(command), 0) << err();
        EXPECT_EQ(s_diskCalls, (std::vector<std::string>{"file", "rename", "directory"})) << command.front();
    }
    std::string const older = readFile("out.bva");
    writeFile("t/file", "new content");
    s_diskFails = true;
    expectErr({"pack", "t", "out.bva"}, 3, "zel: cannot write out.bva: Input/output error\n");
    s_diskFails = false;
    EXPECT_EQ(readFile("out.bva"), older);
}

TEST_F(PosixZelTest, EntriesAreNeverHeldWhole) {
    constexpr std::size_t kSize = 8'000'000;
    writeFile("t/file", std::string(kSize, 'x'));
    class : public std::streambuf {
        int overflow(int byte) override { return byte; }
        std::streamsize xsputn(char const* /*bytes*/, std::streamsize size) override { return size; }
    } nowhere;
    for (auto const& command : {Command{"pack", "t", "a.bva"}, Command{"verify", "a.bva"},
                                Command{"list", "a.bva"}, Command{"cat", "a.bva", "file"},
                                Command{"extract", "a.bva", "out"}, Command{"diff", "a.bva", "a.bva"}}) {
        std::ostream out(&nowhere);
        std::ostringstream err;
        std::istringstream in;
        test::largestAllocation();
        EXPECT_EQ(zel::run(command, {in, out, err}), 0) << err.str();
        EXPECT_LT(test::largestAllocation(), kSize / 20) << command.front();
    }
}

TEST_F(PosixZelTest, RunningOutOfMemoryTellsWhatWasRead) {
    constexpr std::size_t kMemory = 60'000;
    std::string const large(2 * kMemory, 'x');
    packArchive("table.bva", {{large, "x"}});
    packArchive("a.bva", {{"entry", large}});
    writeFile("s", "[a] x = \"" + large + "\";");
    writeFile("a.bmp", test::Bmp{200, 200} + large);
    writeFile("t/file", large);
    std::pair<Command, char const*> const cases[] = {
        {{"list", "table.bva"}, "table.bva"}, {{"verify", "table.bva"}, "table.bva"},
        {{"verify", "a.bva"}, "entry"},       {{"cat", "a.bva", "entry"}, "entry"},
        {{"pack", "t", "b.bva"}, "t/file"},   {{"image", "info", "a.bmp"}, "a.bmp"},
        {{"script", "check", "s"}, "s"},      {{"script", "dump", "s"}, "s"},
    };
    for (auto const& [command, read] : cases) {
        test::SmallMemory const memory(kMemory);
        expectErr(command, 3, std::string("zel: out of memory while reading ") + read + "\n");
    }
}

TEST_F(PosixZelTest, AFullDiskKeepsTheOlderArchiveAndLeavesNothingElse) {
    writeFile("t/large", std::string(100'000, 'x'));
    writeFile("out.bva", "the older one");
    test::withFullDisk(5'000, [&] {
        expectErr({"pack", "t", "out.bva"}, 3, HasSubstr("zel: cannot write out.bva: "));
        expectErr({"pack", "t", "new.bva"}, 3, HasSubstr("zel: cannot write new.bva: "));
        expectErr({"noise", "noise.tga", "--size", "64x64"}, 3,
                  "zel: cannot write noise.tga: the disk is full, or the file would pass 2 GiB\n");
    });
    EXPECT_EQ(readFile("out.bva"), "the older one");
    EXPECT_THAT(test::treeOf(path(".")), testing::ElementsAre("out.bva", "t", "t/large"));
}

TEST_F(PosixZelTest, ASearchForAFailedIncludeFollowsNoNamesInComments) {
    writeFile("inc", "[a]\n#include gone");
    std::string text;
    for (std::string name = "s"; name.size() < 600; name = "./" + name)
        text += "// #include " + name + "\n";
    writeFile("s", text + "#include inc\n");
    long const before = test::hostCalls();
    EXPECT_EQ(zel({"script", "check", "s"}), 1);
    EXPECT_EQ(out(), "inc:2: Failed to open file \"gone\"\n");
    EXPECT_LT(test::hostCalls() - before, 1'000);
}

TEST_F(PosixZelTest, APipeOrADeviceIsNoScript) {
    ASSERT_EQ(mkfifo(path("Pipe").c_str(), 0600), 0);
    fs::create_symlink("/dev/zero", path("zero"));
    for (std::string const name : {"pipe", "zero"})
        expectErr({"script", "check", name}, 3, "zel: cannot read " + name + ": it is no regular file\n");
}

TEST_F(PosixZelTest, AnArchiveWithANameInOtherCaseIsNotMistakenForTheOneNamed) {
    packArchive("foo.bva", {{"a", "lower"}});
    packArchive("Foo.bva", {{"a", "capital"}});
    EXPECT_EQ(zel({"list", "foo.bva"}), 0);
    expectErr({"list", "Foo.bva"}, 3, HasSubstr("foo.bva differs in case alone"));
    packArchive("BAR.bva", {{"a", "1"}});
    packArchive("Bar.bva", {{"a", "1"}});
    EXPECT_EQ(zel({"list", "BAR.bva"}), 0) << "the first in byte order is the one that is found";
    EXPECT_EQ(zel({"list", "Bar.bva"}), 3);
    writeFile("script", "[a]");
    writeFile("Script", "x");
    for (char const* action : {"check", "dump"})
        expectErr({"script", action, "Script"}, 3, HasSubstr("differs in case alone"));
    expectErr({"list", "a:b.bva"}, 3, HasSubstr("':'"));
}

} // namespace
