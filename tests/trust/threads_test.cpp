// Files are opened from many threads, once archives and directories are set up. The preset tsan watches this
// story for data races.

#include "archive/names.h"
#include "support/library_test.h"

#include <algorithm>
#include <memory>
#include <thread>

namespace {

class ThreadsTest : public test::LibraryTest {
protected:
    /// Example data: packed, but for some files that lie loose. Each is there in one place only.
    ThreadsTest() {
        test::Entries entries;
        for (fs::directory_entry const& file : fs::recursive_directory_iterator(ZEL_EXAMPLE_DATA)) {
            if (!file.is_regular_file())
                continue;
            std::string const name =
                zel::toLowerCase(fs::relative(file.path(), ZEL_EXAMPLE_DATA).generic_string());
            if (name.ends_with(".jpg") || name.ends_with(".bmp") || name.ends_with(".obj")) {
                writeFile(name, test::fileContent(file));
                continue;
            }
            entries.emplace_back(zel::storedName(name), test::fileContent(file));
        }
        m_archive = std::make_unique<Zel::Archive>(packArchive("a.bva", entries));
        Zel::noise(0.5F); // makes its tables
    }

    /// What one thread does; the results, for comparison.
    std::vector<double> story() const {
        test::ImagingThread const imaging;
        std::vector<double> results;
        for (char const* picture : {"Pictures/Spheres.tga", "Pictures/Julia.pcx", "Pictures/Wheel.bmp"}) {
            Zel::Image const image(picture);
            results.push_back(image.sampleBilinear(7.5F, 9.5F).g);
        }
        results.push_back(Zel::Image(test::libraryPath(path("pictures/valley.jpg"))).samplePoint(3, 3).r);

        Zel::Script script("Settings/Benchmark.script");
        script.lock("Benchmark");
        results.push_back(script.getInt("loops"));
        Zel::Script const copy(script);
        results.push_back(copy.getBlockCount());

        for (char const* text : {"Models/Torus.obj", "Texts/Menu.de.txt"}) {
            Zel::TextFile file(text, Zel::File::READ_TEXT);
            std::string line;
            while (file.readLine(line))
                results.push_back(static_cast<double>(line.size()));
        }
        results.push_back(static_cast<double>(Zel::crc32("Tables/Gamma22.bin")));
        results.push_back(Zel::MemoryFile("Terrain/Heights_128x128.raw").getSize());
        results.push_back(Zel::turbulence(Zel::Vector3Template<float>(0.3F, 0.2F, 0.1F), 8));
        results.push_back(Zel::File::exists("Scenes/CameraPath.csv") ? 1 : 0);
        return results;
    }

    std::unique_ptr<Zel::Archive> m_archive;
};

TEST_F(ThreadsTest, FourThreadsReadWhatOneReads) {
    constexpr int kRounds = 5;
    std::vector<std::vector<double>> results(4);
    std::vector<std::thread> threads;
    for (auto& result : results)
        threads.emplace_back([this, &result] {
            for (int round = 0; round < kRounds; ++round)
                result = story();
        });
    for (std::thread& thread : threads)
        thread.join();
    EXPECT_THAT(results, testing::Each(story()));
}

TEST_F(ThreadsTest, NoMarkOfAnAccessIsLost) {
    constexpr int kEntries = 4'096;
    test::Entries entries;
    for (int i = 0; i < kEntries; ++i)
        entries.emplace_back("marks\\" + std::to_string(i), "x");
    Zel::Archive const archive(packArchive("marks.bva", entries));
    std::vector<std::thread> threads;
    for (int first = 0; first < 4; ++first)
        threads.emplace_back([&archive, first, this] {
            Zel::Archive::FileInfo info;
            for (int i = first; i < kEntries; i += 4)
                archive.findFile(key("marks\\" + std::to_string(i)), info);
        });
    for (std::thread& thread : threads)
        thread.join();
    test::LogCapture const log;
    archive.dumpUnaccessedFiles();
    EXPECT_EQ(log.messages().size(), 2u) << "heading and total, and no entry";
}

} // namespace
