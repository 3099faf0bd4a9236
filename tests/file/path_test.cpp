// Path::append: where each kind of text leads.

#include "support/library_test.h"

namespace {

TEST(PathTest, AppendGoesFromADirectoryToAnother) {
    struct {
        char const* from;
        char const* text;
        char const* expected;
    } const cases[] = {
        {"", "data/ui", "data\\ui"},
        {"c:\\a\\b", "..\\x", "c:\\a\\x"},
        {"c:\\a", "\\tmp", "c:\\tmp"},
        {"c:\\a", "d:\\z", "d:\\z"},
        {"data", "d:\\z", "d:\\z"},
        {"data", "", "data"},
        {"data", ".", "data"},
        {"data", "./ui/.", "data\\ui"},
        {"data", "ui\\", "data\\ui"},
        {"data", "ui/x/../y", "data\\ui\\y"},
        {"data", "\\\\server\\share\\", "\\\\server\\share"},
        {"c:\\a", "//server/share", "\\\\server\\share"},
        {"c:\\a\\b", "\\", "c:\\"}, // nothing but a separator is a root step
        {"c:\\a\\b", "/", "c:\\"},
        {"c:\\a", "x\\\\y", "c:\\y"}, // a doubled separator too
        {"", "c:", "c:\\"},
        {"", "c:\\", "c:\\"},
        {"x", "a\\c:b\\d", "c:b\\d"}, // a drive may come late
        {"c:\\a", "..", "c:"},
        {"c:", "x", "c:\\x"},
        {"c:\\", "x", "c:\\x"},
        {"\\\\server\\share", "x", "\\\\server\\share\\x"},
        {"a\\b", "...", "a\\b\\..."},
        {"a", " b ", "a\\ b "},
        {"c:\\a", "d:/x//y//z", "d:\\z"}, // the root of the drive that came last
        {"c:", "ab:///x", "ab:\\x"},
        {"a\\b:c", "/x", "a\\b:\\x"},
    };
    for (auto const& [from, text, expected] : cases) {
        Zel::Path path{std::string(from)};
        path.append(text);
        EXPECT_EQ(path.str(), expected) << from << " + " << text;
    }
}

TEST(PathTest, WhatFailsIsNamedAndWhatCameBeforeStays) {
    struct {
        char const* from;
        char const* text;
        char const* message;
        char const* left;
    } const cases[] = {
        {"c:", "..", "Directory \"..\" not found", "c:"},
        {"", "..", "Directory \"..\" not found", ""},
        {"data", "../", "Directory \"..\" not found", "data"},
        {"data", "/tmp/", "Directory \"\\tmp\" not found", "data"},
        {"", "/", "Directory \"\" not found", ""},
        {"", "x/..", "Directory \"x\\..\" not found", "x"},
        {"a\\b:c", "../x//y", "Directory \"..\\x\\\\y\" not found", "a\\x"},
        {"c:\\a", "d:/b/../../../c", "Directory \"d:\\b\\..\\..\\..\\c\" not found", "d:"},
    };
    for (auto const& [from, text, message, left] : cases) {
        Zel::Path path{std::string(from)};
        auto const append = [&path, appended = text] {
            path.append(appended);
        };
        EXPECT_EQ(test::errorOf<Zel::FileException_DirectoryNotFound>(append), message);
        EXPECT_EQ(path.str(), left) << from << " + " << text;
    }
}

TEST(PathTest, APathCanBeAppendedToItself) {
    Zel::Path path("a\\b");
    path.append(path.str());
    EXPECT_EQ(path.str(), "a\\b\\a\\b");
}

TEST(PathTest, AConstructedPathKeepsItsText) { EXPECT_EQ(Zel::Path("a/b//C\\").str(), "a/b//C\\"); }

} // namespace
