// zel script check and zel script dump

#include "archive/folder_names.h"
#include "support/program_test.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

using ScriptCommandsTest = test::ProgramTest;

TEST_F(ScriptCommandsTest, CheckReportsEveryFaultyScriptWithItsPlace) {
    std::vector<std::string> arguments = {"script", "check"};
    std::string expected;
    writeFile("fine", "[a]");
    for (auto const& [name, text, report] : // which follows "name:"
         {std::tuple("syntax", "[a]\nx = ;\n", "2: Syntax error in file syntax at line 2"),
          {"character", "\xC4", "1: Invalid character '\\xc4' (0xc4) in character on line 1"},
          // The message tells no line: it is the last one.
          {"end", "[a]\nx = 1\n", "2: Unexpected end of file in script end"},
          {"braces", "[a] { { [b] }", "1: The count of { } characters does not match in braces"},
          {"missing", "// more\n\n # include \"gone\"\n", "3: Failed to open file \"gone\""}}) {
        writeFile(name, text);
        arguments.insert(arguments.end(), {name, "fine"});
        expected += std::string(name) + ":" + report + "\n";
    }
    EXPECT_EQ(zel(arguments), 1);
    EXPECT_EQ(out(), expected);
    EXPECT_EQ(err(), "");
    EXPECT_EQ(zel({"script", "check", "fine"}), 0);
}

TEST_F(ScriptCommandsTest, CheckTakesAListAndGoesOnPastEachFault) {
    writeFile("bad", "x");
    writeFile("fine", "[a]");
    std::string const report = "bad:1: Syntax error in file bad at line 1\n";
    EXPECT_EQ(zel({"script", "check", "-"}, "bad\nfine\r\n\nbad\r\nbad"), 1);
    EXPECT_EQ(out(), report + report + report);
    EXPECT_EQ(zel({"script", "check", "-"}, "nowhere\nbad\n"), 3)
        << "a script that is not there is a failure";
    EXPECT_EQ(err(), "zel: Failed to open file \"nowhere\"\n");
    EXPECT_EQ(out(), report);
}

TEST_F(ScriptCommandsTest, TheIncludeThatFailedIsTheOneThatIsTold) {
    writeFile("inc", "[a]\n#include gone");
    writeFile("open", "x = \"literal");
    writeFile("half", "/*");
    struct Case {
        std::string text, place;
    };
    for (auto const& [text, place] :
         {Case{"\n// #include gone\n/* #include gone\n*/ #include gone\n", "s:4"},
          Case{"[a] s = \"\n#include gone\n\"; t = 1; #include gone\n", "s:3"},
          Case{"[a] s = \"\\\"; #include gone", "s:1"}, Case{"#include inc", "inc:2"},
          Case{"\n/* /* */ #include gone\n*/ \n # \tinclude \"gone\" more\n", "s:4"},
          Case{"#include inc\n#include gone\n", "inc:2"},
          // A quote or a comment that an included file leaves open ends in the including one.
          Case{"[a]\n#include open\n-\"; #include gone\n\n#include gone\n", "s:3"},
          Case{"#include half\n\n*/ #include gone\n", "s:3"},
          Case{"#define include x\n#include\tgone\r\n", "s:2"}, Case{"#include q:/../../q\n", "s:1"},
          Case{"#include \"\"\n", "s:1"}}) {
        writeFile("s", text);
        EXPECT_EQ(zel({"script", "check", "s"}), 1);
        EXPECT_THAT(out(), testing::StartsWith(place + ": ")) << text;
    }
}

TEST_F(ScriptCommandsTest, AFolderIsReadOnce) {
    writeFile("Script", "");
    ::zel::FolderNames folders;
    EXPECT_EQ(folders.found(path("."), "sCRIPT"), "Script");
    EXPECT_EQ(folders.found(path("."), "other"), "other");
    writeFile("script.new", "");
    EXPECT_EQ(folders.found(path("."), "SCRIPT.NEW"), "SCRIPT.NEW") << "not there when the folder was read";
}

