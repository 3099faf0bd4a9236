// One conformance test for every kind of stream that a File reads: a loose file and an entry among others.

#include "support/library_test.h"

#include <memory>
#include <optional>

namespace {

enum class Kind { Loose, Archived };

class StreamTest : public test::LibraryTest, public testing::WithParamInterface<Kind> {
protected:
    StreamTest() {
        for (int i = 0; i < 40'000; ++i)
            m_content += static_cast<char>(i * 7 + i / 256);
        if (GetParam() == Kind::Loose)
            writeFile("stream.bin", m_content);
        else
            m_archive.emplace(
                packArchive("a.bva", {{"before", "xx"}, {"stream.bin", m_content}, {"z", "yy"}}));
    }

    int size() const { return static_cast<int>(m_content.size()); }

    std::string m_content;
    std::optional<Zel::Archive> m_archive;
};

INSTANTIATE_TEST_SUITE_P(Kinds, StreamTest, testing::Values(Kind::Loose, Kind::Archived),
                         [](auto const& kind) { return kind.param == Kind::Loose ? "Loose" : "Archived"; });

TEST_P(StreamTest, AFreshStreamStandsAtItsStart) {
    for (auto mode : {Zel::File::READ, Zel::File::READ_TEXT}) {
        Zel::File file("stream.bin", mode);
        EXPECT_EQ(file.getFilename(), "stream.bin");
        EXPECT_EQ(file.getMode(), mode);
        EXPECT_EQ(file.getSize(), size());
        EXPECT_EQ(file.getPosition(), 0);
        EXPECT_FALSE(file.endReached());
    }
}

TEST_P(StreamTest, PiecesOfAnySizeGiveTheWhole) {
    for (int piece : {1, 7, 4096, 16'384, 39'999, 40'000}) {
        Zel::File file("stream.bin", Zel::File::READ);
        std::string content(m_content.size(), '\0');
        while (!file.endReached()) {
            int const count = std::min(piece, size() - file.getPosition());
            file.read(content.data() + file.getPosition(), count);
        }
        EXPECT_EQ(file.getPosition(), size());
        EXPECT_TRUE(content == m_content) << piece;
    }
}

TEST_P(StreamTest, ReadPastTheEndThrowsAndReadsNothing) {
    Zel::File file("stream.bin", Zel::File::READ);
    std::string buffer(m_content.size() + 1, '?');
    EXPECT_EQ(test::errorOf<Zel::FileException_ReadError>([&] { file.read(buffer.data(), size() + 1); }),
              "Read error in \"stream.bin\"");
    EXPECT_EQ(file.getPosition(), 0);
    EXPECT_EQ(buffer[0], '?');

    file.setPosition(size() - 1);
    file.read(buffer.data(), 1);
    EXPECT_EQ(buffer[0], m_content.back());
    EXPECT_TRUE(file.endReached());
    file.read(buffer.data(), 0);
    EXPECT_THROW(file.read(buffer.data(), 1), Zel::FileException_ReadError);
    EXPECT_THROW(file.read(buffer.data(), -1), Zel::FileException_ReadError);
}

TEST_P(StreamTest, PositionsAreNotCheckedAgainstTheSize) {
    Zel::File file("stream.bin", Zel::File::READ);
    char byte = 0;
    for (int position : {39'000, 5, 20'000, 0}) {
        file.setPosition(position);
        EXPECT_EQ(file.getPosition(), position);
        file.read(&byte, 1);
        EXPECT_EQ(byte, m_content[static_cast<std::size_t>(position)]);
    }
    file.setPosition(size() + 1000);
    EXPECT_EQ(file.getPosition(), size() + 1000);
    EXPECT_TRUE(file.endReached());
    EXPECT_THROW(file.read(&byte, 1), Zel::FileException_ReadError);

    // What the stream refuses is stored all the same.
    EXPECT_EQ(test::errorOf<Zel::FileException_SeekError>([&] { file.setPosition(-1'000'000); }),
              "Seek error in \"stream.bin\"");
    EXPECT_EQ(file.getPosition(), -1'000'000);
}

TEST_P(StreamTest, WritingToItIsAWriteError) {
    Zel::File file("stream.bin", Zel::File::READ);
    EXPECT_EQ(test::errorOf<Zel::FileException_WriteError>([&] { file.write("x", 1); }),
              "Write error in \"stream.bin\"");
    EXPECT_EQ(file.getSize(), size());
    EXPECT_EQ(file.getPosition(), 0);
}

TEST_P(StreamTest, ACopySharesTheStreamAndKeepsItsOwnPosition) {
    Zel::File file("stream.bin", Zel::File::READ);
    // The copy is never destroyed: its destructor would close the stream that both share.
    alignas(Zel::File) std::byte storage[sizeof(Zel::File)];
    auto* const copy = new (storage) Zel::File(file);
    char byte = 0;
    copy->read(&byte, 1);
    EXPECT_EQ(byte, m_content[0]);
    EXPECT_EQ(copy->getPosition(), 1);
    EXPECT_EQ(file.getPosition(), 0);
    file.read(&byte, 1);
    EXPECT_EQ(byte, m_content[1]) << "the stream is one";
}

} // namespace
