// What the tests of the codecs share: files, and what they load as.
#pragma once

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
    Colors load(std::string const& name, std::string const& content) const {
        writeFile(name, content);
        return pixelsOf(Zel::Image(name));
    }

    /// Each file, by its content, loads as these pixels.
    void expectPixels(std::string const& name,
                      std::vector<std::pair<std::string, Colors>> const& files) const {
        for (std::size_t i = 0; i < files.size(); ++i)
            EXPECT_EQ(load(name, files[i].first), files[i].second) << "file " << i;
    }

    /// Each message is the one that loading any of its contents ends with.
    using Faults = std::vector<std::pair<std::string, std::vector<std::string>>>;
    void expectFaults(std::string const& name, Faults const& faults) const {
        for (auto const& [message, contents] : faults)
            for (std::string const& content : contents)
                try {
                    load(name, content);
                    ADD_FAILURE() << "no exception: " << message;
                } catch (Zel::Exception const& exception) {
                    EXPECT_EQ(exception.getError(), message);
                }
    }
};

} // namespace test
