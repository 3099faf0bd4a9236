// What the tests of the program share: its commands, run in this process, in the scratch directory.
#pragma once

#include "command_line/commands.h"
#include "support/library_test.h"

#include <sstream>
#include <utility>

namespace test {

/// A terminal on which a progress bar appears: something happens then, before the work begins.
class Watcher : public std::ostream {
public:
    explicit Watcher(std::function<void()> act) : std::ostream(&m_buffer), m_buffer(std::move(act)) {}

private:
    class Buffer : public std::stringbuf {
    public:
        explicit Buffer(std::function<void()> act) : m_act(std::move(act)) {}

    protected:
        int sync() override {
            if (auto const act = std::exchange(m_act, nullptr))
                act();
            return 0;
        }

    private:
        std::function<void()> m_act;
    };

    Buffer m_buffer;
};

class ProgramTest : public LibraryTest {
protected:
    using Command = std::vector<std::string>;
    using Printed = testing::Matcher<std::string const&>; ///< the whole text, or what a matcher asks of it

    ProgramTest() { fs::current_path(path(".")); }

    /// Runs the program and returns its exit code.
    int zel(Command const& arguments, std::string const& input = "", std::ostream* terminal = nullptr) {
        std::istringstream in(input);
        m_out.str("");
        m_err.str("");
        Zel::File::sm_datadir = Zel::Path();
        return zel::run(arguments, {in, m_out, m_err, terminal});
    }

    /// Expects the program to succeed, and what it prints.
    void expectOut(Command const& arguments, Printed const& printed) {
        EXPECT_EQ(zel(arguments), 0) << testing::PrintToString(arguments) << err();
        EXPECT_THAT(out(), printed) << testing::PrintToString(arguments);
    }

    /// Expects the program to fail with this exit code, and what it says about it.
    void expectErr(Command const& arguments, int exitCode, Printed const& said) {
        EXPECT_EQ(zel(arguments), exitCode) << testing::PrintToString(arguments);
        EXPECT_THAT(err(), said) << testing::PrintToString(arguments);
    }

    std::string out() const { return m_out.str(); }
    std::string err() const { return m_err.str(); }

private:
    std::ostringstream m_out;
    std::ostringstream m_err;
};

} // namespace test
