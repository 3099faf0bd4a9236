// COM for the main thread: on Windows, a program that loads JPEG pictures sets it up itself, the library
// never does.

#include <objbase.h>

namespace {

struct Com {
    Com() { CoInitialize(nullptr); }
    Com(Com const&) = delete;
    Com& operator=(Com const&) = delete;
    ~Com() { CoUninitialize(); }
};

Com const s_com;

} // namespace
