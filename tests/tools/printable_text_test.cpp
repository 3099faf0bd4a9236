// How names and messages are printed.

#include "printable_text.h"

#include <gtest/gtest.h>
#include <random>

namespace {

TEST(PrintableTextTest, NamesAreQuotedOnlyWhereSomethingIsEscaped) {
    struct {
        char const* name;
        char const* printed; // null: as it is
    } const cases[] = {
        {"maps\\new\\x1b.bin", nullptr},
        {" ~'", nullptr},
        {"Stra\xC3\x9F"
         "e",
         nullptr},
        {"\xF0\x9F\x98\x80", nullptr},
        {"", "\"\""},
        {"a\"b", R"("a\"b")"},
        {"maps\\a\nb", R"("maps\\a\nb")"},
        {"\x1B[31mred\x7F\t\r", R"("\x1b[31mred\x7f\t\r")"},
        // The ends of what controls a terminal or the order of text, and their neighbours:
        {"\xC2\x80", R"("\xc2\x80")"},
        {"\xC2\x9F", R"("\xc2\x9f")"},
        {"\xC2\xA0", nullptr},
        {"\xD8\x9B", nullptr},
        {"\xD8\x9C", R"("\xd8\x9c")"},
        {"\xD8\x9D", nullptr},
        {"\xE2\x80\x8D", nullptr},
        {"\xE2\x80\x8E", R"("\xe2\x80\x8e")"},
        {"\xE2\x80\x8F", R"("\xe2\x80\x8f")"},
        {"\xE2\x80\xA7", nullptr},
        {"\xE2\x80\xA8", R"("\xe2\x80\xa8")"},
        {"\xE2\x80\xAE", R"("\xe2\x80\xae")"},
        {"\xE2\x80\xAF", nullptr},
        {"\xE2\x81\xA5", nullptr},
        {"\xE2\x81\xA6", R"("\xe2\x81\xa6")"},
        {"\xE2\x81\xA9", R"("\xe2\x81\xa9")"},
        {"\xE2\x81\xAA", nullptr},
        // What is no UTF-8: no first byte, cut off, too long a form, half a pair, past the last character.
        {"a\xFF", R"("a\xff")"},
        {"\x80"
         "a",
         R"("\x80a")"},
        {"\xC3"
         "a",
         R"("\xc3a")"},
        {"\xE2\x82", R"("\xe2\x82")"},
        {"\xC1\xBF", R"("\xc1\xbf")"},
        {"\xE0\x9F\xBF", R"("\xe0\x9f\xbf")"},
        {"\xE0\xA0\x80", nullptr},
        {"\xED\x9F\xBF", nullptr},
        {"\xED\xA0\x80", R"("\xed\xa0\x80")"},
        {"\xED\xBF\xBF", R"("\xed\xbf\xbf")"},
        {"\xEE\x80\x80", nullptr},
        {"\xF0\x8F\xBF\xBF", R"("\xf0\x8f\xbf\xbf")"},
        {"\xF4\x8F\xBF\xBF", nullptr},
        {"\xF4\x90\x80\x80", R"("\xf4\x90\x80\x80")"},
    };
    for (auto const& [name, printed] : cases) {
        std::string const expected = printed == nullptr ? name : printed;
        EXPECT_EQ(zel::printableName(name), expected);
        EXPECT_EQ(zel::printableInQuotes(name),
                  printed == nullptr ? expected : expected.substr(1, expected.size() - 2));
    }
    EXPECT_EQ(zel::printableName(std::string("a\0b", 3)), R"("a\x00b")");
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
