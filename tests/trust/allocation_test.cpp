// Memory that runs out: in each operation the first allocation fails, then the second, and so on, until the
// operation succeeds. What comes out is std::bad_alloc or an exception of the library; nothing leaks, and
// what was there before still works.

#include "support/allocations.h"
#include "support/host.h"
#include "support/library_test.h"
#include "support/pictures.h"
#include "support/samples.h"

#include <optional>

namespace {

constexpr long kMostAllocations = 20000;

class AllocationTest : public test::LibraryTest {
protected:
    AllocationTest() {
        std::filesystem::current_path(path("."));
        m_archive.emplace(
            packArchive("before.bva", {{"before.txt", "still here"}, {"big.bin", std::string(70000, 'x')}}));
    }

    /// Runs `act` with every one of its allocations failing in turn.
    template <class Act>
    void sweep(Act act) {
        act(); // what is made once and kept is made now
        for (long n = 1; n < kMostAllocations; ++n) {
            SCOPED_TRACE(testing::Message() << "allocation " << n);
            long const live = test::liveAllocations();
            int const descriptors = test::openDescriptors();
            bool const failed = failsAt(n, act);
            ASSERT_EQ(test::liveAllocations(), live);
            ASSERT_EQ(test::openDescriptors(), descriptors);
            ASSERT_EQ(test::readThroughLibrary("before.txt"), "still here");
            if (!failed)
                return;
        }
        FAIL() << "it never succeeds";
    }

    test::ImagingThread m_imaging;

private:
    template <class Act>
    static bool failsAt(long n, Act act) {
        test::FailingAllocation const failing(n);
        try {
            act();
        } catch (std::bad_alloc const&) {
        } catch (Zel::Exception const&) {
        }
        return test::FailingAllocation::happened();
    }

    std::optional<Zel::Archive> m_archive;
};

class AllocationSampleTest : public AllocationTest, public testing::WithParamInterface<test::Sample> {};

TEST_P(AllocationSampleTest, Reading) {
    test::Sample const& sample = GetParam();
    writeFile(sample.fileName, sample.content);
    sweep([&] { sample.read(sample.fileName); });
}

INSTANTIATE_TEST_SUITE_P(Formats, AllocationSampleTest, testing::ValuesIn(test::samples()),
                         [](auto const& instance) { return instance.param.what; });

TEST_F(AllocationTest, ArchivedEntries) {
    sweep([] {
        Zel::MemoryFile const file("big.bin");
        Zel::File::exists("before.txt");
    });
}

TEST_F(AllocationTest, ScriptsWithIncludes) {
    writeFile("a.script", "#include b.script\n[A]\nx = 1;\n#include b.script\n");
    writeFile("b.script", "#define Y 2\n[B]\ny = Y;\n#undef Y\n");
    sweep([] {
        Zel::Script script("a.script");
        script.lock("A");
        Zel::Script const copy(script);
        EXPECT_EQ(copy.getInt("x"), 1);
    });
}

TEST_F(AllocationTest, ImagesStayWholeWhenTheyAreCopied) {
    Zel::Image const source = test::imageOf(2, {Zel::Color(1, 2, 3, 4), Zel::Color(5, 6, 7, 8)});
    sweep([&] {
        Zel::Image target(30, 30);
        target = source;
        target.resize(4, 4);
        target.dilate(Zel::Color());
        Zel::Image const copy(target);
        target.copyWithScale(&source, 2);
    });
    EXPECT_EQ(source[1], Zel::Color(5, 6, 7, 8));
}

TEST_F(AllocationTest, PicturesBeingSaved) {
    Zel::Image const image(20, 10);
    sweep([&] {
        image.save("out.tga");
        image.save("out.bmp");
    });
    EXPECT_EQ(readFile("out.bmp").size(), 600U + 4096U);
}

TEST_F(AllocationTest, TheLog) {
    Zel::setVerboseCallback([](char const* /*message*/) {});
    sweep([] {
        Zel::verbose("line %d\n", 1);
        Zel::Archive::dumpAllUnaccessedFiles();
    });
    Zel::setVerboseCallback(nullptr);
}

} // namespace
