#include "archive/archive_writer.h"

#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

/// Hands on one piece after the other.
zel::ArchiveWriter::Load loadOf(std::vector<std::string> const& pieces) {
    return [pieces](zel::ArchiveWriter::Take const& take) {
        for (std::string const& piece : pieces)
            take(piece);
    };
}

TEST(ArchiveWriterTest, PiecesMakeTheSameEntryAsTheWholeWhereTheStreamStands) {
    std::ostringstream whole, pieces;
    zel::ArchiveWriter writer;
    writer.add("a", "content");
    writer.write(whole);
    zel::ArchiveWriter other;
    other.add("a", 7, loadOf({"c", "", "onte", "nt"}));
    std::vector<std::uint64_t> told;
    pieces << "before";
    other.write(pieces, [&told](std::uint64_t bytes) { told.push_back(bytes); });
    pieces << "after";
    EXPECT_EQ(pieces.str(), "before" + whole.str() + "after");
    EXPECT_EQ(other.archiveSize(), whole.str().size());
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
