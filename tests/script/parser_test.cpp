// Blocks, assignments and the types of values.

#include "support/script_test.h"

namespace {

using ParserTest = test::ScriptTest;

TEST_F(ParserTest, BlocksAreSiblingsUnlessBracesHoldThem) {
    struct {
        char const* text;
        char const* tree;
    } const cases[] = {
        {"", ""},
        {" \t\r\n// nothing\n/* at all */", ""},
        {"[a]", "[a]\n"},
        {"[]", "[]\n"},
        {"[_9z]", "[_9z]\n"},
        {"[a] x = 1; [b] y = 2;", "[a]\nx = 1 (type 0)\n[b]\ny = 2 (type 0)\n"},
        {"[a] x = 1; { [b] y = 2; }", "[a]\nx = 1 (type 0)\n  [b]\n  y = 2 (type 0)\n"},
        {"[a] { [b] { [c] } [d] } [e]", "[a]\n  [b]\n    [c]\n  [d]\n[e]\n"},
        {"[a] {}", "[a]\n"},
        {"[a] x = 1; x = 2;", "[a]\nx = 1 (type 0)\nx = 2 (type 0)\n"},
        {"[a] x y = 1 0;", "[a]\nxy = 10 (type 0)\n"}, // blanks vanish outside quotes
        {"[a] x [b]", "[a]\n[b]\n"},                   // a name without a value is dropped
        {"[a] x", "[a]\n"},
        {"[a] { [b] y = 1 } [c] [d]", "[a]\n  [b]\n[c]\n[d]\n"}, // so is an assignment that a brace cuts off
        // A brace inside a value counts, and a value that ends behind it expects names again.
        {"[a] x = 1 {2; y = 3; [b] {} z = 4; }",
         "[a]\nx = 12 (type 0)\ny = 3 (type 0)\nz = 4 (type 0)\n  [b]\n"},
    };
    for (auto const& [text, tree] : cases)
        EXPECT_EQ(resultOf(text), tree) << text;
}

TEST_F(ParserTest, WhatIsNotAllowedWhereItStandsIsAnError) {
    std::string const syntax = "Syntax error in file main at line 1";
    std::string const end = "Unexpected end of file in script main";
    std::string const braces = "The count of { } characters does not match in main";
    struct {
        char const* text;
        std::string error;
    } const cases[] = {
        {"x = 1;", syntax},
        {"}", syntax},
        {"[ a ]", syntax},
        {"[a b]", syntax},
        {"[[a]]", syntax},
        {"[a-b]", syntax},
        {"[a] x = 1; }", syntax},
        {"[a] { x = 1; }", syntax},
        {"[a] x = = 1;", syntax},
        {"[a] x = ;", syntax},
        {"[a] = 1;", syntax},
        {"[a] ;", syntax},
        {"[a] x; ", syntax},
        {"[a] x = 1;; ", syntax},
        {"[a] \"x\" = 1;", syntax},
        {"[a] x.y = 1;", syntax},
        {"[a] x = 1 + 2;", syntax},
        {"[a] x = 'c';", syntax},
        {"[a] ]", syntax},
        {"[a] x = 1; { ; }", syntax},
        {"[a] { { [b] } } }", syntax},
        {"[", end},
        {"[a", end},
        {"[a] x = 1", end},
        {"[a] x =", end},
        {"[a] {", end},
        {"[a] { [b] y = 1;", end},
        {"[a] { { [b] y = 1; }", braces},
        {"[a] x = 1 {; ", braces},
    };
    for (auto const& [text, error] : cases)
        EXPECT_EQ(resultOf(text), error) << text;
}

TEST_F(ParserTest, TheTextTellsTheType) {
    std::string const syntax = "Syntax error in file main at line 1";
    struct {
        char const* value;
        std::string result; // the dumped text and type, or the error
    } const cases[] = {
        {"0", "0 (type 0)"},
        {"-5", "-5 (type 0)"},
        {"007", "007 (type 0)"},
        {"-", "- (type 0)"},
        {"1\"2\"3", "123 (type 0)"}, // quotes inside a value only switch quoting
        {"+5", syntax},
        {"1e5", syntax},
        {"5-3", syntax},
        {"--5", syntax},
        {"1.2.3", syntax},
        {"TRUE", "TRUE (type 1)"},
        {"FALSE", "FALSE (type 1)"},
        {"true", syntax},
        {"T R U E", "TRUE (type 1)"},
        {"\"\"", " (type 2)"},
        {"\"a;b\"", "a;b (type 2)"},
        {"\"[}{]\"", "[}{] (type 2)"},
        {"\"a\" \"b\"", "ab (type 2)"},
        {"\"a\"b", "ab (type 2)"},
        {"1.5", "1.5 (type 3)"},
        {".5", ".5 (type 3)"},
        {"1.", "1. (type 3)"},
        {"-.", "-. (type 3)"},
        {"(1.5,2)", "(1.5,2) (type 3)"}, // exactly one point: a float, of 0
        {"[0.5,1]", "[0.5,1] (type 3)"},
        {"(1,2)", "(1,2) (type 4)"},
        {"(,)", "(,) (type 4)"},
        {"( 1.0 , 2.0 , 3.0 )", "(1.0,2.0,3.0) (type 5)"},
        {"(1,2,3,4)", "(1,2,3,4) (type 6)"},
        {"(1,2,3,4,5)", syntax},
        {"(1)", syntax},
        {"(1,x)", syntax},
        {"[1,1]", "[1,1] (type 7)"},
        {"[-2,-1]", "[-2,-1] (type 7)"},
        {"[1,2,3]", syntax},
        {"[1]", syntax},
        {"[2,1]", "Interval x has an invalid range in file main at line 1"},
        {"[0.2,0.1]", "Interval x has an invalid range in file main at line 1"},
    };
    for (auto const& [value, result] : cases) {
        std::string const tree = resultOf("[a] x = " + std::string(value) + ";");
        EXPECT_TRUE(tree == result || tree == "[a]\nx = " + result + "\n") << value << ": " << tree;
    }
}

TEST_F(ParserTest, ValuesAreThoseOfTheirText) {
    writeFile("main", "[a] big = 99999999999; low = -99999999999; edge = 2147483647; under = -2147483648;"
                      "zero = (1.5,2); f = -0.125; blanks = (\" 1\",2); signs = (\"+3\",\"+-1\"); huge = 1" +
                          std::string(400, '0') +
                          ".0;"
                          "v2 = (-1,.5.5); v3 = (1.0,-2.0,3); v4 = (1.0,2.0,,4); i = [-1.0,1.0]; b = TRUE;");
    Zel::Script script("main");
    script.lock("a");
    EXPECT_EQ(script.getInt("big"), 2147483647);
    EXPECT_EQ(script.getInt("low"), -2147483647 - 1);
    EXPECT_EQ(script.getInt("edge"), 2147483647);
    EXPECT_EQ(script.getInt("under"), -2147483647 - 1);
    EXPECT_EQ(script.getFloat("zero"), 0.0f);
    EXPECT_EQ(script.getFloat("f"), -0.125f);
    EXPECT_EQ(script.getFloat("huge"), std::numeric_limits<float>::infinity());
    EXPECT_EQ(script.getVector2("v2"), Zel::Vector2Template<float>(-1, 0.5f));
    EXPECT_EQ(script.getVector2("blanks"), Zel::Vector2Template<float>(1, 2));
    EXPECT_EQ(script.getVector2("signs"), Zel::Vector2Template<float>(3, 0));
    EXPECT_EQ(script.getVector3("v3"), Zel::Vector3Template<float>(1, -2, 3));
    EXPECT_EQ(script.getVector4("v4"), Zel::Vector4Template<float>(1, 2, 0, 4));
    EXPECT_EQ(script.getInterval("i"), Zel::IntervalTemplate<float>(-1, 1));
    EXPECT_TRUE(script.getBool("b"));
}

TEST_F(ParserTest, EscapesAreDecodedInStrings) {
    struct {
        char const* text;
        char const* expected;
    } const cases[] = {
        {R"(fill\n)", "fill\n"}, {R"(a\\b)", R"(a\b)"},  {R"(a\tb)", R"(a\b)"},
        {R"(\\n)", R"(\n)"},     {R"(end\)", R"(end\)"}, {R"(\\\)", R"(\\)"},
    };
    for (auto const& [text, expected] : cases) {
        writeFile("main", "[a] s = \"" + std::string(text) + "\";");
        Zel::Script script("main");
        script.lock(0);
        EXPECT_EQ(script.getString("s"), expected) << text;
    }
}

TEST_F(ParserTest, BlocksMayBeNestedAsDeepAsYouLike) {
    constexpr int kDepth = 10'000;
    std::string text, closing;
    for (int i = 0; i < kDepth; ++i) {
        text += "[b]{";
        closing += '}';
    }
    writeFile("main", text + "[leaf] x = 1;" + closing);
    Zel::Script script("main");
    for (int i = 0; i < kDepth; ++i)
        script.lock("b");
    script.lock("leaf");
    EXPECT_EQ(script.getInt("x"), 1);
    for (int i = 0; i <= kDepth; ++i)
        script.unlock();
    EXPECT_EQ(script.getBlockName(), "ROOT");

    testing::internal::CaptureStdout();
    script.dump(); // the log is off: only the line feeds come out
    EXPECT_EQ(testing::internal::GetCapturedStdout().size(), kDepth + 1u);
    EXPECT_EQ(resultOf(text), "Unexpected end of file in script main");
}

} // namespace