TEST_F(ScriptCommandsTest, NoFileKeepsTheOthersFromBeingChecked) {
    writeFile("bad", "x");
    writeFile("inc", "[a]\n#include nowhere");
    writeFile("outer", "\n#include inc\n");
    std::string deep = "d";
    while (deep.size() < 1000)
        deep += "/../d";
    writeFile("d/open", "[a] x = 1");
    EXPECT_EQ(zel({"script", "check", deep + "/open", "outer", "bad"}), 1) << err();
    EXPECT_THAT(out(), HasSubstr("/open:1: Unexpected end of file in script d/../d"));
    EXPECT_THAT(out(), HasSubstr("\ninc:2: Failed to open file \"nowhere\"\n"));
    EXPECT_THAT(out(), HasSubstr("\nbad:1: Syntax error in file bad at line 1\n"));
    EXPECT_EQ(zel({"script", "check", "q:/../../q", "d", "bad"}), 3);
    EXPECT_EQ(err(),
              "zel: Directory \"q:\\..\\..\\q\" not found\nzel: cannot read d: it is no regular file\n");
    EXPECT_THAT(out(), HasSubstr("bad:1:"));
    EXPECT_EQ(zel({"script", "dump", "d"}), 3) << "a folder is no script";
}

TEST_F(ScriptCommandsTest, ScriptsAreFoundInTheDataDirectoryAndItsArchives) {
    writeFile("data/main", "#include sub/inc\n#include packed\n[a] x = TWO;");
    writeFile("data/sub/inc", "\n#define TWO 2\n");
    packArchive("a.bva", {{"packed", "[p] y = 1;\n"}});
    EXPECT_EQ(zel({"script", "dump", "--data", "data", "--archive", "a.bva", "main"}), 0) << err();
    EXPECT_EQ(out(), "[p]\n  y = 1 (int)\n[a]\n  x = 2 (int)\n");
    writeFile("data/sub/inc", "\n[a] x = ;");
    EXPECT_EQ(zel({"script", "check", "--data", "data", "--archive", "a.bva", "main"}), 1);
    EXPECT_EQ(out(), (fs::path("data") / "sub/inc").string() + ":2: Syntax error in file sub/inc at line 2\n")
        << "a path that an editor can open";
}

TEST_F(ScriptCommandsTest, DumpShowsEveryTypeAsTextAndJson) {
    writeFile("s", "[a] i = 1; b = TRUE; s = \"q\\n\"; f = .5; f = 2.5; v2 = (1,2); v3 = (1,2,3);"
                   "v4 = (1,2,3,4); n = [0.1,0.2]; { [b] [c] x = 1; } [d]");
    EXPECT_EQ(zel({"script", "dump", "s"}), 0);
    EXPECT_EQ(out(),
              "[a]\n  i = 1 (int)\n  b = TRUE (bool)\n  s = \"q\\n\" (string)\n  f = .5 (float)\n"
              "  f = 2.5 (float)\n  v2 = (1,2) (vector2)\n  v3 = (1,2,3) (vector3)\n"
              "  v4 = (1,2,3,4) (vector4)\n  n = [0.1,0.2] (interval)\n  [b]\n  [c]\n    x = 1 (int)\n[d]\n");
    EXPECT_EQ(zel({"script", "dump", "--json", "s"}), 0);
    auto const tree = nlohmann::json::parse(out());
    EXPECT_EQ(tree["blocks"].size(), 2u);
    auto const& variables = tree["blocks"][0]["variables"];
    EXPECT_EQ(variables[2], nlohmann::json({{"name", "s"}, {"type", "string"}, {"value", "q\n"}}));
    EXPECT_EQ(variables[4]["value"], 2.5);
    EXPECT_EQ(variables[7]["value"], nlohmann::json({1, 2, 3, 4}));
    EXPECT_EQ(variables[8]["value"], nlohmann::json({0.1, 0.2}));
    EXPECT_EQ(tree["blocks"][0]["blocks"][1]["variables"][0]["value"], 1);

    EXPECT_EQ(zel({"script", "dump", "missing"}), 3);
    writeFile("bad", "x");
    EXPECT_EQ(zel({"script", "dump", "bad"}), 1);
    EXPECT_EQ(err(), "zel: Syntax error in file bad at line 1\n");
}

} // namespace
