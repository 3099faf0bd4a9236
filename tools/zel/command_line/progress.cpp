// Drawing the bar only when its percentage has changed.

#include "command_line/progress.h"

#include <utility>

namespace zel {
namespace {

constexpr int kWidth = 40; // of the bar, in characters

} // namespace

Progress::Progress(std::ostream* terminal, std::string label, std::uint64_t total)
    : m_terminal(terminal), m_label(std::move(label)), m_total(total) {
    advance(0);
}

Progress::~Progress() {
    if (m_terminal != nullptr)
        *m_terminal << '\r' << std::string(m_label.size() + kWidth + 8, ' ') << '\r' << std::flush;
}

void Progress::advance(std::uint64_t units) {
    m_done += units;
    int const percent = m_total == 0 ? 100 : static_cast<int>(m_done * 100 / m_total);
    if (m_terminal == nullptr || percent == m_shownPercent)
        return;
    m_shownPercent = percent;
    auto const filled = static_cast<std::size_t>(percent * kWidth / 100);
    *m_terminal << '\r' << m_label << " [" << std::string(filled, '#') << std::string(kWidth - filled, '.')
                << "] " << percent << '%' << std::flush;
}

} // namespace zel
