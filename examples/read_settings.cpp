// Reads the settings of a benchmark run from a script, with its includes, in a mounted archive.
//
//   read_settings ARCHIVE DIRECTORY
//
// DIRECTORY is the one that the archive was packed from; it need not hold the script any more.

#include <cstdio>
#include <string>
#include <zel/zel.h>

namespace {

void printTest(Zel::Script const& script) {
    std::printf("  %-10s %-14s %3d s", script.getBlockName().c_str(), script.getString("caption").c_str(),
                script.getInt("seconds"));
    if (script.isDefined("camera")) {
        Zel::Vector3Template<float> const camera = script.getVector3("camera");
        std::printf(", camera at (%g, %g, %g)", static_cast<double>(camera.x), static_cast<double>(camera.y),
                    static_cast<double>(camera.z));
    }
    if (script.getBool("rotate", false)) // a default stands in for what a test leaves out
        std::printf(", rotating");
    if (script.getBlockCount() > 0)
        std::printf(", %d passes", script.getBlockCount());
    std::printf("\n");
}

void printSettings(Zel::Script& script) {
    script.lock("Benchmark");
    std::printf("\"%s\", %d loops\n", script.getString("title").c_str(), script.getInt("loops"));
    script.unlock();

    script.lock("Display");
    Zel::Vector2Template<float> const size = script.getVector2("size");
    Zel::IntervalTemplate<float> const refresh = script.getInterval("refresh");
    std::printf("%g x %g, %s, %g to %g Hz\n", static_cast<double>(size.x), static_cast<double>(size.y),
                script.getBool("fullscreen") ? "full screen" : "window", static_cast<double>(refresh.min),
                static_cast<double>(refresh.max));
    script.unlock();

    script.lock("Tests");
    std::printf("%d tests, %g s apart:\n", script.getBlockCount(),
                static_cast<double>(script.getFloat("pause")));
    for (int i = 0; i < script.getBlockCount(); ++i) {
        script.lock(i);
        printTest(script);
        script.unlock();
    }
    script.unlock();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: read_settings ARCHIVE DIRECTORY\n", stderr);
        return 2;
    }
    try {
        Zel::Zel_Init const init;
        Zel::Path fullPath(Zel::File::getCurrentDir());
        fullPath.append(argv[1]);
        Zel::File::setDataDir(Zel::File::getCurrentDir());
        Zel::File::setDataDir(argv[2]);
        Zel::g_Archive->setFileName(fullPath.str());

        Zel::Script script("Settings/Benchmark.script");
        printSettings(script);
        return 0;
    } catch (Zel::Exception const& exception) { // names the file and the line where a script is wrong
        std::fprintf(stderr, "read_settings: %s\n", exception.getError());
        return 3;
    }
}
