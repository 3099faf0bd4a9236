// Calls of this program, the library's included, to its host: one of them is made to fail, or something
// happens right behind it.
//
// On Linux only, where the program puts itself between the library and the C library.
#pragma once

#include <functional>
#include <string>

namespace test {

/// While it lives, the n-th call from now on, counted from 1, fails, and those after it succeed. Calls are
/// those that open, read, write, seek, close, look up, make or remove. A close that fails has closed all the
/// same.
class FailingHostCall {
public:
    explicit FailingHostCall(long n);
    FailingHostCall(FailingHostCall const&) = delete;
    FailingHostCall& operator=(FailingHostCall const&) = delete;
    ~FailingHostCall();

    /// Whether it has failed.
    static bool happened();
};

/// Called with the path of each directory and file that mkdir or open has made or tried to make, when it is
/// set: a test does there what somebody else may do at the same moment.
extern std::function<void(std::string const& path)> g_afterMaking;

} // namespace test
