// Finds by name, mostly in one step, what stands in a sequence: an open-addressing hash table of positions
// (linear probing, D. E. Knuth, The Art of Computer Programming 3, section 6.4, algorithm L). The names stay
// where they are.
//
// Names may come from anybody: equal ones, or ones made to collide, would make a crowd that every step walks
// through. So a name is sought in a bounded number of slots, and those that find no free one among them are
// kept in order, for a binary search. Whatever the names are, building takes n log n steps, and a look-up log
// n.
#pragma once

#include "core/compiler.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace Zel {

class NameIndex {
public:
    NameIndex() = default;

    /// Of `count` names; `nameAt` tells the one at a position. Of equal names, the first is found.
    template <class NameAt>
    NameIndex(std::size_t count, NameAt nameAt) : m_slots(std::bit_ceil(count + count / 2 + 1)) {
        fillSlots(count, nameAt);
        std::stable_sort(m_crowded.begin(), m_crowded.end(),
                         [&nameAt](std::uint32_t a, std::uint32_t b) { return nameAt(a) < nameAt(b); });
    }

    bool empty() const { return m_slots.empty(); }

    /// The position of a name, told by the same `nameAt`.
    template <class NameAt>
    std::optional<std::size_t> find(std::string_view name, NameAt nameAt) const {
        if (m_slots.empty())
            return std::nullopt;
        std::size_t slot = slotOf(name);
        std::size_t const last = lastProbe(slot);
        do {
            if (m_slots[slot] == 0)
                return std::nullopt;
            std::size_t const position = m_slots[slot] - 1;
            if (nameAt(position) == name)
                return position;
            slot = behind(slot);
        } while (slot != last);
        return findCrowded(name, nameAt);
    }

private:
    /// Names that fall as they like seldom need as many while a third of the slots is free.
    static constexpr std::size_t kMostProbes = 32;

    template <class NameAt>
    void fillSlots(std::size_t count, NameAt nameAt) {
        // In batches, whose slots are on their way from memory while names are still being hashed.
        std::array<std::size_t, 64> slots{};
        for (std::size_t first = 0; first < count; first += slots.size()) {
            std::size_t const batch = std::min(slots.size(), count - first);
            for (std::size_t i = 0; i < batch; ++i) {
                slots[i] = slotOf(nameAt(first + i));
                compiler::prefetch(&m_slots[slots[i]]);
            }
            for (std::size_t i = 0; i < batch; ++i)
                place(static_cast<std::uint32_t>(first + i), slots[i]);
        }
    }

    /// Equal names are not looked at: the first of them stands in the first slot that any of them would be
    /// found in, or first among the crowded ones.
    void place(std::uint32_t position, std::size_t slot) {
        std::size_t const last = lastProbe(slot);
        do {
            if (m_slots[slot] == 0) {
                m_slots[slot] = position + 1;
                return;
            }
            slot = behind(slot);
        } while (slot != last);
        m_crowded.push_back(position);
    }

    template <class NameAt>
    std::optional<std::size_t> findCrowded(std::string_view name, NameAt nameAt) const {
        auto const found = std::lower_bound(
            m_crowded.begin(), m_crowded.end(), name,
            [&nameAt](std::uint32_t position, std::string_view wanted) { return nameAt(position) < wanted; });
        if (found == m_crowded.end() || nameAt(*found) != name)
            return std::nullopt;
        return *found;
    }

    std::size_t slotOf(std::string_view name) const {
        return std::hash<std::string_view>()(name) & (m_slots.size() - 1);
    }
    std::size_t behind(std::size_t slot) const { return (slot + 1) & (m_slots.size() - 1); }

    /// Where probing ends that begins at a slot: in a smaller table, when it has come round.
    std::size_t lastProbe(std::size_t slot) const { return (slot + kMostProbes) & (m_slots.size() - 1); }

    std::vector<std::uint32_t> m_slots;   // positions + 1, or 0 where it is free; as many as a power of two
    std::vector<std::uint32_t> m_crowded; // the positions without a slot, in the order of their names
};

} // namespace Zel
