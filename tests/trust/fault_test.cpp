// What a program runs out of, or is refused by its host: in each operation the first allocation fails, then
// the second, and so on, until the operation succeeds; and in the same way each call to the host. What comes
// out is std::bad_alloc, an exception of the library or the stated answer; nothing leaks, nothing half-made
// stays, and what was there before still works. Not on Windows, where nothing fails inside a DLL.

#include "support/allocations.h"
#include "support/host_calls.h"
#include "support/pictures.h"
#include "support/samples.h"
#include "support/temporary_test.h"

#include <functional>
#include <new>
#include <optional>
#include <thread>

namespace {

using Zel::File;

constexpr long kMostFaults = 20000;

/// `Fault` is test::FailingAllocation or test::FailingHostCall.
template <class Fault>
class FaultTest : public test::TemporaryTest {
protected:
    FaultTest() {
        fs::current_path(path("."));
        m_archive.emplace(packArchive(
            "before.bva",
            {{"before.txt", "still here"}, {"maps\\big.bin", kBigContent}, {"maps\\sub\\b.bin", "b"}}));
    }

    /// Runs `act` with each of its faults in turn. It returns whether it could do all that it should, and
    /// checks what it then has. `tidyUp` looks at what it has left, and removes that.
    template <class Act>
    void sweep(
        Act act, std::function<void()> const& tidyUp = [] {}) {
        ASSERT_TRUE(act()); // what is made once and kept is made now
        tidyUp();
        for (long n = 1; n < kMostFaults && !this->HasFailure(); ++n) {
            SCOPED_TRACE(testing::Message() << "fault " << n);
            long const live = test::liveAllocations();
            int const descriptors = test::openDescriptors();
            std::pair<bool, bool> result;
            std::thread([&] { // with which goes what the library remembers of directories
                result = runWithFault(n, act);
                tidyUp();
            })
                .join();
            auto const [done, faultHappened] = result;
            ASSERT_EQ(test::liveAllocations(), live);
            ASSERT_EQ(test::openDescriptors(), descriptors);
            ASSERT_EQ(test::readThroughLibrary("before.txt"), "still here");
            if (!faultHappened) {
                ASSERT_TRUE(done);
                return;
            }
        }
        FAIL() << "it never succeeds";
    }

    static inline std::string const kBigContent = std::string(70000, 'x');

private:
    template <class Act>
    static std::pair<bool, bool> runWithFault(long n, Act act) {
        bool done = false;
        Fault const fault(n);
        try {
            done = act();
        } catch (std::bad_alloc const&) {
        } catch (Zel::Exception const&) {
        }
        return {done, Fault::happened()};
    }

