// What the tests of scripts share: a script from a text, and its tree as text.
#pragma once

#include "support/library_test.h"

namespace test {

class ScriptTest : public LibraryTest {
protected:
    /// A script of this text, named "main".
    Zel::Script parse(std::string const& text) const {
        writeFile("main", text);
        return {"main"};
    }

    /// What such a script comes to: its dump, or the message of the exception.
    std::string resultOf(std::string const& text) const {
        try {
            Zel::Script script = parse(text);
            testing::internal::CaptureStdout(); // the dump's line feeds
            LogCapture const log;
            script.dump();
            testing::internal::GetCapturedStdout();
            return log.text();
        } catch (Zel::Exception const& exception) {
            return exception.getError();
        }
    }
};

} // namespace test
