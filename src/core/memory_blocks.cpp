// The memory block tracker: a map of blocks, a few counters and a report.

#include <zel/memory_blocks.h>

#include "core/usage_error.h"

#include <algorithm>
#include <map>
#include <string>
#include <string_view>
#include <tuple>
#include <zel/verbose.h>

namespace Zel {
namespace {

struct Block {
    char const* name;
    char const* group;
    std::uint64_t number;
    std::uint64_t size;
};

/// Bytes and how many blocks hold them.
struct Amount {
    std::uint64_t bytes, blocks;
};

std::map<std::uintptr_t, Block> s_blocks; // by address
Amount s_current{};
Amount s_peak{}; // Meant: the two maxima may be of different moments.
std::uint64_t s_registrations = 0;
std::uint64_t s_removals = 0;

/// Blocks that the report shows as one line: how many, and the size of the first.
struct Line {
    std::uint64_t size, count;
};

/// Group, name and number, which order the report.
using LineKey = std::tuple<std::string_view, std::string_view, std::uint64_t>;
using Lines = std::map<LineKey, Line>;

Lines summarize() {
    Lines lines;
    for (auto const& [address, block] : s_blocks)
        ++lines.try_emplace({block.group, block.name, block.number}, Line{block.size, 0}).first->second.count;
    return lines;
}

double megabytes(std::uint64_t bytes) {
    constexpr float kMegabytes = 9.5367431640625e-07F;
    return static_cast<double>(static_cast<float>(bytes) * kMegabytes);
}

/// What "%u" prints of a number: its low 32 bits.
std::uint32_t low(std::uint64_t number) { return static_cast<std::uint32_t>(number); }

void dumpRule() {
    constexpr int kWidth = 76;
    verbose("%s\n\n", std::string(kWidth, '=').c_str());
}

/// The heading of the group that begins with this line.
void dumpGroup(Lines const& lines, Lines::const_iterator line) {
    std::string_view const group = std::get<0>(line->first);
    Amount sum{};
    for (; line != lines.end() && std::get<0>(line->first) == group; ++line) {
        sum.bytes += line->second.size * line->second.count;
        sum.blocks += line->second.count;
    }
    verbose("\n%s (%.3f MB, %u allocs):\n", group.data(), megabytes(sum.bytes), low(sum.blocks));
}

void dumpLine(LineKey const& key, Line const& line) {
    auto const& [group, name, number] = key;
    std::uint32_t const bytes = low(line.size * line.count);
    if (number != 0)
        verbose("%9u = %6u x %9u   %s[%u]\n", bytes, low(line.count), low(line.size), name.data(),
                low(number));
    else
        verbose("%9u = %6u x %9u   %s\n", bytes, low(line.count), low(line.size), name.data());
}

} // namespace

void* createMemoryBlock(void const* address, std::uint64_t size, std::uint64_t number, char const* name,
                        char const* group) {
    // First what may run out of memory: then nothing is counted.
    s_blocks[reinterpret_cast<std::uintptr_t>(address)] = {name, group, number, size};
    s_current.bytes += size;
    s_current.blocks += 1;
    s_peak.bytes = std::max(s_peak.bytes, s_current.bytes);
    s_peak.blocks = std::max(s_peak.blocks, s_current.blocks);
    s_registrations += 1;
    return const_cast<void*>(address);
}

void deleteMemoryBlock(void const* address) {
    if (address == nullptr)
        return;
    auto const found = s_blocks.find(reinterpret_cast<std::uintptr_t>(address));
    if (found == s_blocks.end())
        usageError("deleteMemoryBlock: no block at %p", address);
    s_current.blocks -= 1;
    s_removals += 1;
    s_current.bytes -= found->second.size;
    s_blocks.erase(found);
}

void dumpMemoryBlocks() {
    verbose("Memory dump\n");
    dumpRule();
    verbose("Current (%.3f MB, %u allocs)\n", megabytes(s_current.bytes), low(s_current.blocks));
    verbose("Peak    (%.3f MB, %u allocs)\n", megabytes(s_peak.bytes), low(s_peak.blocks));
    verbose("\n");
    verbose("Total allocs:   %u\n", low(s_registrations));
    verbose("Total deallocs: %u\n", low(s_removals));

    Lines const lines = summarize();
    std::string_view const* group = nullptr;
    for (auto line = lines.begin(); line != lines.end(); ++line) {
        if (group == nullptr || *group != std::get<0>(line->first))
            dumpGroup(lines, line);
        group = &std::get<0>(line->first);
        dumpLine(line->first, line->second);
    }
    verbose("\n");
    dumpRule();
}

void copyMemory(void* destination, void const* source, int count) {
    if (count < 0)
        usageError("copyMemory: count %d", count);
    std::copy_n(static_cast<unsigned char const*>(source), count, static_cast<unsigned char*>(destination));
}

} // namespace Zel
