// How far includes and macros may expand: everything ordinary is read, and nothing grows without end.

#include "support/allocations.h"
#include "support/script_test.h"

#include <gmock/gmock.h>

namespace {

using ExpansionTest = test::ScriptTest;

std::string repeated(std::string const& text, int count) {
    std::string result;
    for (int i = 0; i < count; ++i)
        result += text;
    return result;
}

TEST_F(ExpansionTest, AFileInsideItselfIsRefusedAtItsThirdReading) {
    writeFile("one", "#include two");
    writeFile("two", "// comment\n#include one");
    writeFile("third", "#define B 1\n");
    for (auto const& [text, error] :
         {std::pair("\n#include Main\n", "File Main includes itself without end in Main on line 3"),
          // Also when the including file is read to its end.
          {"\n#include x/../MAIN", "File x/../MAIN includes itself without end in x/../MAIN on line 2"},
          {"#include one", "File one includes itself without end in two on line 2"},
          // Reading past the end of both has led back to the first file.
          {"#include one\n[abc]", "File one includes itself without end in main on line 2"},
          // What is wrong with the second reading is told first.
          {"#define A 1\n#include main\n", "Preprocessor macro \"A\" already defined in main on line 2"},
          {"#include third\n#include main\n", "Preprocessor macro \"B\" already defined in third on line 2"},
          // A file that is read again after itself is not inside itself.
          {"#include third\n#undef B\n#include third\n#undef B\n#include third\n[a]", "[a]\n"}})
        EXPECT_EQ(resultOf(text), error) << text;
}

// f0 includes f1 so often, and that f2 as often: whatever stands there comes to more than 64 MiB.
TEST_F(ExpansionTest, WhatMultipliesIsRefusedBeforeItIsHeld) {
    auto const including = [](char const* name) {
        return repeated("#include " + std::string(name) + "\n ", 300);
    };
    for (auto const& [what, f1, f2] :
         {std::tuple("includes", including("f2"), including("f3")),
          {"a long name", "#include " + repeated("x/../", 2'000) + "f2\n", including("f3")},
          {"a long comment", including("f2"), "/*" + repeated("comment ", 2'000) + "*/ "},
          {"a macro", "#define A " + repeated("a", 10'000) + "\n[" + repeated("A\n", 10'000), ""},
          {"blocks", including("f2"), repeated("[]", 21)},
          {"variables", including("f2"), "[a]" + repeated("x=\"" + repeated("y", 30) + "\";", 20)},
          {"directives", including("f2"), repeated("#define A 1\n#undef A\n", 100)}}) {
        Zel::Archive const archive(
            packArchive("bomb.bva", {{"f0", including("f1")}, {"f1", f1}, {"f2", f2 + " "}, {"f3", " "}}));
        test::largestAllocation();
        EXPECT_THAT(resultOf("#include f0\n"), testing::StartsWith("Expansion grows too large in ")) << what;
        EXPECT_LE(test::largestAllocation(), 64u << 20) << what;
    }
}

TEST_F(ExpansionTest, WhatIsOrdinaryIsReadHoweverOftenItIsRepeated) {
    writeFile("empty", "");
    writeFile("linefeed", "\n");
    for (char const* directive : {"#include empty\n", "#include linefeed\n"})
        EXPECT_EQ(resultOf(repeated(directive, 100'000) + "[a]"), "[a]\n") << directive;
    writeFile("settings",
              repeated("[Block]\nname = \"Texture fill test\";\nloops = 10;\nscale = 1.525;\n// A comment\n"
                       "position = (0.0,1.0,2.0);\n\n",
                       100));
    EXPECT_EQ(parse(repeated("#include settings\n", 800)).getBlockCount(), 800 * 100);
}

TEST_F(ExpansionTest, IncludesMayBeAsDeepAsYouLike) {
    test::Entries files = {{"d0", "[a]\n"}};
    for (int i = 1; i < 10'000; ++i)
        files.emplace_back("d" + std::to_string(i), "#include d" + std::to_string(i - 1) + "\n");
    Zel::Archive const archive(packArchive("deep.bva", files));
    EXPECT_EQ(resultOf("#include d9999\n[b"), "Unexpected end of file in script main");
}

} // namespace
