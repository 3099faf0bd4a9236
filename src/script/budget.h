// The bound on the memory and the work that a script and its includes may need.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <memory_resource>
#include <new>
#include <vector>

namespace Zel {

/// A few lines can ask for any amount of either: each file may include the next one twice. So the memory that
/// is held, and the work that is done, are each at most 64 MiB plus 256 times the size of the files, each
/// file counted once. A script that repeats nothing stays far below that.
///
/// Memory that is allocated from here counts until it is freed.
class Budget : public std::pmr::memory_resource {
public:
    struct Exceeded : std::bad_alloc {};

    /// Raises the bound for a file that is read for the first time. Its text counts as held.
    void addFile(std::size_t size) {
        m_limit += kTimes * size;
        m_held += size;
    }

    /// Counts memory that is allocated elsewhere and never given back. Throws Exceeded.
    void hold(std::size_t size) {
        if (size > m_limit - m_held)
            throw Exceeded();
        m_held += size;
    }

    /// Counts work, in bytes that take as long to read. Returns whether the work is still within the bound.
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

/// Memory for what stays to the end. It counts in full, is asked for in larger pieces, and is freed with this
/// object, all at once.
class KeptMemory : public std::pmr::memory_resource {
public:
    explicit KeptMemory(Budget& budget) : m_budget(budget) {}

    /// Says how much will be needed, at a guess. What is asked for and not used is never touched.
    void expect(std::size_t size) { m_pieceSize = std::clamp(size, kSmallest, kLargest); }

private:
    static constexpr std::size_t kSmallest = 1024;
    static constexpr std::size_t kLargest = std::size_t{32} << 20;

    void* do_allocate(std::size_t size, std::size_t alignment) override {
        m_budget.hold(size);
        if (std::align(alignment, size, m_free, m_left) == nullptr) {
            std::size_t const piece = std::max(size, m_pieceSize); // new aligns for any type
            m_free = m_pieces.emplace_back(std::make_unique_for_overwrite<std::byte[]>(piece)).get();
            m_left = piece;
        }
        void* const memory = m_free;
        m_free = static_cast<std::byte*>(m_free) + size;
        m_left -= size;
        return memory;
    }

    void do_deallocate(void* /*memory*/, std::size_t /*size*/, std::size_t /*alignment*/) override {}

    bool do_is_equal(std::pmr::memory_resource const& other) const noexcept override {
        return this == &other;
    }

    Budget& m_budget;
    std::size_t m_pieceSize = kSmallest;
    std::vector<std::unique_ptr<std::byte[]>> m_pieces;
    void* m_free = nullptr; // in the last piece
    std::size_t m_left = 0;
};

} // namespace Zel
