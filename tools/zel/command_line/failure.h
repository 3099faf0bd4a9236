// How a command ends other than well.
#pragma once

#include "command_line/printable_text.h"

#include <new>
#include <stdexcept>
#include <string>

namespace zel {

enum ExitCode : int {
    kSuccess = 0,
    kFinding = 1, ///< the command worked and found something wrong in what it was given
    kUsage = 2,
    kOperatingFailure = 3 ///< the command could not do its work
};

/// Ends the command with a message, which the program prints behind "zel: ". Names in it are printable.
class Failure : public std::runtime_error {
public:
    Failure(ExitCode exitCode, std::string const& message)
        : std::runtime_error(message), m_exitCode(exitCode) {}

    ExitCode exitCode() const { return m_exitCode; }

private:
    ExitCode m_exitCode;
};

inline Failure outOfMemory(std::string const& whatIsRead) {
    return {kOperatingFailure, "out of memory while reading " + printableName(whatIsRead)};
}

/// Does what reads something. Throws Failure, naming it, when memory runs out.
template <class Act>
auto whileReading(std::string const& whatIsRead, Act act) {
    try {
        return act();
    } catch (std::bad_alloc const&) {
        throw outOfMemory(whatIsRead);
    }
}

} // namespace zel
