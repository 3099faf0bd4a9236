// Taking names apart.

#include <gtest/gtest.h>
#include <utility>
#include <vector>
#include <zel/file.h>

namespace {

void expectAll(std::string (*function)(std::string const&),
               std::vector<std::pair<std::string, std::string>> const& cases) {
    for (auto const& [name, expected] : cases)
        EXPECT_EQ(function(name), expected) << name;
}

TEST(NamesTest, StripPathKeepsTheNameLessWhatALeadingSeparatorCosts) {
    expectAll(Zel::File::stripPath, {{"a/b\\c.txt", "c.txt"},
                                     {"c.txt", "c.txt"},
                                     {"\\abc", "ab"},
                                     {"/abc", "ab"},
                                     {"a\\b/c", "c"},
                                     {"/a\\bc", "b"}, // "/" costs the c, and of "a\b" the "\" costs nothing
                                     {"/", ""},
                                     {"", ""},
                                     {"dir/", ""}});
}

TEST(NamesTest, StripExtensionCutsAtTheLastDotOfAll) {
    expectAll(Zel::File::stripExtension,
              {{"a.b\\c", "a"}, {"x.tar.gz", "x.tar"}, {"plain", "plain"}, {".rc", ""}, {"", ""}});
}

TEST(NamesTest, GetExtensionLooksAtTheLastComponent) {
    std::string const limit(255, 'x');
    expectAll(Zel::File::getExtension, {{"x.tar.gz", "gz"},
                                        {"a.b\\c", ""},
                                        {"a.b/c", ""},
                                        {"a.b/c.D", "D"},
                                        {".profile", "profile"},
                                        {"ends.", ""},
                                        {"c:x.y", "y"},
                                        {"\\:a.b", "b"},
                                        {"", ""},
                                        {limit + ".y", "y"},
                                        {limit + "x.y", ""},
                                        {"x." + limit.substr(1), limit.substr(1)},
                                        {"x." + limit, ""},
                                        {limit.substr(1) + "/x.y", "y"},
                                        {limit + "/x.y", ""},
                                        {std::string("a.b\0.c", 6), "b"}});
}

TEST(NamesTest, GetFileDirKeepsTheLastSeparator) {
    expectAll(Zel::File::getFileDir,
              {{"a/b\\c.txt", "a/b\\"}, {"a\\b/c", "a\\b/"}, {"c.txt", ""}, {"/", "/"}});
}

} // namespace
