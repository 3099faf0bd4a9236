#include "support/library_test.h"

#include <fstream>
#include <iterator>

namespace {

class VerboseTest : public test::LibraryTest {
protected:
    VerboseTest() { Zel::clearVerbose(); }
    ~VerboseTest() override { Zel::clearVerbose(); }

    fs::path logFile() const {
        return test::commonDataFolder() / "Brisvane" / "Trelwyn" /
               ("verbose_" + test::computerName() + ".txt");
    }

    /// Opened in text mode: line ends are "\n" on every platform.
    std::string logText() const {
        std::ifstream stream(logFile());
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
};

TEST_F(VerboseTest, TheCallbackAloneMakesNoFile) {
    test::LogCapture const log;
    Zel::verbose("%d of %s", 3, "them");
    EXPECT_EQ(log.messages(), std::vector<std::string>{"3 of them"});
    EXPECT_FALSE(fs::exists(logFile()));
}

TEST_F(VerboseTest, TheFileGetsTheWholeTextAndALineEnd) {
    std::string const longText(3000, 'x');
    test::LogCapture const log;
    Zel::enableVerbose(true);
    Zel::verbose("%s", longText.c_str());
    Zel::verbose("ends in a line end\n");
    EXPECT_EQ(logText(), longText + "\nends in a line end\n\n");
    EXPECT_EQ(log.messages().front(), std::string(1023, 'x'));
    EXPECT_EQ(log.messages().back(), "ends in a line end\n");
}

TEST_F(VerboseTest, TheFileIsAppendedToUntilItIsCleared) {
    Zel::enableVerbose(true);
    Zel::verbose("one");
    Zel::enableVerbose(false);
    Zel::verbose("unheard");
    Zel::enableVerbose(true);
    Zel::verbose("two");
    EXPECT_EQ(logText(), "one\ntwo\n");
    Zel::clearVerbose();
    EXPECT_FALSE(fs::exists(logFile()));
    Zel::clearVerbose(); // a missing file is no failure
    Zel::verbose("three");
    EXPECT_EQ(logText(), "three\n");
    EXPECT_TRUE(test::isPrivate(logFile().parent_path()));
}

TEST_F(VerboseTest, TheCallbackCanBeReadBackAndSwitchedOff) {
    auto const callback = [](char const*) {
        FAIL() << "switched off";
    };
    Zel::setVerboseCallback(callback);
    EXPECT_EQ(Zel::getVerboseCallback(), static_cast<void (*)(char const*)>(callback));
    Zel::setVerboseCallback(nullptr);
    Zel::verbose("unheard");
    EXPECT_EQ(Zel::getVerboseCallback(), nullptr);
}

} // namespace
