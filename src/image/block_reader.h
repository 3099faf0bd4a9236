// Reads a file from its present position on, a few bytes at a time. The file itself is read in large blocks.
#pragma once

#include <algorithm>
#include <cstring>
#include <vector>
#include <zel/file.h>

namespace Zel {

class BlockReader {
public:
    /// The file must outlive this reader. Its position is that of the end of the last block.
    explicit BlockReader(File& file) : m_file(file) {}

    /// Throws FileException_ReadError at the end of the file.
    unsigned char readByte() {
        if (m_next == m_block.size())
            fill();
        return m_block[m_next++];
    }

    /// The next `count` bytes, where they stand in the block, or copied to `spare` when they are in two. They
    /// stay until the next call. Throws as readByte does.
    unsigned char const* next(std::size_t count, unsigned char* spare) {
        if (m_block.size() - m_next < count) {
            read(spare, count);
            return spare;
        }
        m_next += count;
        return m_block.data() + (m_next - count);
    }

    /// Reads `count` bytes. Throws as readByte does.
    void read(unsigned char* to, std::size_t count) {
        while (count > 0) {
            if (m_next == m_block.size())
                fill();
            std::size_t const part = std::min(count, m_block.size() - m_next);
            std::memcpy(to, &m_block[m_next], part);
            m_next += part;
            to += part;
            count -= part;
        }
    }

private:
    static constexpr int kBlockSize = 65536;

    void fill() {
        int const left = m_file.getSize() - m_file.getPosition();
        if (left <= 0)
            throw FileException_ReadError(m_file.getFilename().c_str());
        m_block.resize(static_cast<std::size_t>(std::min(left, kBlockSize)));
        m_next = 0;
        m_file.read(m_block.data(), static_cast<int>(m_block.size()));
    }

    File& m_file;
    std::vector<unsigned char> m_block;
    std::size_t m_next = 0;
};

} // namespace Zel
