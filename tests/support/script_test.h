// What the tests of scripts share: a script from a text, and its tree as text.
#pragma once

#include "support/library_test.h"

namespace test {

class ScriptTest : public LibraryTest {
protected:
    /// What a script of this text, named "main", comes to: its dump, or the message of the exception.
    std::string resultOf(std::string const& text) const;
};

} // namespace test
