// How names and messages are printed.

#include "printable_text.h"

#include <gtest/gtest.h>
#include <random>
#include <sstream>

namespace {

void expectEscaped(std::string const& name, std::string const& escaped) {
    EXPECT_EQ(zel::printableName(name), '"' + escaped + '"');
    EXPECT_EQ(zel::printableInQuotes(name), escaped);
}

/// Bytes of 0x80 and above, each as \x and two digits.
std::string inHexadecimal(std::string const& name) {
    std::ostringstream text;
    for (char const byte : name)
        text << "\\x" << std::hex << int{static_cast<unsigned char>(byte)};
    return text.str();
}

TEST(PrintableTextTest, NamesAreQuotedOnlyWhereSomethingIsEscaped) {
    // Among them the neighbours of what controls a terminal or the order of text, and of what is no UTF-8.
    for (std::string const name :
         {"maps\\new\\x1b.bin", " ~'", "Ma\xC3\x9F!", "\xF0\x9F\x98\x80", "\xC2\xA0", "\xD8\x9B", "\xD8\x9D",
          "\xE2\x80\x8D", "\xE2\x80\xA7", "\xE2\x80\xAF", "\xE2\x81\xA5", "\xE2\x81\xAA", "\xE0\xA0\x80",
          "\xED\x9F\xBF", "\xEE\x80\x80", "\xF4\x8F\xBF\xBF"}) {
        EXPECT_EQ(zel::printableName(name), name);
        EXPECT_EQ(zel::printableInQuotes(name), name);
    }
    expectEscaped("", "");
    expectEscaped("a\"b", R"(a\"b)");
    expectEscaped("maps\\a\nb", R"(maps\\a\nb)");
    expectEscaped("\x1B[31mred\x7F\t\r", R"(\x1b[31mred\x7f\t\r)");
    expectEscaped(std::string("a\0b", 3), R"(a\x00b)");
    // The ends of what controls a terminal or the order of text:
    for (char const* name : {"\xC2\x80", "\xC2\x9F", "\xD8\x9C", "\xE2\x80\x8E", "\xE2\x80\x8F",
                             "\xE2\x80\xA8", "\xE2\x80\xAE", "\xE2\x81\xA6", "\xE2\x81\xA9"})
        expectEscaped(name, inHexadecimal(name));
    // What is no UTF-8: no first byte, cut off, too long a form, half a pair, past the last character.
    expectEscaped("a\xFF", R"(a\xff)");
    expectEscaped("\x80z", R"(\x80z)");
    expectEscaped("\xC3z", R"(\xc3z)");
    for (char const* name : {"\xE2\x82", "\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xED\xBF\xBF",
                             "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80"})
        expectEscaped(name, inHexadecimal(name));
    EXPECT_EQ(zel::printableLine("a\\b \"c\": \n\x9B"), R"(a\b "c": \n\x9b)");
}

/// What was printed as this name.
std::string unprinted(std::string const& printed) {
    if (!printed.starts_with('"'))
        return printed;
    std::string name;
    for (std::size_t i = 1; i + 1 < printed.size(); ++i) {
        if (printed[i] != '\\') {
            name += printed[i];
            continue;
        }
        char const letter = printed[++i];
        std::size_t const named = std::string_view("nrt\\\"").find(letter);
        if (named != std::string_view::npos) {
            name += "\n\r\t\\\""[named];
        } else {
            name += static_cast<char>(std::stoi(printed.substr(i + 1, 2), nullptr, 16));
            i += 2;
        }
    }
    return name;
}

TEST(PrintableTextTest, EveryNameCanBeToldFromWhatIsPrinted) {
    std::mt19937 random(1);
    constexpr std::string_view kPieces = "\\\\\\\"\"nrtx0a9f\n\r\t\x1B\x7F\x80\x9C\xC2\xD8\xE2\x81\xA6\xFF";
    for (int i = 0; i < 20'000; ++i) {
        std::string name;
        for (auto length = random() % 8; length > 0; --length)
            name += kPieces[random() % kPieces.size()];
        std::string const printed = zel::printableName(name);
        EXPECT_EQ(unprinted(printed), name);
        EXPECT_EQ(zel::printableLine(printed), printed) << "nothing is left to escape";
    }
}

} // namespace
