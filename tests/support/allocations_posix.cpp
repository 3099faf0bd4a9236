#include "support/allocations.h"

#include <algorithm>
#include <atomic>
#include <cstdint>
#include <cstdlib>
#include <new>

namespace {

std::atomic<long> s_live{0};
std::atomic<std::size_t> s_largest{0};
std::atomic<long> s_untilFailure{0}; // 0: none is to fail
std::atomic<std::size_t> s_mostAllowed{SIZE_MAX};

void* allocate(std::size_t size) {
    s_largest = std::max<std::size_t>(s_largest, size);
    if (s_untilFailure > 0 && --s_untilFailure == 0)
        return nullptr;
    if (size > s_mostAllowed)
        return nullptr;
    void* const block = std::malloc(std::max<std::size_t>(size, 1));
    if (block != nullptr)
        ++s_live;
    return block;
}

void* allocateOrThrow(std::size_t size) {
    void* const block = allocate(size);
    if (block == nullptr)
        throw std::bad_alloc();
    return block;
}

void release(void* block) {
    if (block != nullptr)
        --s_live;
    std::free(block);
}

} // namespace

void* operator new(std::size_t size) { return allocateOrThrow(size); }
void* operator new[](std::size_t size) { return allocateOrThrow(size); }
void* operator new(std::size_t size, std::nothrow_t const& /*tag*/) noexcept { return allocate(size); }
void* operator new[](std::size_t size, std::nothrow_t const& /*tag*/) noexcept { return allocate(size); }
void operator delete(void* block) noexcept { release(block); }
void operator delete[](void* block) noexcept { release(block); }
void operator delete(void* block, std::size_t /*size*/) noexcept { release(block); }
void operator delete[](void* block, std::size_t /*size*/) noexcept { release(block); }
void operator delete(void* block, std::nothrow_t const& /*tag*/) noexcept { release(block); }
void operator delete[](void* block, std::nothrow_t const& /*tag*/) noexcept { release(block); }

namespace test {

long liveAllocations() { return s_live; }

std::size_t largestAllocation() { return s_largest.exchange(0); }

FailingAllocation::FailingAllocation(long n) { s_untilFailure = n; }
FailingAllocation::~FailingAllocation() { s_untilFailure = 0; }
bool FailingAllocation::happened() { return s_untilFailure == 0; }

SmallMemory::SmallMemory(std::size_t largest) { s_mostAllowed = largest; }
SmallMemory::~SmallMemory() { s_mostAllowed = SIZE_MAX; }

} // namespace test