    std::optional<Zel::Archive> m_archive;
};

using Faults = testing::Types<test::FailingAllocation, test::FailingHostCall>;
TYPED_TEST_SUITE(FaultTest, Faults);

TYPED_TEST(FaultTest, ReadingEveryFormat) {
    for (test::Sample const& sample : test::samples()) {
        SCOPED_TRACE(sample.what);
        this->writeFile(sample.fileName, sample.content);
        std::uint32_t const expected = sample.read(sample.fileName);
        this->sweep([&] {
            EXPECT_EQ(sample.read(sample.fileName), expected);
            return true;
        });
    }
}

TYPED_TEST(FaultTest, ArchivedEntries) {
    this->sweep([this] {
        Zel::MemoryFile const file("maps/big.bin");
        std::string_view const content(static_cast<char const*>(file.getAddress()), this->kBigContent.size());
        EXPECT_EQ(content, this->kBigContent);
        return File::exists("before.txt");
    });
}

TYPED_TEST(FaultTest, ScriptsWithIncludes) {
    this->writeFile("a.script", "#include b.script\n[A]\nx = 1;\n#include b.script\n");
    this->writeFile("b.script", "#define Y 2\n[B]\ny = Y;\n#undef Y\n");
    this->sweep([] {
        Zel::Script script("a.script");
        script.lock("A");
        Zel::Script const copy(script);
        return copy.getInt("x") == 1;
    });
}

TYPED_TEST(FaultTest, ImagesStayWholeWhenTheyAreCopied) {
    Zel::Image const source = test::imageOf(2, {Zel::Color(1, 2, 3, 4), Zel::Color(5, 6, 7, 8)});
    this->sweep([&] {
        Zel::Image target(30, 30);
        try {
            target = source;
            target.resize(4, 4);
            target.dilate(Zel::Color());
            Zel::Image const copy(target);
            target.copyWithScale(&source, 2);
        } catch (std::bad_alloc const&) {
            EXPECT_EQ(target.getData() == nullptr, target.getWidth() == 0 && target.getHeight() == 0);
            throw;
        }
        return true;
    });
    EXPECT_EQ(source[1], Zel::Color(5, 6, 7, 8));
}

TYPED_TEST(FaultTest, PicturesBeingSaved) {
    Zel::Image const image(20, 10);
    this->sweep([&] {
        image.save("out.tga");
        image.save("out.bmp");
        EXPECT_EQ(this->readFile("out.tga").size(), 18U + 600U) << "not all, and nothing said";
        EXPECT_EQ(this->readFile("out.bmp").size(), 600U + 4096U) << "not all, and nothing said";
        return true;
    });
}

TYPED_TEST(FaultTest, ExtractedFilesAreWholeOrGone) {
    auto const expectWhole = [this](fs::path const& directory) {
        for (auto const& entry : fs::recursive_directory_iterator(directory)) {
            bool const isBig = entry.path().filename() == "big.bin";
            EXPECT_TRUE(entry.is_directory() || entry.file_size() == (isBig ? this->kBigContent.size() : 1));
        }
    };
    this->sweep(
        [] {
            std::string directory = "maps";
            return File::extractDirectory(directory);
        },
        [&] {
            if (fs::exists(this->temporaryRoot()))
                expectWhole(this->temporaryRoot());
            File::cleanup();
            EXPECT_TRUE(File::sm_extractedFiles.empty());
            EXPECT_TRUE(!fs::exists(this->temporaryRoot()) || fs::is_empty(this->temporaryRoot()));
        });

    std::string const destination = test::libraryPath(this->path("out")) + "\\";
    fs::create_directories(this->path("out"));
    this->sweep(
        [&] {
            std::string directory = "maps";
            return File::extractDirectoryPermanent(directory, destination);
        },
        [&] {
            expectWhole(this->path("out"));
            fs::remove_all(this->path("out/maps"));
        });
}

TYPED_TEST(FaultTest, RemovingWhatWasExtracted) {
    this->sweep(
        [] {
            std::string directory = "maps";
            bool const done = File::extractDirectory(directory);
            File().forced_remove_directory(directory.c_str());
            File::cleanup();
            return done;
        },
        [] {
            File::cleanup(); // after an extraction that threw
            EXPECT_TRUE(File::sm_extractedFiles.empty());
            File().forced_cleanup();
        });
}

TYPED_TEST(FaultTest, TheLogAndTheTracker) {
    Zel::enableVerbose(true);
    Zel::setVerboseCallback([](char const* /*message*/) {});
    this->sweep([] {
        Zel::verbose("line %d\n", 1);
        Zel::Archive::dumpAllUnaccessedFiles();
        char const byte = 0;
        std::unique_ptr<void const, void (*)(void const*)> const tracked(
            Zel::createMemoryBlock(&byte, 1, 1, "block", "group"), Zel::deleteMemoryBlock);
        Zel::dumpMemoryBlocks();
        return true;
    });
    Zel::enableVerbose(false);
    Zel::setVerboseCallback(nullptr);
}

TEST(TrackerFaultTest, ARegistrationThatRunsOutOfMemoryCountsNothing) {
    auto const report = [] {
        test::LogCapture const log;
        Zel::dumpMemoryBlocks();
        return log.text();
    };
    std::string const before = report();
    {
        test::FailingAllocation const first(1);
        EXPECT_THROW(Zel::createMemoryBlock(&before, 1 << 30, 0, "lost", "lost"), std::bad_alloc);
    }
    EXPECT_EQ(report(), before);
}

} // namespace
