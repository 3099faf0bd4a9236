// What names may cost the index that finds them: counted in names looked at, for names of every kind.

#include "core/name_index.h"

#include <gtest/gtest.h>
#include <map>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::string>;

/// So many distinct names whose hashes are all multiples of a number.
Names distinctNames(std::size_t count, std::size_t factor = 1) {
    Names names;
    for (std::size_t i = 0; names.size() < count; ++i) {
        std::string name = std::to_string(i);
        if (std::hash<std::string_view>()(name) % factor == 0)
            names.push_back(std::move(name));
    }
    return names;
}

struct Costs {
    std::size_t building = 0;
    std::size_t dearestLookUp = 0;
};

/// Builds an index and looks each name up, and one that is missing behind each.
Costs costsOf(Names const& names) {
    std::size_t looks = 0;
    auto const nameAt = [&](std::size_t i) -> std::string_view {
        ++looks;
        return names[i];
    };
    Zel::NameIndex const index(names.size(), nameAt);
    Costs costs{looks, 0};
    std::map<std::string_view, std::size_t> first;
    for (std::size_t i = 0; i < names.size(); ++i) {
        first.emplace(names[i], i);
        looks = 0;
        EXPECT_EQ(index.find(names[i], nameAt), first.at(names[i])) << names[i];
        EXPECT_EQ(index.find(names[i] + "?", nameAt), std::nullopt) << names[i];
        costs.dearestLookUp = std::max(costs.dearestLookUp, looks);
    }
    return costs;
}

TEST(NameIndexTest, NoNamesMakeItSlow) {
    constexpr std::size_t kCount = 1'000;
    constexpr std::size_t kSlots = std::bit_ceil(kCount + kCount / 2 + 1); // of an index of so many
    std::pair<char const*, Names> const kinds[] = {{"distinct", distinctNames(kCount)},
                                                   {"equal", Names(kCount, "same")},
                                                   {"on one slot", distinctNames(kCount, kSlots)}};
    for (auto const& [what, names] : kinds) {
        Costs const once = costsOf({names.begin(), names.begin() + kCount / 2});
        Costs const twice = costsOf(names);
        EXPECT_LE(twice.building, once.building * 5 / 2) << what;
        EXPECT_LE(twice.building, 100'000u) << what;
        EXPECT_LE(twice.dearestLookUp, once.dearestLookUp + 20) << what;
        EXPECT_LE(twice.dearestLookUp, 100u) << what;
    }
}

} // namespace
