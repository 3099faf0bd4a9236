#include "support/script_test.h"

namespace test {

Zel::Script ScriptTest::parse(std::string const& text) const {
    writeFile("main", text);
    return Zel::Script("main");
}

std::string ScriptTest::resultOf(std::string const& text) const {
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

} // namespace test
