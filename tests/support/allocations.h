// The allocations of this program, the library's included: counted, and made to fail.
//
// On POSIX the program replaces operator new and delete for itself and the library. On Windows it cannot do
// so for the library: there nothing is counted, and nothing fails.
#pragma once

#include <cstddef>

namespace test {

/// Allocations that nobody has released yet.
long liveAllocations();

/// The most bytes that one allocation asked for since the last call.
std::size_t largestAllocation();

/// While it lives, the n-th allocation from now on, counted from 1, throws std::bad_alloc; those after it
/// succeed.
class FailingAllocation {
public:
    explicit FailingAllocation(long n);
    FailingAllocation(FailingAllocation const&) = delete;
    FailingAllocation& operator=(FailingAllocation const&) = delete;
    ~FailingAllocation();

    /// Whether it has failed.
    static bool happened();
};

/// While it lives, every allocation of more than so many bytes throws std::bad_alloc.
class SmallMemory {
public:
    explicit SmallMemory(std::size_t largest);
    SmallMemory(SmallMemory const&) = delete;
    SmallMemory& operator=(SmallMemory const&) = delete;
    ~SmallMemory();
};

} // namespace test
