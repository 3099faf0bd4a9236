// Inputs that hurt a reader who trusts them, and the seeds of the fuzz targets: each file in
// fuzz/seeds/TARGET and tests/regressions/TARGET goes through its target. The targets are those of fuzz/,
// under names of their own.

#include "fuzz/host_file.h"
#include "support/allocations.h"
#include "support/library_test.h"
#include "support/pictures.h"

#include <fstream>

#define ZEL_FUZZ_TARGETS(DO) \
    DO(archive) DO(bmp) DO(entry) DO(jpeg) DO(names) DO(pcx) DO(script) DO(text) DO(tga)

#define ZEL_DECLARE_TARGET(name) extern "C" int fuzz_##name(std::uint8_t const* data, std::size_t size);
ZEL_FUZZ_TARGETS(ZEL_DECLARE_TARGET)

/// The targets' file, on any host: in the scratch directory of the test, which is the working directory.
std::string fuzz::hostFile(std::string_view content, std::string const& extension) {
    std::string const name = "input" + extension;
    std::ofstream(name, std::ios::binary).write(content.data(), static_cast<std::streamsize>(content.size()));
    return test::libraryPath(name);
}

namespace {

struct Target {
    char const* name;
    int (*run)(std::uint8_t const* data, std::size_t size);

    friend std::ostream& operator<<(std::ostream& out, Target const& target) { return out << target.name; }
};

#define ZEL_LIST_TARGET(name) Target{#name, fuzz_##name},

constexpr Target kTargets[] = {ZEL_FUZZ_TARGETS(ZEL_LIST_TARGET)};

class ReplayTest : public test::LibraryTest, public testing::WithParamInterface<Target> {
protected:
    ReplayTest() { fs::current_path(path(".")); }

    static void run(std::string const& input) {
        EXPECT_EQ(GetParam().run(reinterpret_cast<std::uint8_t const*>(input.data()), input.size()), 0);
        Zel::File::sm_currentDir = Zel::Path();
    }

    test::ImagingThread m_imaging;
};

TEST_P(ReplayTest, NoInputHurts) {
    if (GetParam().name == std::string("jpeg") && !test::takesHostileJpeg())
        GTEST_SKIP() << "the host's codec is not safe";
    int inputs = 0;
    for (fs::path const folder : {ZEL_SOURCE_DIR "/fuzz/seeds", ZEL_SOURCE_DIR "/tests/regressions"}) {
        if (!fs::exists(folder / GetParam().name))
            continue;
        for (auto const& file : fs::directory_iterator(folder / GetParam().name)) {
            SCOPED_TRACE(file.path().string());
            std::string const input = test::fileContent(file);
            run(input); // what is made once and kept is made now
            long const live = test::liveAllocations();
            run(input);
            EXPECT_EQ(test::liveAllocations(), live);
            ++inputs;
        }
    }
    EXPECT_GT(inputs, 0);
}

INSTANTIATE_TEST_SUITE_P(Targets, ReplayTest, testing::ValuesIn(kTargets),
                         [](auto const& instance) { return std::string(instance.param.name); });

} // namespace
