// Typed values to the byte.

#include "support/library_test.h"
#include "support/pictures.h"

#include <cstring>
#include <optional>
#include <typeinfo>

namespace {

using test::bytes;
using Zel::BinaryFile;
using Zel::Float16;
using Vector2 = Zel::Vector2Template<float>;
using Vector3 = Zel::Vector3Template<float>;
using Vector4 = Zel::Vector4Template<float>;
using Interval = Zel::IntervalTemplate<float>;

// What must not compile: a pointer, a string literal included, would silently be written as a bool.
template <class T>
concept Writable = requires(BinaryFile& file, T const& value) {
    file << value;
};
static_assert(!Writable<char const*> && !Writable<char[6]> && !Writable<char*> && !Writable<int*>);
static_assert(!Writable<wchar_t const*> && !Writable<void*> && !Writable<double>);
static_assert(Writable<std::string> && Writable<bool> && Writable<char> && Writable<long>);

class BinaryFileTest : public test::LibraryTest {
protected:
    /// Writes a value and reads it back; both sides must agree with the bytes on disk.
    template <class T>
    void expectBytes(T const& value, std::string const& native, std::string const& swapped) const {
        for (auto order : {BinaryFile::BYTEORDER_NATIVE, BinaryFile::BYTEORDER_SWAPPED}) {
            { BinaryFile("value", Zel::File::WRITE, order) << value; }
            EXPECT_EQ(readFile("value"), order == BinaryFile::BYTEORDER_NATIVE ? native : swapped);
            T back{};
            BinaryFile file("value", Zel::File::READ, order);
            file >> back;
            EXPECT_TRUE(back == value);
            EXPECT_TRUE(file.endReached());
        }
    }
};

TEST_F(BinaryFileTest, EveryTypeHasItsBytes) {
    expectBytes(true, bytes({1}), bytes({1}));
    expectBytes(false, bytes({0}), bytes({0}));
    expectBytes('\x80', bytes({0x80}), bytes({0x80}));
    expectBytes(static_cast<unsigned char>(200), bytes({200}), bytes({200}));
    expectBytes(static_cast<short>(-2), bytes({0xFE, 0xFF}), bytes({0xFF, 0xFE}));
    expectBytes(static_cast<unsigned short>(0x1234), bytes({0x34, 0x12}), bytes({0x12, 0x34}));
    expectBytes(1, bytes({1, 0, 0, 0}), bytes({0, 0, 0, 1}));
    expectBytes(-2, bytes({0xFE, 0xFF, 0xFF, 0xFF}), bytes({0xFF, 0xFF, 0xFF, 0xFE}));
    expectBytes(0x89ABCDEFu, bytes({0xEF, 0xCD, 0xAB, 0x89}), bytes({0x89, 0xAB, 0xCD, 0xEF}));
    expectBytes(-2L, bytes({0xFE, 0xFF, 0xFF, 0xFF}), bytes({0xFF, 0xFF, 0xFF, 0xFE}));
    expectBytes(0x89ABCDEFul, bytes({0xEF, 0xCD, 0xAB, 0x89}), bytes({0x89, 0xAB, 0xCD, 0xEF}));
    expectBytes(1.5f, bytes({0, 0, 0xC0, 0x3F}), bytes({0x3F, 0xC0, 0, 0}));
    expectBytes(Float16(0x3C01), bytes({0x01, 0x3C}), bytes({0x3C, 0x01}));
    std::string const two = bytes({0, 0, 0, 0x40}), owt = bytes({0x40, 0, 0, 0});
    std::string const one = bytes({0, 0, 0x80, 0x3F}), eno = bytes({0x3F, 0x80, 0, 0});
    expectBytes(Vector2(1, 2), one + two, eno + owt);
    expectBytes(Vector3(1, 2, 1), one + two + one, eno + owt + eno);
    expectBytes(Vector4(1, 2, 2, 1), one + two + two + one, eno + owt + owt + eno);
    expectBytes(Interval(1, 2), one + two, eno + owt);
}

TEST_F(BinaryFileTest, AnyByteButZeroIsTrue) {
    writeFile("value", bytes({2, 0}));
    bool first = false, second = true;
    BinaryFile("value", Zel::File::READ, BinaryFile::BYTEORDER_NATIVE) >> first >> second;
    EXPECT_TRUE(first);
    EXPECT_FALSE(second);
}

TEST_F(BinaryFileTest, TextIsWrittenWithItsLengthAndReadWithout) {
    { BinaryFile("text", Zel::File::WRITE, BinaryFile::BYTEORDER_SWAPPED) << std::string("abc"); }
    EXPECT_EQ(readFile("text"), bytes({0, 0, 0, 3}) + "abc");
    std::string text = "old";
    BinaryFile file("text", Zel::File::READ, BinaryFile::BYTEORDER_SWAPPED);
    file >> text;
    EXPECT_EQ(text, bytes({0, 0, 0, 3}) + "abc");
    EXPECT_TRUE(file.endReached());
}

TEST_F(BinaryFileTest, TextReadFromElsewhereTakesWhatIsLeftAndThrows) {
    writeFile("text", "0123456789");
    BinaryFile file("text", Zel::File::READ, BinaryFile::BYTEORDER_NATIVE);
    std::string text;
    file.setPosition(1);
    EXPECT_THROW(file >> text, Zel::FileException_ReadError);
    EXPECT_EQ(text, "123456789" + std::string(1, '\0'));
    EXPECT_TRUE(file.endReached());
}

/// A file that becomes shorter while it is open, so that the host delivers only the first bytes of a value.
class ShortBinaryFileTest : public BinaryFileTest {
protected:
    /// Values whose reading fails after one byte, after two, and so on up to one short of their width.
    template <class... Types>
    void expectPartly(std::size_t width) const {
        for (bool const archived : {false, true})
            for (auto order : {BinaryFile::BYTEORDER_NATIVE, BinaryFile::BYTEORDER_SWAPPED})
                for (std::size_t came = 1; came < width; ++came)
                    (expectPartOf<Types>(archived, order, came), ...);
    }

private:
    template <class T>
    void expectPartOf(bool archived, BinaryFile::ByteOrder order, std::size_t came) const {
        std::string const content = std::string(kStart, ' ') + "ABCDEFGHIJKLMNOP";
        std::string const name = archived ? "a.bva" : "value";
        writeFile("value", content);
        std::optional<Zel::Archive> archive;
        if (archived)
            archive.emplace(packArchive(name, {{"value", content}}));
        BinaryFile file("value", Zel::File::READ, order);
        std::string const stored = readFile(name);
        std::size_t const start = stored.size() - 16;
        fs::resize_file(path(name), start + came);
        file.setPosition(kStart);

        std::string seen(sizeof(T), '.');
        T value;
        std::memcpy(&value, seen.data(), sizeof value);
        EXPECT_THROW(file >> value, Zel::FileException_ReadError);
        EXPECT_EQ(file.getPosition(), kStart + static_cast<int>(came));
        std::memcpy(seen.data(), &value, sizeof value);
        EXPECT_EQ(seen, stored.substr(start, came) + std::string(sizeof(T) - came, '.'))
            << typeid(T).name() << (archived ? " entry" : "");
    }

