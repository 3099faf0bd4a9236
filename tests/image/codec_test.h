// What the tests of the codecs share: files of one name, and what they load as.
#pragma once

#include "image/colors.h"
#include "support/library_test.h"
#include "support/pictures.h"

namespace test {

/// Pixels of 24 bits, as files hold them.
inline std::string packed(Colors const& colors) {
    std::string text;
    for (Zel::Color const& color : colors)
        text += bytes({color.b, color.g, color.r});
    return text;
}

class CodecTest : public LibraryTest {
protected:
    explicit CodecTest(std::string name = "") : m_name(std::move(name)) {}

    Colors load(std::string const& content) const {
        writeFile(m_name, content);
        return pixelsOf(Zel::Image(m_name));
    }

    struct Fault {
        std::string message; // of the one exception that has it
        std::vector<std::string> contents;
    };

    void expectFaults(std::vector<Fault> const& faults) const {
        for (auto const& [message, contents] : faults)
            for (std::string const& content : contents)
                EXPECT_EQ(errorOfLoading(content), message);
    }

private:
    std::string errorOfLoading(std::string const& content) const {
        try {
            load(content);
        } catch (Zel::Exception const& exception) {
            return exception.getError();
        }
        return "no exception";
    }

    std::string m_name;
};

} // namespace test
