// Typed reading and writing: each operator is a read or write of fixed width, bytes swapped where asked.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <zel/file.h>

static_assert(std::endian::native == std::endian::little, "archives and native files are little-endian");

namespace Zel {

bool const BinaryFile::sm_bPlatformUsesLittleEndian = true;

BinaryFile::BinaryFile(std::string const& name, Mode mode, ByteOrder byteOrder)
    : File(name, mode), m_byteOrder(byteOrder) {}

unsigned short BinaryFile::swapShort(unsigned short value) const {
    return m_byteOrder == BYTEORDER_NATIVE ? value : static_cast<unsigned short>(value << 8 | value >> 8);
}

unsigned long BinaryFile::swapLong(unsigned long value) const {
    auto const bits = static_cast<std::uint32_t>(value); // on disk a long has 4 bytes on every platform
    if (m_byteOrder == BYTEORDER_NATIVE)
        return bits;
    return bits >> 24 | (bits >> 8 & 0xFF00U) | (bits << 8 & 0xFF0000U) | bits << 24;
}

float BinaryFile::swapFloat(float value) const {
    return std::bit_cast<float>(static_cast<std::uint32_t>(swapLong(std::bit_cast<std::uint32_t>(value))));
}

BinaryFile& BinaryFile::operator>>(bool& value) {
    unsigned char byte = 0;
    read(&byte, 1);
    value = byte != 0;
    return *this;
}

BinaryFile& BinaryFile::operator>>(char& value) {
    read(&value, 1);
    return *this;
}

BinaryFile& BinaryFile::operator>>(unsigned char& value) {
    read(&value, 1);
    return *this;
}

// Numbers are read in place and swapped then: of a failed read they keep the bytes that came.

BinaryFile& BinaryFile::operator>>(short& value) {
    read(&value, 2);
    value = static_cast<short>(swapShort(static_cast<unsigned short>(value)));
    return *this;
}

BinaryFile& BinaryFile::operator>>(unsigned short& value) {
    read(&value, 2);
    value = swapShort(value);
    return *this;
}

BinaryFile& BinaryFile::operator>>(int& value) {
    read(&value, 4);
    value = static_cast<int>(swapLong(static_cast<unsigned int>(value)));
    return *this;
}

BinaryFile& BinaryFile::operator>>(unsigned int& value) {
    read(&value, 4);
    value = static_cast<unsigned int>(swapLong(value));
    return *this;
}

// Of a long that is wider in memory, the low 4 bytes, which stand first.

BinaryFile& BinaryFile::operator>>(long& value) {
    read(&value, 4);
    value = static_cast<int>(swapLong(static_cast<unsigned long>(value))); // with its sign
    return *this;
}

BinaryFile& BinaryFile::operator>>(unsigned long& value) {
    read(&value, 4);
    value = swapLong(value);
    return *this;
}

BinaryFile& BinaryFile::operator>>(float& value) {
    read(&value, 4);
    value = swapFloat(value);
    return *this;
}

BinaryFile& BinaryFile::operator>>(Float16& value) {
    read(&value.bits, 2);
    value.bits = swapShort(value.bits);
    return *this;
}

BinaryFile& BinaryFile::operator>>(Vector2Template<float>& value) { return *this >> value.x >> value.y; }

BinaryFile& BinaryFile::operator>>(Vector3Template<float>& value) {
    return *this >> value.x >> value.y >> value.z;
}

BinaryFile& BinaryFile::operator>>(Vector4Template<float>& value) {
    return *this >> value.x >> value.y >> value.z >> value.w;
}

BinaryFile& BinaryFile::operator>>(IntervalTemplate<float>& value) { return *this >> value.min >> value.max; }

BinaryFile& BinaryFile::operator>>(std::string& value) {
    // Meant: the length is the whole file's, wherever reading starts. What is left is taken first, so that
    // the text holds it and the end is reached before the rest fails.
    int const wanted = getSize();
    value.resize(static_cast<std::size_t>(wanted));
    auto const left =
        static_cast<int>(std::clamp<std::int64_t>(std::int64_t{wanted} - getPosition(), 0, wanted));
    read(value.data(), left);
    read(value.data() + left, wanted - left);
    return *this;
}

BinaryFile& BinaryFile::operator<<(bool value) { return *this << static_cast<unsigned char>(value ? 1 : 0); }

BinaryFile& BinaryFile::operator<<(char value) {
    write(&value, 1);
    return *this;
}

BinaryFile& BinaryFile::operator<<(unsigned char value) {
    write(&value, 1);
    return *this;
}

BinaryFile& BinaryFile::operator<<(short value) { return *this << static_cast<unsigned short>(value); }

BinaryFile& BinaryFile::operator<<(unsigned short value) {
    unsigned short const bits = swapShort(value);
    write(&bits, 2);
    return *this;
}

BinaryFile& BinaryFile::operator<<(int value) { return *this << static_cast<unsigned int>(value); }

BinaryFile& BinaryFile::operator<<(unsigned int value) {
    auto const bits = static_cast<std::uint32_t>(swapLong(value));
    write(&bits, 4);
    return *this;
}

BinaryFile& BinaryFile::operator<<(long value) { return *this << static_cast<unsigned int>(value); }

BinaryFile& BinaryFile::operator<<(unsigned long value) { return *this << static_cast<unsigned int>(value); }

BinaryFile& BinaryFile::operator<<(float value) {
    float const bits = swapFloat(value);
    write(&bits, 4);
    return *this;
}

BinaryFile& BinaryFile::operator<<(Float16 value) { return *this << value.bits; }

BinaryFile& BinaryFile::operator<<(Vector2Template<float> const& value) {
    return *this << value.x << value.y;
}

BinaryFile& BinaryFile::operator<<(Vector3Template<float> const& value) {
    return *this << value.x << value.y << value.z;
}

BinaryFile& BinaryFile::operator<<(Vector4Template<float> const& value) {
    return *this << value.x << value.y << value.z << value.w;
}

BinaryFile& BinaryFile::operator<<(IntervalTemplate<float> const& value) {
    return *this << value.min << value.max;
}

BinaryFile& BinaryFile::operator<<(std::string const& value) {
    if (value.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw FileException_WriteError(getFilename().c_str());
    auto const length = static_cast<unsigned int>(value.size());
    *this << length;
    write(value.data(), static_cast<int>(length));
    return *this;
}

} // namespace Zel
