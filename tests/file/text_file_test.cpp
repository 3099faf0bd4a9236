// Tokens, numbers and lines, from a loose file and from an entry of an archive alike.

#include "support/library_test.h"

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <optional>
#include <random>

namespace {

using namespace std::string_literals;
using Zel::File;
using Zel::TextFile;
using Vector3 = Zel::Vector3Template<float>;

// What must not compile: a type without an operator of its own would silently be written as another.
template <class T>
concept Writable = requires(TextFile& file, T const& value) {
    file << value;
};
template <class T>
concept Readable = requires(TextFile& file, T& value) {
    file >> value;
};
static_assert(!Writable<bool> && !Writable<char> && !Writable<unsigned char> && !Writable<Zel::FColor>);
static_assert(!Writable<signed char> && !Writable<wchar_t> && !Writable<double> && !Writable<long long>);
static_assert(!Writable<int*> && !Writable<void const*> && !Readable<double> && !Readable<signed char>);
static_assert(Writable<std::string> && Writable<char[5]> && Writable<float> && Writable<Vector3>);
static_assert(Writable<short> && Writable<unsigned short> && Writable<int> && Writable<unsigned> &&
              Writable<long> && Writable<unsigned long>);

enum class Kind { Loose, Archived };

class TextFileTest : public test::LibraryTest, public testing::WithParamInterface<Kind> {
protected:
    /// A file with that content, opened.
    TextFile file(std::string const& content) {
        m_archive.reset();
        if (GetParam() == Kind::Loose)
            writeFile("text", content);
        else
            m_archive.emplace(packArchive("a.bva", {{"before", "x"}, {"text", content}, {"z", "behind it"}}));
        return {"text", File::READ_TEXT};
    }

