// Taking names apart.

#include <gtest/gtest.h>
#include <utility>
#include <vector>
#include <zel/file.h>

namespace {

/// Results, and the names that have them.
using Table = std::vector<std::pair<std::string, std::vector<std::string>>>;

void expectAll(std::string (*function)(std::string const&), Table const& table) {
    for (auto const& [expected, names] : table)
        for (std::string const& name : names)
            EXPECT_EQ(function(name), expected) << name;
}

TEST(NamesTest, StripPathKeepsTheNameLessWhatALeadingSeparatorCosts) {
    expectAll(Zel::File::stripPath, {{"c.txt", {"a/b\\c.txt", "c.txt"}},
                                     {"ab", {"\\abc", "/abc"}},
                                     {"c", {"a\\b/c"}},
                                     {"b", {"/a\\bc"}}, // "/" costs the c, and of "a\b" the "\" costs nothing
                                     {"", {"/", "", "dir/"}}});
}

TEST(NamesTest, StripExtensionCutsAtTheLastDotOfAll) {
    expectAll(Zel::File::stripExtension,
              {{"a", {"a.b\\c"}}, {"x.tar", {"x.tar.gz"}}, {"plain", {"plain"}}, {"", {".rc", ""}}});
}

TEST(NamesTest, GetExtensionLooksAtTheLastComponent) {
    std::string const limit(255, 'x');
    expectAll(Zel::File::getExtension,
              {{"gz", {"x.tar.gz"}},
               {"D", {"a.b/c.D"}},
               {"profile", {".profile"}},
               {"b", {"\\:a.b", std::string("a.b\0.c", 6)}},
               {"y", {"c:x.y", limit + ".y", limit.substr(1) + "/x.y"}},
               {limit.substr(1), {"x." + limit.substr(1)}},
               {"", {"a.b\\c", "a.b/c", "ends.", "", limit + "x.y", "x." + limit, limit + "/x.y"}}});
}

TEST(NamesTest, GetFileDirKeepsTheLastSeparator) {
    expectAll(Zel::File::getFileDir,
              {{"a/b\\", {"a/b\\c.txt"}}, {"a\\b/", {"a\\b/c"}}, {"", {"c.txt"}}, {"/", {"/"}}});
}

} // namespace
