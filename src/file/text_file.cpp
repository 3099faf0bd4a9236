// Text: everything is read in runs of characters, each up to the first character of some set.

#include "archive/scramble.h"
#include "core/numbers.h"
#include "platform/platform.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>
#include <utility>
#include <zel/color.h>
#include <zel/file.h>

namespace Zel {

/// The characters that end a run, as a file holds them: plain when it is loose, scrambled when archived.
struct CharacterSet {
    std::array<bool, 256> loose{};
    std::array<bool, 256> archived{};

    constexpr explicit CharacterSet(std::string_view characters, bool isListed = true) {
        loose.fill(!isListed);
        archived.fill(!isListed);
        for (char const listed : characters) {
            auto const character = static_cast<unsigned char>(listed);
            loose[character] = isListed;
            archived[character ^ kScrambleKey] = isListed;
        }
    }
};

namespace {

using namespace std::string_view_literals;

constexpr CharacterSet kSpaceEnds(" \t\n\v\f\r"sv, false);
constexpr CharacterSet kWordEnds(" \t\n\v\f\r\0"sv);
constexpr CharacterSet kQuoteEnds("\"\0"sv);
constexpr CharacterSet kLineEnds("\r\n\0"sv);
constexpr CharacterSet kTextEnds("\0"sv);

} // namespace

TextFile::TextFile(std::string const& name, Mode mode) : File(name, mode) {}

/// What can be read at once, as the stream holds it: at least one byte of a file whose end is not reached.
inline std::string_view TextFile::readAhead() {
    std::FILE* const stream = readStream();
    auto const ahead = stream != nullptr ? platform::readAhead(stream) : std::string_view();
    if (ahead.empty())
        throw FileException_ReadError(getFilename().c_str());
    std::int64_t const left = std::int64_t{m_offset} + m_size - m_position;
    return ahead.substr(0, static_cast<std::size_t>(left));
}

/// Reads bytes that readAhead has shown.
inline void TextFile::pass(std::size_t count) {
    platform::passReadAhead(m_handle, count);
    m_position += static_cast<std::int32_t>(count);
}

/// Appends bytes that the stream holds, as their reader sees them.
inline void TextFile::appendPlain(std::string& text, std::string_view bytes) const {
    text += bytes;
    if (m_archive != nullptr)
        unscramble(text.data() + text.size() - bytes.size(), bytes.size());
}

/// A byte that the stream holds, as its reader sees it.
inline char TextFile::plain(char byte) const { return m_archive != nullptr ? unscramble(byte) : byte; }

/// The next character, or 0 at the end.
inline int TextFile::readChar() {
    if (endReached())
        return 0;
    char const character = plain(readAhead().front());
    pass(1);
    return character;
}

/// Reads to the first character of `ends`, appends what stands before it to `text`, if any, and returns that
/// character, which itself is not read; 0 at the end of the file.
inline int TextFile::readTo(CharacterSet const& ends, std::string* text) {
    auto const& isEnd = m_archive != nullptr ? ends.archived : ends.loose;
    while (!endReached()) {
        std::string_view const ahead = readAhead();
        std::size_t length = 0;
        while (length < ahead.size() && !isEnd[static_cast<unsigned char>(ahead[length])])
            ++length;
        if (text != nullptr)
            appendPlain(*text, ahead.substr(0, length));
        pass(length);
        if (length < ahead.size())
            return plain(ahead[length]);
    }
    return 0;
}

/// The same, and reads the character that it returns.
inline int TextFile::readPast(CharacterSet const& ends, std::string* text) {
    int const end = readTo(ends, text);
    if (!endReached())
        pass(1);
    return end;
}

/// Whether the next character is surely none that skipWhiteSpaces reads, which it mostly is.
inline bool TextFile::nothingToSkip() const {
    std::FILE* const stream = readStream();
    if (stream == nullptr || !m_inStep || endReached())
        return false;
    std::string_view const held = platform::heldBytes(stream);
    if (held.empty())
        return false;
    char const next = plain(held.front());
    return next != 0 && kSpaceEnds.loose[static_cast<unsigned char>(next)];
}

/// Reads up to the next character that is no white space. Meant: a zero character is read, too.
void TextFile::skipWhiteSpaces() {
    if (nothingToSkip())
        return;
    int const next = readTo(kSpaceEnds, nullptr);
    if (next == 0 && !endReached())
        pass(1);
    // The character that ends the white space was not read, so it need not be put back (unreadChar). Meant: a
    // stream that copies share is moved to where this File stands all the same.
    if (next != 0 && !m_inStep)
        setPosition(getPosition());
}

void TextFile::readFile(std::string& text) {
    text.clear();
    readPast(kTextEnds, &text);
}

bool TextFile::readLine(std::string& line) {
    line.clear();
    skipWhiteSpaces();
    return readPast(kLineEnds, &line) != 0;
}

void TextFile::readLine(std::vector<std::string>& words) {
    words.clear();
    int end = 0;
    do {
        std::string word;
        end = readPast(kWordEnds, &word);
        words.push_back(std::move(word));
    } while (end != '\r' && end != '\n' && !(end == 0 && endReached()));
}

TextFile& TextFile::operator>>(std::string& value) {
    value.clear();
    skipWhiteSpaces();
    int const first = readChar();
    if (first == '"') {
        readPast(kQuoteEnds, &value);
    } else {
        value += static_cast<char>(first); // Meant: whatever it is, the 0 at the end of the file included.
        readPast(kWordEnds, &value);
    }
    skipWhiteSpaces();
    return *this;
}

std::int32_t TextFile::readInteger() {
    std::string token;
    *this >> token;
    return toInt(token);
}

TextFile& TextFile::operator>>(bool& value) {
    value = readInteger() != 0;
    return *this;
}

TextFile& TextFile::operator>>(short& value) {
    value = static_cast<short>(readInteger());
    return *this;
}

TextFile& TextFile::operator>>(unsigned short& value) {
    value = static_cast<unsigned short>(readInteger());
    return *this;
}

TextFile& TextFile::operator>>(int& value) {
    value = readInteger();
    return *this;
}

TextFile& TextFile::operator>>(unsigned int& value) {
    value = static_cast<unsigned int>(readInteger());
    return *this;
}

TextFile& TextFile::operator>>(long& value) {
    value = readInteger();
    return *this;
}

TextFile& TextFile::operator>>(unsigned long& value) {
    value = static_cast<std::uint32_t>(readInteger()); // 32 bits where it is wider, too
    return *this;
}

TextFile& TextFile::operator>>(float& value) {
    std::string token;
    *this >> token;
    value = toFloat(token);
    return *this;
}

TextFile& TextFile::operator>>(char& value) {
    skipWhiteSpaces();
    value = static_cast<char>(readChar());
    skipWhiteSpaces();
    return *this;
}

TextFile& TextFile::operator>>(unsigned char& value) {
    std::string token;
    *this >> token;
    value = static_cast<unsigned char>(token.c_str()[0]); // 0 for an empty token, which is possible in quotes
    return *this;
}

TextFile& TextFile::operator>>(Vector3Template<float>& value) {
    return *this >> value.x >> value.y >> value.z;
}

TextFile& TextFile::operator>>(FColor& value) { return *this >> value.r >> value.g >> value.b; }

TextFile& TextFile::operator<<(std::string const& value) {
    if (value.size() > static_cast<std::size_t>(std::numeric_limits<int>::max()))
        throw FileException_WriteError(getFilename().c_str());
    write(value.data(), static_cast<int>(value.size()));
    return *this;
}

TextFile& TextFile::operator<<(float value) {
    if (std::isnan(value)) // of which Microsoft's library tells several kinds
        return *this << std::string(std::signbit(value) ? "-nan" : "nan");
    std::array<char, 64> text; // the longest has 47 characters
    char const* const end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed, 6).ptr;
    write(text.data(), static_cast<int>(end - text.data()));
    return *this;
}

TextFile& TextFile::operator<<(short value) { return *this << int{value}; }

TextFile& TextFile::operator<<(unsigned short value) { return *this << int{value}; }

TextFile& TextFile::operator<<(int value) { return *this << std::to_string(value); }

TextFile& TextFile::operator<<(unsigned int value) { return *this << static_cast<int>(value); }

TextFile& TextFile::operator<<(long value) { return *this << static_cast<int>(value); }

TextFile& TextFile::operator<<(unsigned long value) { return *this << static_cast<int>(value); }

TextFile& TextFile::operator<<(Vector3Template<float> const& value) {
    return *this << value.x << " " << value.y << " " << value.z;
}

} // namespace Zel
