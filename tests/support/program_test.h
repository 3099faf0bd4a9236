// What the tests of the program share: its commands, run in this process, in the scratch directory.
#pragma once

#include "commands.h"
#include "support/library_test.h"

#include <sstream>

namespace test {

class ProgramTest : public LibraryTest {
protected:
    ProgramTest() { std::filesystem::current_path(path(".")); }

    /// Runs the program and returns its exit code.
    int zel(std::vector<std::string> const& arguments, std::string const& input = "") {
        std::istringstream in(input);
        m_out.str("");
        m_err.str("");
        Zel::File::sm_datadir = Zel::Path();
        return zel::run(arguments, {in, m_out, m_err});
    }

    std::string out() const { return m_out.str(); }
    std::string err() const { return m_err.str(); }

private:
    std::ostringstream m_out;
    std::ostringstream m_err;
};

} // namespace test
