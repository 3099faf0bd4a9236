// A script's cursor, getters, copies and dump.

#include "support/script_test.h"

#include <optional>
#include <type_traits>

namespace {

using Zel::Script;

using QueryTest = test::ScriptTest;
using test::errorOf;

TEST_F(QueryTest, TheCursorStartsAtRootAndSeesOneLevel) {
    Script script = parse("[a] x = 1; { [b] y = 2; } [a] x = 3;");
    EXPECT_EQ(Script("Main").getFilename(), "Main");
    EXPECT_EQ(script.getBlockName(), "ROOT");
    EXPECT_EQ(script.getBlockCount(), 2);
    EXPECT_TRUE(script.hasBlock("a"));
    EXPECT_FALSE(script.hasBlock("b"));
    script.lock("a");
    EXPECT_EQ(script.getInt("x"), 1) << "the first block of that name";
    script.lock("b");
    EXPECT_FALSE(script.isDefined("x")) << "a parent's variable";
    EXPECT_EQ(script.getInt("y"), 2);
    EXPECT_EQ(script.getBlockCount(), 0);
    script.unlock();
    script.unlock();
    script.lock(1);
    EXPECT_EQ(script.getInt("x"), 3);
    EXPECT_EQ(errorOf<Zel::ScriptException_BlockNotFound>([&] { script.lock("A"); }),
              "Block A not found in main");
    EXPECT_EQ(script.getInt("x"), 3) << "the cursor has stayed";
}

TEST_F(QueryTest, OneOfManyBlocksAndVariablesIsFoundByItsFirstName) {
    std::string blocks, variables;
    for (int i = 0; i < 500; ++i) {
        std::string const name = std::to_string(i % 250), value = " = " + std::to_string(i) + ";";
        blocks += "[b" + name + "] x" + value;
        variables += "x" + name + value;
    }
    // A value that a brace is in expects names again: these come behind those of a child.
    Script script = parse(blocks + "[a]" + variables + "y = 1 {2; [child] x0 = 7; {} x1 = 8; z = 9; }");
    EXPECT_FALSE(script.hasBlock("b250"));
    EXPECT_THROW(script.lock(""), Zel::ScriptException_BlockNotFound);
    Script a = script;
    a.lock("a");
    for (int i = 0; i < 250; ++i) {
        script.lock("b" + std::to_string(i));
        EXPECT_EQ(script.getInt("x"), i);
        EXPECT_EQ(a.getInt("x" + std::to_string(i)), i);
        script.unlock();
    }
    EXPECT_EQ(a.getInt("y"), 12);
    EXPECT_EQ(a.getInt("z"), 9);
    EXPECT_FALSE(a.isDefined("x250") || a.isDefined(""));
    EXPECT_EQ(a.getVariables().size(), 503u); // with y, z and the second x1
}

TEST_F(QueryTest, TypesAreNeverConverted) {
    Script script = parse("[a] i = 1; i = 2; b = TRUE; s = \"t\"; f = 0.5; v2 = (1,2); v3 = (1,2,3);"
                          "v4 = (1,2,3,4); n = [1,2];");
    EXPECT_EQ(errorOf<Zel::ScriptException_UndefinedVariable>([&] { script.getInt("i"); }),
              "Undefined variable i in main in block ROOT");
    script.lock("a");
    EXPECT_EQ(script.getInt("i"), 1) << "the first of that name";
    EXPECT_EQ(errorOf<Zel::ScriptException_UndefinedVariable>([&] { script.getString("none"); }),
              "Undefined variable none in main in block a");
    EXPECT_EQ(errorOf<Zel::ScriptException_TypeMismatch>([&] { script.getFloat("i"); }),
              "Variable i type mismatch in main");

    // Every getter finds its own type, refuses all others, and takes its default when there is none.
    for (std::string const name : {"i", "b", "s", "f", "v2", "v3", "v4", "n"}) {
        std::string accepting;
        auto const attempt = [&](char const* own, auto get) {
            if (errorOf<Zel::ScriptException_TypeMismatch>(get) == "no exception")
                accepting += own;
        };
        attempt("i", [&] { script.getInt(name, 7); });
        attempt("b", [&] { script.getBool(name, true); });
        attempt("s", [&] { script.getString(name, "default"); });
        attempt("f", [&] { script.getFloat(name, 7); });
        attempt("v2", [&] { script.getVector2(name, {}); });
        attempt("v3", [&] { script.getVector3(name, {}); });
        attempt("v4", [&] { script.getVector4(name, {}); });
        attempt("n", [&] { script.getInterval(name, {}); });
        EXPECT_EQ(accepting, name);
    }
    EXPECT_EQ(script.getInt("none", 7), 7);
    EXPECT_TRUE(script.getBool("none", true));
    EXPECT_EQ(script.getFloat("none", 0.25f), 0.25f);
    std::string const text = "default";
    Zel::Vector4Template<float> const vector(1, 2, 3, 4);
    EXPECT_EQ(&script.getString("none", text), &text) << "the caller's object itself";
    EXPECT_EQ(&script.getVector4("none", vector), &vector);
}

TEST_F(QueryTest, CopiesShareTheTreeAndKeepTheirOwnCursors) {
    std::optional<Script> script(parse("[a] s = \"text\"; [b]"));
    script->lock("a");
    Script copy(*script);
    std::string const& text = copy.getString("s");
    script->unlock();
    EXPECT_EQ(copy.getBlockName(), "a");
    script.reset();
    EXPECT_EQ(text, "text") << "the tree lives as long as a copy";
    Script other = parse("[d] s = \"other\";");
    other = copy;
    EXPECT_EQ(&other.getString("s"), &text);
    Script const& itself = other;
    other = itself;
    EXPECT_EQ(&other.getString("s"), &text);
    static_assert(std::is_convertible_v<std::string, Script>, "a name stands for its script");
}

TEST_F(QueryTest, TheDumpGoesToTheLogAndALineFeedABlockToStandardOutput) {
    Script script = parse("[a] n = 5; n = 6; { [b] s = \"hi\\n\"; } [c]");
    auto const expectDump = [&script](std::string const& lineFeeds, std::string const& text) {
        testing::internal::CaptureStdout();
        test::LogCapture const log;
        script.dump();
        EXPECT_EQ(testing::internal::GetCapturedStdout(), lineFeeds);
        EXPECT_EQ(log.text(), text);
    };
    expectDump("\n\n\n", "[a]\nn = 5 (type 0)\nn = 6 (type 0)\n  [b]\n  s = hi\n (type 2)\n[c]\n");
    script.lock("a");
    expectDump("\n", "[b]\ns = hi\n (type 2)\n"); // the current block itself is not shown
    EXPECT_EQ(script.getBlockName(), "a");
}

using QueryDeathTest = QueryTest;

TEST_F(QueryDeathTest, IndicesOutOfRangeEndTheProcess) {
    Script script = parse("[a]");
    EXPECT_DEATH(script.lock(1), "Script::lock: no block 1 among 1");
    EXPECT_DEATH(script.lock(-1), "Script::lock: no block -1");
    script.unlock();
    EXPECT_DEATH(script.getBlockCount(), "ROOT was unlocked");
}

} // namespace
