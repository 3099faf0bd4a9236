// Blocks, assignments and the types of values.

#include "support/script_test.h"

namespace {

using ParserTest = test::ScriptTest;

std::string const kSyntaxError = "Syntax error in file main at line 1";

TEST_F(ParserTest, BlocksAreSiblingsUnlessBracesHoldThem) {
    struct Case {
        std::string text, tree;
    };
    for (auto const& [text, tree] :
         {Case{"", ""}, Case{" \t\r\n// nothing\n/* at all */", ""}, Case{"[a]", "[a]\n"}, Case{"[]", "[]\n"},
          Case{"[_9z]", "[_9z]\n"}, Case{"[a] {}", "[a]\n"},
          Case{"[a] x = 1; [b] y = 2;", "[a]\nx = 1 (type 0)\n[b]\ny = 2 (type 0)\n"},
          Case{"[a] x = 1; { [b] y = 2; }", "[a]\nx = 1 (type 0)\n  [b]\n  y = 2 (type 0)\n"},
          Case{"[a] { [b] { [c] } [d] } [e]", "[a]\n  [b]\n    [c]\n  [d]\n[e]\n"},
          Case{"[a] x = 1; x = 2;", "[a]\nx = 1 (type 0)\nx = 2 (type 0)\n"},
          // Blanks vanish outside quotes.
          Case{"[a] x y = 1 0;", "[a]\nxy = 10 (type 0)\n"},
          // A name without a value is dropped. So is an assignment that a brace cuts off.
          Case{"[a] x [b]", "[a]\n[b]\n"}, Case{"[a] x", "[a]\n"},
          Case{"[a] { [b] y = 1 } [c] [d]", "[a]\n  [b]\n[c]\n[d]\n"},
          // A brace inside a value counts, and a value that ends behind it expects names again.
          Case{"[a] x = 1 {2; y = 3; [b] {} z = 4; }",
               "[a]\nx = 12 (type 0)\ny = 3 (type 0)\nz = 4 (type 0)\n  [b]\n"}})
        EXPECT_EQ(resultOf(text), tree) << text;
}

TEST_F(ParserTest, WhatIsNotAllowedWhereItStandsIsAnError) {
    for (char const* block : {"x = 1;", "}", "[ a ]", "[a b]", "[[a]]", "[a-b]", "[a] ]", "[a] x = 1; }",
                              "[a] { x = 1; }", "[a] x = 1; { ; }", "[a] { { [b] } } }"})
        EXPECT_EQ(resultOf(block), kSyntaxError) << block;
    for (char const* assignment : {"x = = 1;", "x = ;", "= 1;", ";", "x; ", "x = 1;; ", "\"x\" = 1;",
                                   "x.y = 1;", "x = 1 + 2;", "x = 'c';"})
        EXPECT_EQ(resultOf("[a] " + std::string(assignment)), kSyntaxError) << assignment;
    for (char const* open : {"[", "[a", "[a] x = 1", "[a] x =", "[a] {", "[a] { [b] y = 1;"})
        EXPECT_EQ(resultOf(open), "Unexpected end of file in script main") << open;
    for (char const* unclosed : {"[a] { { [b] y = 1; }", "[a] x = 1 {; "})
        EXPECT_EQ(resultOf(unclosed), "The count of { } characters does not match in main") << unclosed;
}

TEST_F(ParserTest, TheTextTellsTheType) {
    struct Case {
        int type;
        std::vector<std::string> values;
    };
    for (auto const& [type, values] :
         {Case{0, {"0", "-5", "007", "-", "1\"2\"3"}}, // quotes inside a value only switch quoting
          Case{1, {"TRUE", "FALSE", "T R U E"}},
          Case{2, {"\"\"", "\"a;b\"", "\"[}{]\"", "\"a\" \"b\"", "\"a\"b"}},
          Case{3, {"1.5", ".5", "1.", "-.", "(1.5,2)", "[0.5,1]"}}, // exactly one point: a float, of 0
          Case{4, {"(1,2)", "(,)"}}, Case{5, {"( 1.0 , 2.0 , 3.0 )"}}, Case{6, {"(1,2,3,4)"}},
          Case{7, {"[1,1]", "[-2,-1]"}}}) {
        for (std::string const& value : values) {
            std::string kept = value;
            std::erase(kept, '"');
            std::erase(kept, ' ');
            EXPECT_EQ(resultOf("[a] x = " + value + ";"),
                      "[a]\nx = " + kept + " (type " + std::to_string(type) + ")\n");
        }
    }
    for (char const* value :
         {"+5", "1e5", "5-3", "--5", "1.2.3", "true", "(1,2,3,4,5)", "(1)", "(1,x)", "[1,2,3]", "[1]"})
        EXPECT_EQ(resultOf("[a] x = " + std::string(value) + ";"), kSyntaxError) << value;
    for (char const* interval : {"[2,1]", "[0.2,0.1]"})
        EXPECT_EQ(resultOf("[a] x = " + std::string(interval) + ";"),
                  "Interval x has an invalid range in file main at line 1");
}

TEST_F(ParserTest, ValuesAreThoseOfTheirText) {
    auto const valued = [this](std::string const& value) {
        Zel::Script script = parse("[a] x = " + value + ";");
        script.lock("a");
        return script;
    };
    EXPECT_EQ(valued("99999999999").getInt("x"), INT32_MAX);
    EXPECT_EQ(valued("2147483647").getInt("x"), INT32_MAX);
    EXPECT_EQ(valued("-99999999999").getInt("x"), INT32_MIN);
    EXPECT_EQ(valued("-2147483648").getInt("x"), INT32_MIN);
    EXPECT_EQ(valued("(1.5,2)").getFloat("x"), 0);
    EXPECT_EQ(valued("-0.125").getFloat("x"), -0.125f);
    std::string const huge = "1" + std::string(400, '0') + ".0"; // a float ends at 3.4e38
    EXPECT_EQ(valued(huge).getFloat("x"), std::numeric_limits<float>::infinity());
    EXPECT_EQ(valued("(-1,.5.5)").getVector2("x"), Zel::Vector2Template<float>(-1, 0.5f));
    EXPECT_EQ(valued("(\" 1\",2)").getVector2("x"), Zel::Vector2Template<float>(1, 2));
    EXPECT_EQ(valued("(\"+3\",\"+-1\")").getVector2("x"), Zel::Vector2Template<float>(3, 0));
    EXPECT_EQ(valued("(1.0,-2.0,3)").getVector3("x"), Zel::Vector3Template<float>(1, -2, 3));
    EXPECT_EQ(valued("(1.0,2.0,,4)").getVector4("x"), Zel::Vector4Template<float>(1, 2, 0, 4));
    EXPECT_EQ(valued("[-1.0,1.0]").getInterval("x"), Zel::IntervalTemplate<float>(-1, 1));
    EXPECT_TRUE(valued("TRUE").getBool("x"));
    std::pair<char const*, char const*> const strings[] = {{R"("fill\n")", "fill\n"}, {R"("a\\b")", R"(a\b)"},
                                                           {R"("a\tb")", R"(a\b)"},   {R"("\\n")", R"(\n)"},
                                                           {R"("end\")", R"(end\)"},  {R"("\\\")", R"(\\)"}};
    for (auto const& [text, decoded] : strings)
        EXPECT_EQ(valued(text).getString("x"), decoded) << text;
}

TEST_F(ParserTest, BlocksMayBeNestedAsDeepAsYouLike) {
    constexpr int kDepth = 10'000;
    std::string text;
    for (int i = 0; i < kDepth; ++i)
        text += "[b]{";
    Zel::Script script = parse(text + "[leaf] x = 1;" + std::string(kDepth, '}'));
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
