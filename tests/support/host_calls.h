// Calls of this program, the library's included, to its host: they are counted, one of them is made to fail,
// or something happens right behind it.
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

/// How many such calls there have been, each entry read from a directory included.
long hostCalls();

/// Called with the path of each directory below another and each file that has been made, or tried to be
/// made, when it is set: a test does there what somebody else may do at the same moment.
extern std::function<void(std::string const& path)> g_afterMaking;

} // namespace test