    /// What reading a value of that type from the text gives.
    template <class T>
    T valueOf(std::string const& text, T value = {}) {
        file(text) >> value;
        return value;
    }

private:
    std::optional<Zel::Archive> m_archive;
};

INSTANTIATE_TEST_SUITE_P(Kinds, TextFileTest, testing::Values(Kind::Loose, Kind::Archived),
                         [](auto const& kind) { return kind.param == Kind::Loose ? "Loose" : "Archived"; });

TEST_P(TextFileTest, TokensStandBetweenWhiteSpaceOrQuotes) {
    struct {
        std::string text;
        std::vector<std::pair<std::string, int>> tokens; // and where the file stands behind each
    } const cases[] = {
        {"  \"hello world\"  next", {{"hello world", 17}, {"next", 21}, {"\0"s, 21}}},
        {"a\t\n\v\f\r b", {{"a", 7}, {"b", 8}}},
        {"\"two\r\nlines\"x \"\" \"open ", {{"two\r\nlines", 12}, {"x", 14}, {"", 17}, {"open ", 23}}},
        {"a\"b c\" \\\"", {{"a\"b", 4}, {"c\"", 7}, {"\\\"", 9}}},
        {"\xFF\x85 \xA0\x80", {{"\xFF\x85", 3}, {"\xA0\x80", 5}}},
        {"\xBB!\x1A~;", {{"\xBB!\x1A~;", 5}}},         // what scrambled ends look like
        {"a\0b c"s, {{"a", 2}, {"b", 4}, {"c", 5}}},   // a zero ends a token
        {"a \0 b"s, {{"a", 3}, {"b", 5}}},             // and a run of white space,
        {"\0 x\0\0y"s, {{" x", 5}, {"y", 6}}},         // so that white space comes first
        {"\"in\0side\""s, {{"in", 4}, {"side\"", 9}}}, // and a quoted token
        {"\0"s, {{"\0"s, 1}}},
    };
    for (auto const& [text, tokens] : cases) {
        TextFile stream = file(text);
        for (auto const& [expected, position] : tokens) {
            std::string token = "old";
            stream >> token;
            EXPECT_EQ(token, expected) << text;
            EXPECT_EQ(stream.getPosition(), position) << text << ": " << expected;
        }
    }
}

TEST_P(TextFileTest, TokensOfAnyLengthLieAcrossWhatTheStreamReadsAhead) {
    std::vector<std::string> tokens;
    std::string text;
    for (std::size_t i = 0; i < 300; ++i) {
        bool const isQuoted = i % 4 == 0;
        tokens.emplace_back(i * 7 % 97 + 1, isQuoted ? ' ' : static_cast<char>('#' + i % 90));
        text += (isQuoted ? '"' + tokens.back() + '"' : tokens.back()) + std::string(i % 5 + 1, ' ');
    }
    tokens.insert(tokens.end(), {std::string(20'000, 'x'), "last"});
    text += tokens[300] + std::string(20'000, '\n') + "last";
    TextFile stream = file(text);
    for (std::string const& expected : tokens) {
        std::string token;
        stream >> token;
        ASSERT_EQ(token, expected);
    }
    EXPECT_TRUE(stream.endReached());
}

TEST_P(TextFileTest, IntegersAreReadAsTheCLibraryDoesWithin32Bits) {
    constexpr int kMax = std::numeric_limits<int>::max();
    constexpr int kMin = std::numeric_limits<int>::min();
    std::pair<int, std::vector<char const*>> const cases[] = {
        {12, {"12", "12abc"}},
        {-7, {"-7"}},
        {7, {"+7", "007"}},
        {3, {"3.9"}},
        {5, {"\" \t5 6\""}},
        {0, {"abc", "--5", " ", "0x10"}},
        {kMax, {"2147483647", "2147483648", "99999999999999999999"}},
        {kMin, {"-2147483648", "-2147483649"}}};
    for (auto const& [value, texts] : cases)
        for (char const* text : texts) {
            EXPECT_EQ(valueOf<int>(text), value) << text;
            EXPECT_EQ(valueOf<long>(text), value) << text;
            EXPECT_EQ(valueOf<short>(text), static_cast<short>(value)) << text;
            EXPECT_EQ(valueOf<unsigned short>(text), static_cast<unsigned short>(value)) << text;
            EXPECT_EQ(valueOf<unsigned int>(text), static_cast<unsigned int>(value)) << text;
            EXPECT_EQ(valueOf<unsigned long>(text), static_cast<unsigned int>(value)) << text;
            EXPECT_EQ(valueOf<bool>(text), value != 0) << text;
        }
    EXPECT_EQ(valueOf<unsigned long>("-1"), 4294967295U);
    EXPECT_FALSE(valueOf<bool>("true", true));
}

TEST_P(TextFileTest, FloatsHaveAPointInEveryLocale) {
    std::string const locale = test::localeWithAComma(path("."));
    ASSERT_NE(std::setlocale(LC_NUMERIC, locale.c_str()), nullptr) << locale;
    ASSERT_EQ(std::strtod("1,5", nullptr), 1.5) << "the C library takes a comma now";
    EXPECT_EQ(valueOf<Vector3>("1.5 0x1.8p1 -2.5e999"),
              Vector3(1.5F, 3.0F, -std::numeric_limits<float>::infinity()));
    EXPECT_EQ(valueOf<float>("1,5"), 1.0F);
    { TextFile("out", File::WRITE) << 2.5F; }
    EXPECT_EQ(readFile("out"), "2.500000");
    std::setlocale(LC_NUMERIC, "C");
}

// Up to 15 digits are read in a way of their own.
TEST_P(TextFileTest, FloatsOfAnyLengthAreReadAsTheCLibraryDoes) {
    std::minstd_rand random;
    std::string text;
    std::vector<float> values;
    for (std::size_t i = 0; i < 5'000; ++i) {
        std::string number(1 + i % 20, '0');
        for (char& digit : number)
            digit = static_cast<char>('0' + random() % 10);
        if (i % 3 != 0)
            number.insert(random() % (number.size() + 1), ".");
        values.push_back(static_cast<float>(std::strtod(number.c_str(), nullptr)));
        text += number + ' ';
    }
    TextFile stream = file(text);
    for (float const expected : values) {
        float value = -1;
        stream >> value;
        ASSERT_EQ(value, expected);
    }
}

TEST_P(TextFileTest, FloatsAreReadAsTheCLibraryDoes) {
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    std::pair<std::string, std::vector<float>> const cases[] = {
        {"1.5 -.5 +2.", {1.5F, -0.5F, 2}},
        {"1e2x 1,5 \" 3 4\"", {100, 1, 3}},
        {"x +-1 1e-999", {0, 0, 0}},
        {"0x10 -0X1.8p1", {16, -3}},
        {"1e39 -1e999 inf", {kInfinity, -kInfinity, kInfinity}},
        {"0.1 16777217.0000000001", {0.1F, 16777216}}};
    for (auto const& [text, values] : cases) {
        TextFile stream = file(text);
        for (float const expected : values) {
            float value = 7;
            stream >> value;
            EXPECT_EQ(value, expected) << text;
        }
    }
    EXPECT_TRUE(std::isnan(valueOf<float>("nan")));
    EXPECT_EQ(valueOf<Vector3>("1 2.5\n-3"), Vector3(1, 2.5F, -3));
    EXPECT_EQ(valueOf<Vector3>("1 2", {7, 7, 7}), Vector3(1, 2, 0));

    Zel::FColor colour(9, 9, 9, 0.25F);
    file("1 0.5 0.125 8") >> colour;
    EXPECT_EQ(std::vector<float>({colour.r, colour.g, colour.b, colour.a}),
              std::vector<float>({1, 0.5F, 0.125F, 0.25F}));
}

TEST_P(TextFileTest, SingleCharactersAreReadInTwoWays) {
    TextFile stream = file("  ab \"\n");
    for (auto const& [expected, position] : {std::pair('a', 3), {'b', 5}, {'"', 7}, {'\0', 7}}) {
        char character = '?';
        stream >> character;
        EXPECT_EQ(character, expected);
        EXPECT_EQ(stream.getPosition(), position);
    }
    EXPECT_EQ(valueOf<unsigned char>("255"), '2');
    EXPECT_EQ(valueOf<unsigned char>("\"\"", 'x'), 0);
    EXPECT_EQ(valueOf<unsigned char>("\xE4 x"), 0xE4);
}

TEST_P(TextFileTest, LinesAreReadWithoutTheirEndsAndBlankOnesNotAtAll) {
    struct {
        std::string text;
        std::vector<std::pair<std::string, bool>> lines;
    } const cases[] = {
        {"one two \r\n\r\n \t three\rfour",
         {{"one two ", true}, {"three", true}, {"four", false}, {"", false}}},
        {"end\n\n", {{"end", true}, {"", false}}},
        {"a\0b\n"s, {{"a", false}, {"b", true}}},
        {"\xFF\n", {{"\xFF", true}}},
        {" ", {{"", false}}},
    };
    for (auto const& [text, lines] : cases) {
        TextFile stream = file(text);
        for (auto const& [expected, hasEnd] : lines) {
            std::string line = "old";
            EXPECT_EQ(stream.readLine(line), hasEnd) << text;
            EXPECT_EQ(line, expected) << text;
        }
        EXPECT_TRUE(stream.endReached()) << text;
    }
}

TEST_P(TextFileTest, EveryWhiteSpaceEndsAWordOfALine) {
    using Words = std::vector<std::string>;
    std::pair<std::string, std::vector<Words>> const cases[] = {
        {"a  b\r\nc\n", {{"a", "", "b"}, {""}, {"c"}}},
        {" a\t\n\n\"x y\"", {{"", "a", ""}, {""}, {"\"x", "y\""}}}, // quotes are characters like others
        {"no end ", {{"no", "end", ""}}},
        {"a\0b\nc"s, {{"a", "b"}, {"c"}}},
        {"x", {{"x"}, {""}}}, // nothing is left for the second
    };
    for (auto const& [text, lines] : cases) {
        TextFile stream = file(text);
        for (Words const& expected : lines) {
            Words words{"old"};
            stream.readLine(words);
            EXPECT_EQ(words, expected) << text;
        }
        EXPECT_TRUE(stream.endReached()) << text;
    }
}

TEST_P(TextFileTest, TheWholeTextReachesToAZeroCharacter) {
    TextFile stream = file(" one\r\n\xFFtwo \0rest"s);
    std::string text = "old";
    for (char const* expected : {" one\r\n\xFFtwo ", "rest", ""}) {
        stream.readFile(text);
        EXPECT_EQ(text, expected);
    }
    EXPECT_TRUE(stream.endReached());
}

TEST_P(TextFileTest, OfFilesThatShareAStreamEachPutsBackWhereItStandsItself) {
    TextFile stream = file("aa bb cc dd ee ff");
    std::string token;
    stream >> token;
    alignas(TextFile) std::byte storage[2][sizeof(TextFile)];
    auto* const copy = new (storage[0]) TextFile(stream); // not destroyed: it shares the stream
    auto* const assigned = new (storage[1]) TextFile("text", File::READ); // not destroyed either
    TextFile const abandoned(*assigned); // closes the stream that the assignment abandons
    *assigned = stream;
    struct {
        TextFile* reader;
        char const* token;
        int position;
    } const steps[] = {{&stream, "bb", 6},  {&stream, "cc", 9}, {copy, "bb", 6},
                       {&stream, "dd", 12}, {copy, "cc", 9},    {assigned, "bb", 6}};
    for (auto const& [reader, expected, position] : steps) {
        *reader >> token;
        EXPECT_EQ(token, expected);
        EXPECT_EQ(reader->getPosition(), position);
    }
}

TEST_P(TextFileTest, PuttingBackWhereNoStreamCanStandIsASeekError) {
    TextFile stream = file("one two");
    EXPECT_THROW(stream.setPosition(-1'000'000), Zel::FileException_SeekError);
    std::string token;
    EXPECT_THROW(stream >> token, Zel::FileException_SeekError);
    EXPECT_EQ(stream.getPosition(), -1'000'000);
    stream.setPosition(4);
    stream >> token;
    EXPECT_EQ(token, "two");
}

using ShortTextFileTest = test::LibraryTest;

TEST_F(ShortTextFileTest, AFileThatHasBecomeShorterIsAReadErrorBehindItsEnd) {
    writeFile("text", std::string(10'000, 'a'));
    TextFile stream("text", File::READ_TEXT);
    std::filesystem::resize_file(path("text"), 5000);
    std::string text;
    EXPECT_EQ(test::errorOf<Zel::FileException_ReadError>([&] { stream.readFile(text); }),
              "Read error in \"text\"");
    EXPECT_EQ(text, std::string(5000, 'a'));
    EXPECT_EQ(stream.getPosition(), 5000);
}

class WrittenTextFileTest : public test::LibraryTest {
protected:
    template <class... Values>
    void expectWritten(std::string const& expected, Values const&... values) const {
        {
            TextFile file("out", File::WRITE);
            (file << ... << values);
            EXPECT_EQ(file.getSize(), static_cast<int>(expected.size()));
        }
        EXPECT_EQ(readFile("out"), expected);
    }
};

TEST_F(WrittenTextFileTest, ValuesHaveNothingBetweenThem) {
    constexpr float kMax = std::numeric_limits<float>::max();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    expectWritten("a\0b \nc"s, "a\0b \n"s, "c");
    expectWritten("-12147483647-2147483648", -1, 2147483647, std::numeric_limits<int>::min());
    expectWritten("-1-2147483648", 4294967295U, 2147483648UL);
    expectWritten("-265535-3", short{-2}, static_cast<unsigned short>(65535), -3L);
    expectWritten("0.100000-0.0000002.000000", 0.1F, -0.0F, 2.0000005F);
    expectWritten("0.5000000.000000123456.789062", 0.5000005F, 1e-7F, 123456.789F);
    expectWritten("-340282346638528859811704183484516925440.000000", -kMax);
    expectWritten("inf-inf", kInfinity, -kInfinity);
    expectWritten("1.000000 2.000000 3.000000", Vector3(1, 2, 3));
}

} // namespace
