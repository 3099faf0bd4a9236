// The place that an exception of a script names.

#include <gtest/gtest.h>
#include <string>
#include <utility>
#include <zel/script.h>

namespace {

/// "FILE:LINE", or "none".
std::string placeOf(Zel::Exception const& exception) {
    auto const place = Zel::findScriptPlace(exception);
    return place ? place->file + ":" + std::to_string(place->line) : "none";
}

TEST(ScriptPlaceTest, IsFoundWhateverTheFileIsCalled) {
    for (std::string const name :
         {"main", "", "50%s %n%", "a in b on line 3", "Syntax error in file a at line 3", "a\" in b",
          "a\" already defined in b", "') in b", " has an invalid range in file ", "File a includes",
          " includes itself without end in ", " is not terminated", "{ } characters does not match in "}) {
        char const* const file = name.c_str();
        for (auto const& [place, line] :
             {std::pair(placeOf(Zel::ScriptException_SyntaxError(file, 7)), 7),
              {placeOf(Zel::ScriptException_UnexpectedEndOfFile(file)), 0},
              {placeOf(Zel::ScriptException_BracketCountMismatch(file, "{ }")), 0},
              {placeOf(Zel::ScriptException_InvalidInterval(file, 1, "x")), 1},
              {placeOf(Zel::ScriptPreprocessorException_MissingArgument("include", file, 2)), 2},
              {placeOf(Zel::ScriptPreprocessorException_UnknownDirective("in\"%d\"", file, 3)), 3},
              {placeOf(Zel::ScriptPreprocessorException_AlreadyDefined("\"100%\"", file, 4)), 4},
              {placeOf(Zel::ScriptPreprocessorException_CommentNotTerminated(5, file)), 5},
              {placeOf(Zel::ScriptPreprocessorException_InvalidCharacter(0xC4, file, 6)), 6},
              {placeOf(Zel::ScriptPreprocessorException_IncludeLoop("\"in\"", file, 7)), 7},
              {placeOf(Zel::ScriptPreprocessorException_TooLarge(file, 2147483647)), 2147483647}})
            EXPECT_EQ(place, name + ":" + std::to_string(line));
    }
}

TEST(ScriptPlaceTest, IsNoneWhereTheMessageNamesNoneOrMayHaveBeenCutOff) {
    Zel::ScriptException_SyntaxError other("main", 1);
    other.setError(" at line 2");
    std::size_t const words = std::string("Syntax error in file  at line 12").size();
    std::string const name(1022 - words, 'f'); // the longest message has 1023 characters
    EXPECT_EQ(placeOf(Zel::ScriptException_SyntaxError(name.c_str(), 12)), name + ":12");
    for (std::string const& place :
         {placeOf(Zel::ScriptException_SyntaxError((name + "f").c_str(), 12)),
          placeOf(Zel::ScriptException_SyntaxError((name + "ff").c_str(), 12)),
          placeOf(Zel::ScriptException_BlockNotFound("main", "a")),
          placeOf(Zel::ScriptException_TypeMismatch("main", "x")),
          placeOf(Zel::ScriptException_UndefinedVariable("main", "a", "x")),
          placeOf(Zel::FileException_OpenFailed("Syntax error in file main at line 1")),
          placeOf(Zel::ScriptException_SyntaxError()), placeOf(other)})
        EXPECT_EQ(place, "none");
}

} // namespace
