// Signals.

#include "host/interruption.h"

#include <array>
#include <csignal>
#include <unistd.h>
#include <utility>

namespace zel {
namespace {

constexpr std::array kSignals = {SIGHUP, SIGINT, SIGTERM, SIGXFSZ}; // the last: a limit on the size of files

char const* volatile s_file = nullptr;
std::array<struct sigaction, kSignals.size()> s_former;

/// Its default action, which ends the process, is set again when it is called, and takes place when it
/// returns.
extern "C" void removeAndEnd(int signal) {
    if (s_file != nullptr)
        unlink(s_file);
    raise(signal);
}

bool isDefault(struct sigaction const& action) {
    return (action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == SIG_DFL;
}

} // namespace

RemovedOnInterruption::RemovedOnInterruption(std::filesystem::path file) : m_file(std::move(file)) {
    s_file = m_file.c_str();
    struct sigaction action = {};
    action.sa_handler = removeAndEnd;
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_RESTART);
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        sigaction(kSignals[i], nullptr, &s_former[i]);
        if (isDefault(s_former[i]))
            sigaction(kSignals[i], &action, nullptr);
    }
}

RemovedOnInterruption::~RemovedOnInterruption() {
    for (std::size_t i = 0; i < kSignals.size(); ++i) {
        if (isDefault(s_former[i]))
            sigaction(kSignals[i], &s_former[i], nullptr);
    }
    s_file = nullptr;
}

} // namespace zel
