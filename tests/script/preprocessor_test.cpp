// Includes, macros, comments and characters, seen through the scripts that they become.

#include "support/script_test.h"

namespace {

using PreprocessorTest = test::ScriptTest;

TEST_F(PreprocessorTest, CommentsVanishAndTakeTheNextCharacterAlong) {
    std::string const expected = "[a]\nx = 12 (type 0)\n";
    for (char const* text :
         {"[a] x = 12; // to the end of the line\n", "[a] x = 12; // to the end of the file",
          "[a] x = 1/* one */ 2;", "[a] x = 1/* /* nested */ */ 2;", "[a] x = 12;/**/", "[a] x = 1/***/ 2;",
          "[a] x = 12; /* a\nb\n*/\n", "[a] x = 1/* ** // \" */ 2;", "[a] x = 1/* \xAE/ *\n ***/ 2;",
          // The character behind the comment is lost, whatever it is.
          "[a] x = 1/* one */X2;",
          // The '/' behind the inner end opens nothing.
          "[a] x = 1/* /* nested *//**/ */ 2;",
          // A '*' and a '/' count for one mark alone.
          "[a] x = 1/*//*//** /*** / ****/ */ */ 2;"})
        EXPECT_EQ(resultOf(text), expected) << text;
    for (char const* text : {"[a] x = 1/2;",             // a slash alone is itself
                             "[a] x = 12/*c*/; y = 3;"}) // the lost ';' joins the two assignments
        EXPECT_EQ(resultOf(text), "Syntax error in file main at line 1") << text;
}

TEST_F(PreprocessorTest, NothingIsInterpretedInsideLiterals) {
    for (auto const& [text, string] : {std::pair("#define X 1\n[a] s = \"X // /* */ # \";", "X // /* */ # "),
                                       {"[a] s = \"a\\\\\";", "a\\"},     // a backslash protects no quote
                                       {"[a] s = \"a\r\nb\nc\";", "abc"}, // line breaks are lost
                                       {"[a] s = \"a\xAE.\";", "a."}})    // 0xAE is lost, too
        EXPECT_EQ(resultOf(text), "[a]\ns = " + std::string(string) + " (type 2)\n");
    for (std::string const& text : {std::string("[a]\nx = \xAE;"), std::string("[a]\nx\0;", 7)})
        EXPECT_EQ(resultOf(text), "Syntax error in file main at line 2") << "both pass outside of them";
    for (std::string const& text :
         {std::string("[a] s = \"a\0b\";", 14), std::string("#define Z \"a\0b\"\n[a] s = Z;", 26)}) {
        Zel::Script script = parse(text);
        script.lock(0);
        EXPECT_EQ(script.getString("s"), std::string("a\0b", 3)) << "a zero byte is a character";
    }
}

TEST_F(PreprocessorTest, MacrosReplaceWholeWordsOnce) {
    std::string const macros = "#define W 7\n  # \t define\tA B\r\n#define B 8 ignored\n#define N (1,2)\n[a]";
    struct Case {
        std::string text, variable;
    };
    for (auto const& [text, variable] :
         {Case{"x = W;", "x = 7 (type 0)"}, Case{"W = 1;", "7 = 1 (type 0)"},
          Case{"x = N;", "x = (1,2) (type 4)"},
          // A word starts where a letter does, and goes on with digits.
          Case{"x = 3W;", "x = 37 (type 0)"}, Case{"x = 3W4;", "Syntax error in file main at line 5"},
          // A becomes B: the replacement is not replaced.
          Case{"x = A;", "Syntax error in file main at line 5"},
          Case{"\n#undef W\n#define W 9\nx = W;", "x = 9 (type 0)"},
          Case{"\n#undef unknown\nx = W;", "x = 7 (type 0)"},
          // Anywhere in a line.
          Case{"x = 1 #define Y 5\n; y = Y;", "x = 1 (type 0)\ny = 5 (type 0)"}}) {
        std::string const tree = resultOf(macros + text);
        EXPECT_TRUE(tree == variable || tree == "[a]\n" + variable + "\n") << text << ": " << tree;
    }
    EXPECT_EQ(resultOf("#define H a\n[H]"), "[a]\n");
    EXPECT_EQ(resultOf(std::string("#\0define H a\n[H]", 16)), "[a]\n") << "zero bytes are blanks there";
}

TEST_F(PreprocessorTest, IncludesAreReadInPlace) {
    writeFile("inc/Values.script", "x = 1;\n");
    Zel::Archive const archive(packArchive("a.bva", {{"packed.script", "y = 2;\n"}}));
    for (char const* directive :
         {"#include inc/values.script", "#include \"INC\\VALUES.script\"", "#include \"inc/values.script",
          "#include inc/values.script\" ignored", "#\tinclude\t inc/values.script\r"}) {
        EXPECT_EQ(resultOf("[a]\n" + std::string(directive) + "\nz = 3;"),
                  "[a]\nx = 1 (type 0)\nz = 3 (type 0)\n")
            << directive;
    }
    EXPECT_EQ(resultOf("[a]\n#include packed.script\n#include packed.script"),
              "[a]\ny = 2 (type 0)\ny = 2 (type 0)\n")
        << "nothing is included once only";
    EXPECT_EQ(resultOf("[a]\n#include Missing.script\n"), "Failed to open file \"Missing.script\"");
    EXPECT_EQ(resultOf("#include \"\"\n"), "Failed to open file \"\"");
    EXPECT_EQ(resultOf("#include inc\n"), "Failed to open file \"inc\"");
}

// What reads past the end of an included file steps the including one over its next character.
TEST_F(PreprocessorTest, ReadingPastAnIncludedFileCostsACharacter) {
    for (auto const& [included, expected] :
         {std::pair("x = 1;", "[a]\nx = 1 (type 0)\nyz = 2 (type 0)\n"),
          {"x = 1; // comment", "[a]\nx = 1 (type 0)\nz = 2 (type 0)\n"},
          {"x = 1; // comment\n", "[a]\nx = 1 (type 0)\nyz = 2 (type 0)\n"},
          {"#define Q 1", "[a]\nz = 2 (type 0)\n"},
          {"x = 1;/**/", "[a]\nx = 1 (type 0)\nz = 2 (type 0)\n"},
          {"x = \"literal", "Unexpected end of file in script inc"}}) {
        writeFile("inc", included);
        EXPECT_EQ(resultOf("[a]\n#include inc\nyz = 2;"), expected) << included;
    }
    writeFile("inc", "x = \"lit");
    EXPECT_EQ(resultOf("[a]\n#include inc\nyeral\";"), "[a]\nx = literal (type 2)\n");
}

TEST_F(PreprocessorTest, EveryFailureNamesItsFileAndLine) {
    // The first line of each is line 3 of its file. A directive that ends in a line feed is reported with the
    // line after it.
    for (auto const& [text, error] :
         {std::pair("#include\n", "Missing argument in preprocessor directive \"#include\" in %s on line 4"),
          {"#define\n", "Missing argument in preprocessor directive \"#define\" in %s on line 4"},
          {"#define X \n", "Missing argument in preprocessor directive \"#define\" in %s on line 4"},
          {"#undef\n", "Missing argument in preprocessor directive \"#undef\" in %s on line 4"},
          {"#\n", "Unknown preprocessor directive \"#\" in %s on line 4"},
          {"#Include x\n", "Unknown preprocessor directive \"#Include\" in %s on line 4"},
          // One without is reported with its own, in its own file.
          {"#nothing", "Unknown preprocessor directive \"#nothing\" in %s on line 3"},
          {"#define A 1\n#define A 2", "Preprocessor macro \"A\" already defined in %s on line 4"},
          {"#define A 1\n#define A 1\n", "Preprocessor macro \"A\" already defined in %s on line 5"},
          {"/* one\n/* two */", "Comment beginning on line 3 in %s is not terminated"},
          {"x\xFF", "Invalid character '\xFF' (0xff) in %s on line 3"},
          {"/*\n\n**\x80 \x81*/", "Invalid character '\x80' (0x80) in %s on line 5"},
          {"/* \x80 */", "Invalid character '\x80' (0x80) in %s on line 3"},
          {"#define \x81\n", "Invalid character '\x81' (0x81) in %s on line 3"},
          {"\"\n\xE4\"", "Invalid character '\xE4' (0xe4) in %s on line 4"},
          {"[a] x = 1; }", "Syntax error in file %s at line 3"},
          {"[a] x = 1;\ny = ;", "Syntax error in file %s at line 4"},
          // Whatever lines are left out, those behind them keep their numbers.
          {"[a] /* \n\n */ x = ;", "Syntax error in file %s at line 5"},
          {"[a]\r\n// one\r\nx = ;", "Syntax error in file %s at line 5"},
          {"[a]\n#define A 1\n#undef A\nx = \"1\n2\"\n\n+;", "Syntax error in file %s at line 9"},
          {"[a] #define A ;\n\n x = A", "Syntax error in file %s at line 5"},
          {"[a]\nx = [2,1];", "Interval x has an invalid range in file %s at line 4"},
          {"[a] x = 1", "Unexpected end of file in script %s"},
          {"[a] x = \"", "Unexpected end of file in script %s"}}) {
        std::string inMain = error, inIncluded = error;
        inMain.replace(inMain.find("%s"), 2, "main");
        inIncluded.replace(inIncluded.find("%s"), 2, "Dir/Inc");
        EXPECT_EQ(resultOf("\n\n" + std::string(text)), inMain) << text;
        writeFile("dir/inc", "\n\n" + std::string(text));
        EXPECT_EQ(resultOf("\n// more\n#include Dir/Inc\n"), inIncluded) << text;
    }
    writeFile("inc", "// fine\n");
    EXPECT_EQ(resultOf("[a]\n#include inc\n\nx = ;"), "Syntax error in file main at line 4")
        << "and back again";
}

} // namespace
