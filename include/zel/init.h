// Start and end of the library's use.
#pragma once

#include <zel/api.h>

namespace Zel {

class Archive;
class File;

/// Two objects for callers, which live as long as any Zel_Init does; null before and after. When memory runs
/// out, one may be null, or std::bad_alloc is thrown. The library itself reads neither. g_Archive starts
/// empty and registered, g_File closed.
extern ZEL_API Archive* g_Archive;
extern ZEL_API File* g_File;

/// Without one, the two are null. Create one before any Archive, so that g_Archive gets the first slot, and
/// destroy it at the end. The first one alive creates g_Archive and g_File; the last one deletes them.
/// Nothing else is set up or cleaned up. Create and destroy them on one thread.
class ZEL_API Zel_Init {
public:
    /// Throws what creating an Archive throws; this object is not counted then.
    Zel_Init();
    ~Zel_Init();
    Zel_Init(Zel_Init const&) = delete;
    Zel_Init& operator=(Zel_Init const&) = delete;

    /// The number of objects alive.
    static int m_count;
};

} // namespace Zel
