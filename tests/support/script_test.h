// What the tests of scripts share: a script from a text, and its tree as text.
#pragma once

#include "support/library_test.h"

namespace test {

class ScriptTest : public LibraryTest {
protected:
    /// A script of this text, named "main".
    Zel::Script parse(std::string const& text) const;

    /// What such a script comes to: its dump, or the message of the exception.
    std::string resultOf(std::string const& text) const;
};

} // namespace test
