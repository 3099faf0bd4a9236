// The memory block tracker: what a program has allocated, by its own reports, summed up in the verbose log.
#pragma once

#include <cstdint>
#include <zel/api.h>

namespace Zel {

/// Registers a block of `size` bytes and returns its address, so that the call can wrap an allocation. `name`
/// is printed for the block, with `number` in brackets behind it unless that is 0, below the heading `group`;
/// both texts are kept as pointers and outlive the block's registration as the caller's. Meant: an address
/// registered twice is one block with the fields of the last time, while all the counters count it twice.
/// Throws std::bad_alloc, registers nothing and counts nothing when memory runs out.
ZEL_API void* createMemoryBlock(void const* address, std::uint64_t size, std::uint64_t number,
                                char const* name, char const* group);

/// Removes a block. Null does nothing; any other address that is not registered ends the process, with a line
/// on standard error.
ZEL_API void deleteMemoryBlock(void const* address);

/// Logs a report (see verbose.h): what there is now, what there was at most, how many blocks came and went,
/// then each group with its blocks, those of the same name and number counted together. Meant: such blocks
/// all count with the size of the one at the lowest address. The numbers are printed with their low 32 bits.
ZEL_API void dumpMemoryBlocks();

/// Copies `count` bytes between areas that do not overlap. A negative count ends the process, with a line on
/// standard error.
ZEL_API void copyMemory(void* destination, void const* source, int count);

} // namespace Zel
