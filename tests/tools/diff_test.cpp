// zel diff

#include "support/program_test.h"

#include <nlohmann/json.hpp>

namespace {

using DiffTest = test::ProgramTest;

TEST_F(DiffTest, TellsWhatIsAddedRemovedAndChanged) {
    packArchive("a.bva", {{"gone", "1"}, {"same", "2"}, {"longer", "3"}, {"other", "4"}, {"inner.bva", "5"}});
    packArchive("b.bva", {{"other", "5"}, {"longer", "33"}, {"same", "2"}, {"New", "6"}, {"inner.bva", "5"}});
    EXPECT_EQ(zel({"diff", "a.bva", "b.bva"}), 1);
    EXPECT_EQ(out(), "added    New\n"
                     "removed  gone\n"
                     "changed  longer\n"
                     "changed  other\n"
                     "1 added, 1 removed, 2 changed, 2 the same\n");
    EXPECT_EQ(zel({"diff", "--json", "b.bva", "a.bva"}), 1);
    EXPECT_EQ(nlohmann::json::parse(out()), nlohmann::json::parse(R"({
        "before": "b.bva", "after": "a.bva", "identical": false,
        "added": ["gone"], "removed": ["New"], "changed": ["longer", "other"], "same": 2})"));
}

TEST_F(DiffTest, TheSameEntriesInAnotherOrderAreNoDifference) {
    packArchive("a.bva", {{"x", "1"}, {"y", "2"}});
    packArchive("b.bva", {{"y", "2"}, {"x", "1"}});
    expectOut({"diff", "a.bva", "b.bva"}, "0 added, 0 removed, 0 changed, 2 the same\n");
    EXPECT_EQ(zel({"diff", "a.bva", "missing.bva"}), 3);
    writeFile("bad.bva", "no archive at all"); // 1629515630 is "no a"
    expectErr({"diff", "a.bva", "bad.bva"}, 1,
              "zel: Archive \"bad.bva\" has invalid version 1629515630 (expected 44)\n");
}

TEST_F(DiffTest, NoEntryOfOneArchiveStandsInForTheOther) {
    packArchive("b.bva", {{"x", "2"}});
    packArchive("a.bva", {{"x", "1"}, {"b.bva", readFile("b.bva")}});
    packArchive("b.bva", {{"x", "1"}});
    EXPECT_EQ(zel({"diff", "a.bva", "b.bva"}), 1);
    EXPECT_EQ(out(), "removed  b.bva\n0 added, 1 removed, 0 changed, 1 the same\n");
}

} // namespace
