// Finds by name, in one step, what stands in a sequence: an open-addressing hash table of positions (linear
// probing, D. E. Knuth, The Art of Computer Programming 3, section 6.4, algorithm L). The names stay where
// they are.
#pragma once

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
        // In batches, whose slots are on their way from memory while names are still being hashed.
        std::array<std::size_t, 16> slots{};
        for (std::size_t first = 0; first < count; first += slots.size()) {
            std::size_t const batch = std::min(slots.size(), count - first);
            for (std::size_t i = 0; i < batch; ++i) {
                slots[i] = slotOf(nameAt(first + i));
                __builtin_prefetch(&m_slots[slots[i]]);
            }
            for (std::size_t i = 0; i < batch; ++i) {
                std::size_t slot = slots[i];
                while (m_slots[slot] != 0)
                    slot = behind(slot);
                m_slots[slot] = static_cast<std::uint32_t>(first + i) + 1;
            }
        }
    }

    bool empty() const { return m_slots.empty(); }

    /// The position of a name, told by the same `nameAt`.
    template <class NameAt>
    std::optional<std::size_t> find(std::string_view name, NameAt nameAt) const {
        if (m_slots.empty())
            return std::nullopt;
        for (std::size_t slot = slotOf(name); m_slots[slot] != 0; slot = behind(slot)) {
            std::size_t const position = m_slots[slot] - 1;
            if (nameAt(position) == name)
                return position;
        }
        return std::nullopt;
    }

private:
    std::size_t slotOf(std::string_view name) const {
        return std::hash<std::string_view>()(name) & (m_slots.size() - 1);
    }
    std::size_t behind(std::size_t slot) const { return (slot + 1) & (m_slots.size() - 1); }

    std::vector<std::uint32_t> m_slots; // positions + 1, or 0 where it is free; as many as a power of two
};

} // namespace Zel
