// One conformance test for every kind of stream: a loose file and an entry among others, read and written.

#include "support/library_test.h"

#include <functional>
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

using Zel::BinaryFile;
using Zel::File;
using Zel::TextFile;
using Act = std::function<void(File&)>;

int s_number;
char s_bytes[5];
std::string s_text;

// What each class of streams has for reading and writing a few bytes.
void readSome(File& file) { file.read(s_bytes, 5); }
void readSome(BinaryFile& file) { file >> s_number; }
void readSome(TextFile& file) { file >> s_text; }
void writeSome(File& file) { file.write("x", 1); }
void writeSome(BinaryFile& file) { file << 7; }
void writeSome(TextFile& file) { file << 7; }

template <class Try>
void forEveryClass(std::string const& name, File::Mode mode, Try tryOut) {
    tryOut(File(name, mode));
    tryOut(BinaryFile(name, mode, BinaryFile::BYTEORDER_NATIVE));
    tryOut(TextFile(name, mode));
}

Act seek(int position) {
    return [position](File& file) {
        file.setPosition(position);
    };
}

void flush(File& file) { file.flush(); }
void read(File& file) { readSome(file); }
void write(File& file) { file.write("0123456789", 10); }
void overwrite(File& file) { file.write("ab", 2); }

/// Each refusal leaves the stream as it was: it stands where it stood, and has its size.
template <class Refusal>
void expectRefused(File& file, std::function<void()> const& act, char const* message) {
    int const position = file.getPosition();
    int const size = file.getSize();
    EXPECT_EQ(test::errorOf<Refusal>(act), message);
    EXPECT_EQ(file.getPosition(), position);
    EXPECT_EQ(file.getSize(), size);
}

TEST_P(StreamTest, WritingIsAWriteErrorWhateverCameBefore) {
    std::vector<Act> const histories[] = {{},
                                          {read},
                                          {read, seek(1)},
                                          {seek(20'000), read, read},
                                          {read, flush},
                                          {seek(size() - 5), read, seek(5)},
                                          {seek(size() + 9), seek(4)}};
    for (auto mode : {File::READ, File::READ_TEXT})
        for (auto const& history : histories)
            forEveryClass("stream.bin", mode, [&](auto&& file) {
                for (Act const& act : history)
                    act(file);
                expectRefused<Zel::FileException_WriteError>(
                    file, [&] { writeSome(file); }, "Write error in \"stream.bin\"");
                file.write("", 0); // nothing is no write
                char next = 0;
                auto const position = static_cast<std::size_t>(file.getPosition());
                static_cast<File&>(file).read(&next, 1);
                EXPECT_EQ(next, m_content[position]);
            });
    EXPECT_EQ(test::readThroughLibrary("stream.bin"), m_content);
}

using WrittenStreamTest = test::LibraryTest;

TEST_F(WrittenStreamTest, ReadingIsAReadErrorWhateverCameBefore) {
    std::pair<std::vector<Act>, char const*> const histories[] = {
        {{write, seek(0)}, "01234567YZ"},
        {{write, seek(0), overwrite}, "ab234567YZ"},
        {{write, flush, seek(3), overwrite}, "012ab567YZ"},
        {{write, seek(1), overwrite, flush}, "0ab34567YZ"},
    };
    for (auto mode : {File::WRITE, File::WRITE_TEXT})
        for (auto const& history : histories)
            forEveryClass("written.bin", mode, [&](auto&& file) {
                for (Act const& act : history.first)
                    act(file);
                expectRefused<Zel::FileException_ReadError>(
                    file, [&] { readSome(file); }, "Read error in \"written.bin\"");
                file.setPosition(8);
                file.write("YZ", 2);
                file.flush();
                EXPECT_EQ(readFile("written.bin"), history.second);
            });
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
