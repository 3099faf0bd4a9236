#include "archive_writer.h"

#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

TEST(ArchiveWriterTest, WritesTheFormatToTheByte) {
    zel::ArchiveWriter writer;
    writer.add("a", "A");
    std::ostringstream stream;
    stream << "before";
    std::uint64_t told = 0;
    writer.write(stream, [&told](std::uint64_t bytes) { told += bytes; });
    stream << "after";
    // Version 44 and length 17 plain, then scrambled: 1, "a", 1, 29, CRC of "A"; CRC of the table; "A".
    std::string const expected("\x2C\0\0\0\x11\0\0\0"
                               "\x3A\x3B\x3B\x3B\x5A\x3A\x3B\x3B\x3B\x26\x3B\x3B\x3B\xB0\xA5\xE2\xE8"
                               "\x73\x33\xF9\x58\x7A",
                               30);
    EXPECT_EQ(stream.str(), "before" + expected + "after");
    EXPECT_EQ(writer.archiveSize(), expected.size());
    EXPECT_EQ(told, 1u);
}

/// Hands on one piece after the other.
zel::ArchiveWriter::Load loadOf(std::vector<std::string> const& pieces) {
    return [pieces](zel::ArchiveWriter::Take const& take) {
        for (std::string const& piece : pieces)
            take(piece);
    };
}

TEST(ArchiveWriterTest, PiecesMakeTheSameEntryAsTheWhole) {
    std::ostringstream whole, pieces;
    zel::ArchiveWriter writer;
    writer.add("a", "content");
    writer.write(whole);
    zel::ArchiveWriter other;
    other.add("a", 7, loadOf({"c", "", "onte", "nt"}));
    std::vector<std::uint64_t> told;
    other.write(pieces, [&told](std::uint64_t bytes) { told.push_back(bytes); });
    EXPECT_EQ(pieces.str(), whole.str());
    EXPECT_EQ(told, (std::vector<std::uint64_t>{1, 0, 4, 2}));
}

TEST(ArchiveWriterTest, RefusesWhatTheFormatCannotHold) {
    std::ostringstream stream;
    zel::ArchiveWriter large;
    large.add("a", 0x7FFFFFFF, loadOf({}));
    EXPECT_THROW(large.write(stream), std::length_error);
    EXPECT_EQ(stream.str(), "");

    std::vector<std::string> const others[] = {{}, {"on"}, {"four"}, {"thr", "ee"}};
    for (std::vector<std::string> const& pieces : others) {
        zel::ArchiveWriter changed;
        changed.add("a", 3, loadOf(pieces));
        EXPECT_THROW(changed.write(stream), std::runtime_error) << pieces.size();
    }
}

} // namespace
