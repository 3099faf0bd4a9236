// How much a set of script files may come to.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory_resource>
#include <new>

namespace Zel {

/// A few lines can ask for any number of inclusions, and for any length: each may double what the last has
/// made. So what is held for a set of script files, and what is done, are each at most 64 MiB and 256 times
/// the bytes of its files, each file counted once. A script that repeats nothing stays far below that.
///
/// Memory that is taken from here counts as long as it is held.
class Budget : public std::pmr::memory_resource {
public:
    struct Exceeded : std::bad_alloc {};

    /// Makes room for the first reading of a file of the set, and for what its text comes to.
    void addFile(std::size_t size) {
        m_limit += kTimes * size;
        m_held += size;
    }

    /// Counts memory that is held beside what is taken from here, for good. Throws Exceeded.
    void hold(std::size_t size) {
        if (size > m_limit - m_held)
            throw Exceeded();
        m_held += size;
    }

    /// Counts work, in bytes that take as long to read. False when that is more than may be done.
    bool spend(std::size_t size) {
        m_done += size;
        return m_done <= m_limit;
    }

private:
    static constexpr std::uint64_t kTimes = 256;

    void* do_allocate(std::size_t size, std::size_t /*alignment*/) override {
        hold(size);
        return ::operator new(size);
    }

    void do_deallocate(void* memory, std::size_t size, std::size_t /*alignment*/) override {
        m_held -= size;
        ::operator delete(memory);
    }

    bool do_is_equal(std::pmr::memory_resource const& other) const noexcept override {
        return this == &other;
    }

    std::uint64_t m_limit = std::uint64_t{64} << 20;
    std::uint64_t m_held = 0;
    std::uint64_t m_done = 0;
};

} // namespace Zel
