// Reads this file's own source, given as argument, through the installed library.

#include <cstdio>
#include <zel/zel.h>

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    try {
        Zel::Zel_Init const init;
        Zel::Path path(Zel::File::getCurrentDir());
        path.append(argv[1]);
        Zel::MemoryFile const file(path.str());
        std::printf("read %d bytes of %s\n", file.getSize(), argv[1]);
        return file.getSize() > 0 ? 0 : 1;
    } catch (Zel::Exception const& exception) {
        std::fprintf(stderr, "consumer: %s\n", exception.getError());
        return 3;
    }
}
