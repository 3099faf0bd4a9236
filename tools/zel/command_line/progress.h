// A progress bar for long work, on a terminal only.
#pragma once

#include <cstdint>
#include <ostream>
#include <string>

namespace zel {

/// Draws on one line, which is wiped when the work ends.
class Progress {
public:
    /// `total` counts the units that `advance` is told of. Draws nothing when `terminal` is null.
    Progress(std::ostream* terminal, std::string label, std::uint64_t total);
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;
    ~Progress();

    void advance(std::uint64_t units);

private:
    std::ostream* m_terminal;
    std::string m_label;
    std::uint64_t m_total;
    std::uint64_t m_done = 0;
    int m_shownPercent = -1;
};

} // namespace zel
