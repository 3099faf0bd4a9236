// The memory block tracker: what a program has allocated, by its own reports, summed up in the verbose log.
#pragma once

#include <cstdint>
#include <zel/api.h>

namespace Zel {

/// Registers a block of `size` bytes. Returns its address, so that the call can wrap an allocation.
///
/// The report prints the block as `name`, followed by [`number`] unless that is 0, below the heading `group`.
/// Both texts are kept as pointers and must stay valid while the block is registered; string literals do.
/// Meant: an address registered twice is one block, with the fields of the last time, but all counters count
/// it twice. Throws std::bad_alloc when memory runs out; nothing is registered or counted then.
ZEL_API void* createMemoryBlock(void const* address, std::uint64_t size, std::uint64_t number,
                                char const* name, char const* group);

/// Unregisters a block. Null does nothing. Any other address that is not registered ends the process, with a
/// line on standard error.
ZEL_API void deleteMemoryBlock(void const* address);

/// Writes a report to the verbose log: the present and the largest amount, how many blocks were registered
/// and unregistered, then each group with its blocks. Blocks of one group, name and number are one line.
/// Meant: all of them count with the size of the one at the lowest address. Counts, the bytes of a
/// line and `number` are printed modulo 2^32; megabytes are not.
ZEL_API void dumpMemoryBlocks();

/// Copies `count` bytes between areas that do not overlap. A negative count ends the process, with a line on
/// standard error.
ZEL_API void copyMemory(void* destination, void const* source, int count);

} // namespace Zel
