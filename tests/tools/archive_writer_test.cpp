#include "archive_writer.h"

#include <gtest/gtest.h>
#include <sstream>
#include <stdexcept>

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

TEST(ArchiveWriterTest, RefusesWhatTheFormatCannotHold) {
    std::ostringstream stream;
    zel::ArchiveWriter large;
    large.add("a", 0x7FFFFFFF, [] { return std::string(); });
    EXPECT_THROW(large.write(stream), std::length_error);
    EXPECT_EQ(stream.str(), "");

    zel::ArchiveWriter changed;
    changed.add("a", 3, [] { return std::string("four"); });
    EXPECT_THROW(changed.write(stream), std::runtime_error);
}

} // namespace
