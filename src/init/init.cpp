// The two objects that live as long as the library's use.

#include <zel/init.h>

#include <memory>
#include <new>
#include <zel/archive.h>
#include <zel/file.h>

namespace Zel {

Archive* g_Archive = nullptr;
File* g_File = nullptr;
int Zel_Init::m_count = 0;

Zel_Init::Zel_Init() {
    if (m_count == 0) {
        std::unique_ptr<Archive> archive(new (std::nothrow) Archive());
        g_File = new (std::nothrow) File();
        g_Archive = archive.release();
    }
    ++m_count;
}

Zel_Init::~Zel_Init() {
    if (m_count-- != 1)
        return;
    delete g_Archive;
    g_Archive = nullptr;
    delete g_File;
    g_File = nullptr;
}

} // namespace Zel
