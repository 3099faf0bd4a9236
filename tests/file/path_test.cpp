// Path::append: where each kind of text leads.

#include "support/library_test.h"

namespace {

TEST(PathTest, AppendGoesFromADirectoryToAnother) {
    using Steps = std::vector<std::pair<char const*, char const*>>; // what is appended, and where it leads
    std::pair<char const*, Steps> const cases[] = {
        {"", {{"data/ui", "data\\ui"}, {"c:", "c:\\"}, {"c:\\", "c:\\"}}},
        {"data", {{"", "data"}, {".", "data"}, {"./ui/.", "data\\ui"}}},
        {"data", {{"ui\\", "data\\ui"}, {"ui/x/../y", "data\\ui\\y"}, {"d:\\z", "d:\\z"}}},
        {"data", {{"\\\\server\\share\\", "\\\\server\\share"}}},
        {"c:\\a", {{"\\tmp", "c:\\tmp"}, {"d:\\z", "d:\\z"}, {"//server/share", "\\\\server\\share"}}},
        {"c:\\a\\b",
         {{"\\", "c:\\"}, {"/", "c:\\"}, {"..\\x", "c:\\a\\x"}}}, // a separator alone is a root step
        {"c:\\a", {{"x\\\\y", "c:\\y"}}},                         // a doubled separator too
        {"x", {{"a\\c:b\\d", "c:b\\d"}}},                         // a drive may come late
        {"c:\\a", {{"d:/x//y//z", "d:\\z"}, {"..", "c:"}}},       // the root of the drive that came last
        {"c:", {{"ab:///x", "ab:\\x"}, {"x", "c:\\x"}}},
        {"c:\\", {{"x", "c:\\x"}}},
        {"\\\\server\\share", {{"x", "\\\\server\\share\\x"}}},
        {"a\\b:c", {{"/x", "a\\b:\\x"}}},
        {"a", {{"...", "a\\..."}, {" b ", "a\\ b "}}},
    };
    for (auto const& [from, steps] : cases)
        for (auto const& [text, expected] : steps) {
            Zel::Path path{std::string(from)};
            path.append(text);
            EXPECT_EQ(path.str(), expected) << from << " + " << text;
        }
}

/// Expects appending to fail for the directory that is named, and what is left of the path.
void expectFailure(char const* from, char const* text, std::string const& named, char const* left) {
    Zel::Path path{std::string(from)};
    EXPECT_EQ(test::errorOf<Zel::FileException_DirectoryNotFound>([&] { path.append(text); }),
              "Directory \"" + named + "\" not found");
    EXPECT_EQ(path.str(), left) << from << " + " << text;
}

TEST(PathTest, WhatFailsIsNamedAndWhatCameBeforeStays) {
    expectFailure("c:", "..", "..", "c:");
    expectFailure("", "..", "..", "");
    expectFailure("data", "../", "..", "data");
    expectFailure("data", "/tmp/", "\\tmp", "data");
    expectFailure("", "/", "", "");
    expectFailure("", "x/..", "x\\..", "x");
    expectFailure("a\\b:c", "../x//y", "..\\x\\\\y", "a\\x");
    expectFailure("c:\\a", "d:/b/../../../c", "d:\\b\\..\\..\\..\\c", "d:");
}

TEST(PathTest, APathCanBeAppendedToItself) {
    Zel::Path path("a\\b");
    path.append(path.str());
    EXPECT_EQ(path.str(), "a\\b\\a\\b");
}

TEST(PathTest, AConstructedPathKeepsItsText) { EXPECT_EQ(Zel::Path("a/b//C\\").str(), "a/b//C\\"); }

} // namespace
