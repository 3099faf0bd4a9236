// How a command ends other than well.
#pragma once

#include <stdexcept>
#include <string>

namespace zel {

enum ExitCode : int {
    kSuccess = 0,
    kFinding = 1, ///< the command worked and found something wrong in what it was given
    kUsage = 2,
    kOperatingFailure = 3 ///< the command could not do its work
};

/// Ends the command with a message, which the program prints behind "zel: ".
class Failure : public std::runtime_error {
public:
    Failure(ExitCode exitCode, std::string const& message)
        : std::runtime_error(message), m_exitCode(exitCode) {}

    ExitCode exitCode() const { return m_exitCode; }

private:
    ExitCode m_exitCode;
};

} // namespace zel
