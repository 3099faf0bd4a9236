// How names and messages are printed.

#include "command_line/printable_text.h"

#include <gtest/gtest.h>
#include <set>
#include <sstream>
#include <vector>

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

TEST(PrintableTextTest, NoTwoNamesArePrintedAlike) {
    std::vector<std::string> names{""}; // all of up to three of these characters
    for (std::size_t i = 0; names[i].size() < 3; ++i)
        for (char const last : std::string("\\\"nrtx0a9f\n\r\t\x1B\x7F\x80\x9C\xC2\xD8\xE2\x81\xA6\xFF"))
            names.push_back(names[i] + last);
    std::set<std::string> all;
    for (std::string const& name : names) {
        std::string const printed = zel::printableName(name);
        EXPECT_TRUE(all.insert(printed).second) << printed;
        EXPECT_EQ(zel::printableLine(printed), printed) << "nothing is left to escape";
    }
}

} // namespace
