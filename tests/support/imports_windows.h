// The functions that the library takes from the system, exchanged while a test needs it.
#pragma once

namespace test {

/// While it lives, the library calls `replacement` wherever it calls the system's function of that name.
class ReplacedImport {
public:
    ReplacedImport(char const* function, void* replacement);
    template <class Result, class... Arguments>
    ReplacedImport(char const* function, Result(__stdcall* replacement)(Arguments...))
        : ReplacedImport(function, reinterpret_cast<void*>(replacement)) {}
    ~ReplacedImport();
    ReplacedImport(ReplacedImport const&) = delete;
    ReplacedImport& operator=(ReplacedImport const&) = delete;

private:
    void** m_slot;
    void* m_original;
};

} // namespace test
