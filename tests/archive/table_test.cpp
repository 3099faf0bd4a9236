// Tables of archives, straight from bytes.

#include "archive/entries.h"
#include "support/library_test.h"

#include "archive/archive_writer.h"
#include "support/pictures.h"

#include <algorithm>
#include <map>
#include <random>

namespace {

using test::littleEndian;
using Zel::ArchiveEntries;

Zel::EntryTable readTable(std::string const& bytes) {
    auto const read = [at = std::size_t{0}, &bytes](void* to, std::size_t count) mutable {
        std::copy_n(bytes.begin() + static_cast<std::ptrdiff_t>(at), count, static_cast<char*>(to));
        at += count;
    };
    return {bytes.size(), read, "odd.bva"};
}

template <class Failure = Zel::Exception_ArchiveCorrupt>
std::string errorOfReading(std::string const& bytes) {
    return test::errorOf<Failure>([&] { readTable(bytes); });
}

constexpr char kCorrupt[] = "Archive \"odd.bva\" is corrupt";
constexpr char kSound[] = "no exception";

TEST(TableTest, AVersionOtherThan44IsNamed) {
    std::string bytes = zel::archiveHead({{"a", 1, 29, 0}});
    for (std::int32_t const version : {43, 45, 0, 300, -2147483348}) {
        bytes.replace(0, 4, littleEndian(static_cast<std::uint32_t>(version), 4));
        EXPECT_EQ(errorOfReading<Zel::Exception_ArchiveVersionInvalid>(bytes),
                  "Archive \"odd.bva\" has invalid version " + std::to_string(version) + " (expected 44)");
    }
}

TEST(TableTest, AnyFlippedBitOfTheTableOrItsChecksumIsFound) {
    std::string const sound = zel::archiveHead({{"a", 1, 48, 7}, {"b\\c", 2, 49, 8}});
    for (std::size_t bit = 8 * 8; bit < sound.size() * 8; ++bit) {
        std::string damaged = sound;
        damaged[bit / 8] ^= static_cast<char>(1 << bit % 8);
        EXPECT_EQ(errorOfReading(damaged), kCorrupt) << bit;
    }
}

TEST(TableTest, TablesThatContradictThemselvesAreCorrupt) {
    EXPECT_EQ(errorOfReading(zel::archiveHead({})), kCorrupt) << "an empty table";
    EXPECT_EQ(errorOfReading(zel::archiveHead({{"a", 0, 29, 0}})), kCorrupt) << "an empty entry";
    EXPECT_EQ(errorOfReading(zel::archiveHead({{"a", 1, 29, 0}})), kSound);
    EXPECT_EQ(errorOfReading(zel::archiveHead({{"", 1, 29, 0}})), kSound) << "a name may be empty";

    // A table of `length` bytes with a right checksum, all of it one record that begins with `nameLength`.
    auto const oneRecord = [](std::uint32_t nameLength, std::uint32_t length) {
        std::string table = littleEndian(nameLength, 4) + std::string(length - 4, '\1');
        table += littleEndian(static_cast<std::uint32_t>(Zel::crc32(table.data(), length)), 4);
        Zel::Archive::decrypt(table.data(), static_cast<int>(table.size()));
        return littleEndian(44, 4) + littleEndian(length, 4) + table;
    };
    EXPECT_EQ(errorOfReading(oneRecord(4, 20)), kSound);
    for (std::uint32_t nameLength : {5u, 20u, 0x7FFFFFFFu, 0x80000000u, 0xFFFFFFF0u, 0xFFFFFFFFu})
        EXPECT_EQ(errorOfReading(oneRecord(nameLength, 20)), kCorrupt) << nameLength;
    EXPECT_EQ(errorOfReading(oneRecord(3, 20)), kCorrupt) << "one byte of a record is left over";
}

TEST(TableTest, RecordsAreInTheOrderOfTheirNamesAndTheFirstOfANameCounts) {
    Zel::EntryTable const table =
        readTable(zel::archiveHead({{"b", 1, 10, 0}, {"a", 2, 20, 0}, {"b", 3, 30, 0}}));
    ASSERT_EQ(table.size(), 2u);
    EXPECT_EQ(table.recordAt(0).name, "a");
    EXPECT_EQ(table.recordAt(*table.find("b")).size, 1u);
}

/// What a walk meets, each key with its entry's size.
std::string walked(ArchiveEntries const& entries, ArchiveEntries::Walk walk) {
    std::string text;
    std::string key;
    while (auto const place = walk.next(key))
        text += key + std::to_string(entries.recordAt(*place).size) + " ";
    return text;
}

TEST(EntriesTest, ManyTablesAreOneOrderedMapInWhichTheEarlierEntryStays) {
    ArchiveEntries entries;
    entries.add("d\\", readTable(zel::archiveHead({{"a", 1, 9, 0}, {"c", 1, 9, 0}, {"e\\x", 1, 9, 0}})));
    entries.add("d\\e\\", readTable(zel::archiveHead({{"w", 2, 9, 0}, {"x", 2, 9, 0}, {"y", 2, 9, 0}})));
    entries.add("d\\", readTable(zel::archiveHead({{"b", 3, 9, 0}, {"c", 3, 9, 0}, {"z", 3, 9, 0}})));
    entries.add("", readTable(zel::archiveHead({{"d\\a", 4, 9, 0}})));
    EXPECT_EQ(walked(entries, ArchiveEntries::Walk(entries)),
              "d\\a1 d\\b3 d\\c1 d\\e\\w2 d\\e\\x1 d\\e\\y2 d\\z3 ");
    auto const x = entries.find("d\\e\\x");
    ASSERT_TRUE(x);
    EXPECT_EQ(entries.recordAt(*x).size, 1u);
    EXPECT_EQ(walked(entries, ArchiveEntries::Walk(entries, *x)), "d\\e\\y2 d\\z3 ");
    entries.markAccessed(*x);
    EXPECT_TRUE(entries.isAccessed(*entries.find("d\\e\\x")));
    EXPECT_FALSE(entries.isAccessed(*entries.find("d\\e\\y")));
    EXPECT_FALSE(entries.find("d\\e"));
}

TEST(EntriesTest, TablesOfAnySizesInAnyOrderAreOneMap) {
    std::mt19937 random(1);
    std::map<std::string, std::uint32_t> wanted; // key and size
    ArchiveEntries entries;
    for (std::uint32_t table = 1; table <= 40; ++table) {
        std::string const prefix = random() % 3 == 0 ? "" : "a\\";
        std::vector<zel::ArchiveRecord> records;
        for (std::size_t count = random() % 20 + 1; count > 0; --count)
            records.push_back({(prefix.empty() ? "a\\" : "") + std::to_string(random() % 300), table, 9, 0});
        for (auto const& record : records)
            wanted.try_emplace(prefix + record.name, table);
        entries.add(prefix, readTable(zel::archiveHead(records)));
    }
    std::string all;
    for (auto const& [key, size] : wanted)
        all += key + std::to_string(size) + " ";
    EXPECT_EQ(walked(entries, ArchiveEntries::Walk(entries)), all);
    for (auto const& [key, size] : wanted) {
        auto const place = entries.find(key);
        ASSERT_TRUE(place) << key;
        all.erase(0, key.size() + std::to_string(size).size() + 1);
        EXPECT_EQ(walked(entries, ArchiveEntries::Walk(entries, *place)), all) << key;
        EXPECT_FALSE(entries.find(key + "x")) << key;
    }
}

} // namespace