    static constexpr int kStart = 20'000; // behind what opening reads ahead
};

TEST_F(ShortBinaryFileTest, AFailedReadLeavesTheBytesThatCame) {
    expectPartly<short, unsigned short, Float16>(2);
    expectPartly<int, unsigned int, long, unsigned long, float>(4);
    expectPartly<Vector2>(4); // the first component
}

TEST_F(BinaryFileTest, AReadPastTheEndKeepsTheComponentsBeforeIt) {
    writeFile("short", bytes({0, 0, 0x80, 0x3F, 1, 2}));
    Zel::Archive const archive(packArchive("a.bva", {{"short", readFile("short")}}));
    BinaryFile file("short", Zel::File::READ, BinaryFile::BYTEORDER_NATIVE);
    Vector2 value(7, 7);
    EXPECT_EQ(test::errorOf<Zel::FileException_ReadError>([&] { file >> value; }), "Read error in \"short\"");
    EXPECT_EQ(value, Vector2(1, 7));
    EXPECT_EQ(file.getPosition(), 4);
}

TEST_F(BinaryFileTest, CopiesKeepTheByteOrder) {
    writeFile("value", bytes({1, 2, 3, 4}));
    BinaryFile file("value", Zel::File::READ, BinaryFile::BYTEORDER_SWAPPED);
    alignas(BinaryFile) std::byte storage[sizeof(BinaryFile)];
    auto* const copy = new (storage) BinaryFile(file); // not destroyed: it shares the stream
    unsigned short value = 0;
    *copy >> value;
    EXPECT_EQ(value, 0x0102);
    EXPECT_TRUE(BinaryFile::sm_bPlatformUsesLittleEndian);
}

} // namespace
