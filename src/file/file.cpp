// One open file: opening, reading, writing and positioning.

#include "archive/scramble.h"
#include "file/content.h"
#include "file/names.h"
#include "platform/platform.h"

#include <algorithm>
#include <cstring>
#include <zel/file.h>

namespace Zel {
namespace {

/// The sum as 32 bits hold it. A position that wraps round names no place in any file: seeking there fails.
std::int32_t wrappingSum(std::int32_t a, std::int64_t b) { return static_cast<std::int32_t>(a + b); }

/// Copies a few bytes: with a known number, each step is one instruction.
template <std::size_t kCount>
void takeHeld(void* buffer, std::string_view held, bool isScrambled) {
    std::memcpy(buffer, held.data(), kCount);
    if (isScrambled)
        unscramble(buffer, kCount);
}

/// As fread, at next to no cost for the few bytes of a typed value when the stream holds them. A null stream
/// has no bytes. Unscrambles them when all have come.
std::size_t readBytes(std::FILE* stream, void* buffer, std::size_t count, bool isScrambled) {
    if (stream == nullptr)
        return 0;
    std::string_view const held = platform::heldBytes(stream);
    if (count == 0 || count > held.size()) {
        std::size_t const arrived = std::fread(buffer, 1, count, stream);
        if (isScrambled && arrived == count)
            unscramble(buffer, count);
        return arrived;
    }
    switch (count) {
    case 1:
        takeHeld<1>(buffer, held, isScrambled);
        break;
    case 2:
        takeHeld<2>(buffer, held, isScrambled);
        break;
    case 4:
        takeHeld<4>(buffer, held, isScrambled);
        break;
    default:
        std::memcpy(buffer, held.data(), count);
        if (isScrambled)
            unscramble(buffer, count);
    }
    platform::passReadAhead(stream, count);
    return count;
}

} // namespace

File::File() { initializeMembers(); } // NOLINT(cppcoreguidelines-pro-type-member-init)

// Delegating: once File() is done, the destructor closes the stream even when this body throws.
File::File(std::string const& name, Mode mode) : File() {
    m_filename = name;
    m_mode = mode;
    switch (mode) {
    case READ:
    case READ_TEXT:
        openForReading();
        break;
    case WRITE:
        m_handle = platform::openStream(pathToOpen(name), platform::Open::Write).release();
        break;
    case WRITE_TEXT:
        m_handle = platform::openStream(pathToOpen(name), platform::Open::WriteText).release();
        break;
    default:
        pathToOpen(name); // a name that leads nowhere is told first
    }
    if (m_handle == nullptr)
        throw FileException_OpenFailed(name.c_str());
}

File::File(File const& other) : File() { *this = other; }

// Meant: shallow. From now on either may move the stream that the other reads.
File& File::operator=(File const& other) {
    if (this == &other)
        return *this;
    m_filename = other.m_filename;
    m_mode = other.m_mode;
    m_size = other.m_size;
    m_offset = other.m_offset;
    m_archive = other.m_archive;
    m_handle = other.m_handle;
    m_position = other.m_position;
    loseStep();
    other.loseStep();
    return *this;
}

File::~File() {
    if (m_handle != nullptr)
        std::fclose(m_handle);
    initializeMembers();
}

void File::initializeMembers() {
    m_filename.clear();
    m_mode = READ;
    m_size = 0;
    m_offset = 0;
    m_archive = nullptr;
    m_handle = nullptr;
    m_position = 0;
    m_inStep = true;
}

/// Takes over the stream of what the name leads to, once that was checked.
void File::openForReading() {
    FileContent content(m_filename);
    content.check();
    m_size = content.size();
    m_offset = content.offset();
    m_archive = content.archive();
    m_handle = content.toStream().release();
    m_position = m_offset;
}

void File::loseStep() const { m_inStep = false; }

std::string const& File::getFilename() const { return m_filename; }

File::Mode File::getMode() {
    return m_mode;
} // NOLINT(readability-make-member-function-const): as callers know it

int File::getSize() const { return m_size; }

int File::getPosition() const { return wrappingSum(m_position, -std::int64_t{m_offset}); }

void File::setPosition(int position) {
    m_position = wrappingSum(position, m_offset);
    if (m_handle == nullptr || std::fseek(m_handle, m_position, SEEK_SET) != 0) {
        loseStep();
        throw FileException_SeekError(m_filename.c_str());
    }
}

void File::read(void* buffer, int count) {
    if (count < 0 || std::int64_t{m_position} + count > std::int64_t{m_offset} + m_size)
        throw FileException_ReadError(m_filename.c_str());
    auto const wanted = static_cast<std::size_t>(count);
    std::size_t const arrived = readBytes(readStream(), buffer, wanted, m_archive != nullptr);
    m_position = wrappingSum(m_position, static_cast<std::int64_t>(arrived));
    if (arrived < wanted)
        throw FileException_ReadError(m_filename.c_str());
}

void File::write(void const* buffer, int count) {
    if (count < 0 || count > kLargestPosition - std::int64_t{std::max(m_size, m_position)})
        throw FileException_WriteError(m_filename.c_str());
    auto const given = static_cast<std::size_t>(count);
    std::FILE* const stream = writeStream();
    std::size_t const written = stream != nullptr ? std::fwrite(buffer, 1, given, stream) : 0;
    m_position = wrappingSum(m_position, static_cast<std::int64_t>(written));
    m_size = wrappingSum(m_size, static_cast<std::int64_t>(written)); // Meant: overwriting grows it too.
    if (written < given)
        throw FileException_WriteError(m_filename.c_str());
}

void File::flush() {
    std::FILE* const stream = writeStream(); // of one that reads, Windows would drop what was read ahead
    if (stream != nullptr && std::fflush(stream) != 0)
        throw FileException_WriteError(m_filename.c_str());
}

} // namespace Zel
