#include "support/script_test.h"

namespace test {

std::string ScriptTest::resultOf(std::string const& text) const {
    writeFile("main", text);
    try {
        Zel::Script script("main");
        testing::internal::CaptureStdout(); // the dump's line feeds
        LogCapture const log;
        script.dump();
        testing::internal::GetCapturedStdout();
        return log.text();
    } catch (Zel::Exception const& exception) {
        return exception.getError();
    }
}

} // namespace test
