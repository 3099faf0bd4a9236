// Finds imports by the tables in the library's own image.

#include "support/imports_windows.h"

#include <windows.h>

#include <cstring>
#include <stdexcept>

namespace test {
namespace {

template <class Type>
Type const* at(std::size_t address) {
    return reinterpret_cast<Type const*>(address);
}

/// Where the library's import table holds the address of a function.
void** slotOf(char const* function) {
    auto const base = reinterpret_cast<std::size_t>(GetModuleHandleA("BvSystem.dll"));
    auto const* const headers =
        at<IMAGE_NT_HEADERS64>(base + static_cast<std::size_t>(at<IMAGE_DOS_HEADER>(base)->e_lfanew));
    auto const& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto const* library = at<IMAGE_IMPORT_DESCRIPTOR>(base + directory.VirtualAddress);
         library->Name != 0; ++library) {
        auto const* const names = at<IMAGE_THUNK_DATA64>(base + library->OriginalFirstThunk);
        for (std::size_t i = 0; names[i].u1.AddressOfData != 0; ++i) {
            bool const isName = !IMAGE_SNAP_BY_ORDINAL64(names[i].u1.Ordinal);
            if (isName &&
                std::strcmp(at<IMAGE_IMPORT_BY_NAME>(base + names[i].u1.AddressOfData)->Name, function) == 0)
                return reinterpret_cast<void**>(base + library->FirstThunk) + i;
        }
    }
    throw std::runtime_error(std::string("the library does not import ") + function);
}

void exchange(void** slot, void* function) {
    DWORD protection = 0;
    VirtualProtect(slot, sizeof *slot, PAGE_READWRITE, &protection);
    *slot = function;
    VirtualProtect(slot, sizeof *slot, protection, &protection);
}

} // namespace

ReplacedImport::ReplacedImport(char const* function, void* replacement)
    : m_slot(slotOf(function)), m_original(*m_slot) {
    exchange(m_slot, replacement);
}

ReplacedImport::~ReplacedImport() { exchange(m_slot, m_original); }

} // namespace test
