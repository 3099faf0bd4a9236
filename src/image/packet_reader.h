// Pixels that are packed and run-length encoded, as in TGA files.
//
// A packet starts with a byte of its own: its lower seven bits are the number of pixels less one; bit 7 is
// set when a single pixel follows, which is repeated. Otherwise all pixels follow.
#pragma once

#include "image/block_reader.h"

#include <algorithm>
#include <array>

namespace Zel {

class PacketReader {
public:
    static constexpr std::size_t kMostPixels = 128; ///< in one packet
    static constexpr std::size_t kWidestPixel = 16; ///< in bytes

    /// The file must outlive this reader. It is read in large blocks, ahead of the packets.
    PacketReader(File& file, std::size_t bytesPerPixel) : m_reader(file), m_bytesPerPixel(bytesPerPixel) {}

    /// A part of a packet.
    struct Part {
        std::size_t count;          ///< of pixels, at least 1
        unsigned char const* bytes; ///< the pixels, or the one that is repeated; valid until the next call
        bool isRepeated;
    };

    /// Reads pixels of one packet, `most` of them at most. The rest of the packet stays for the next call.
    /// Throws FileException_ReadError at the end of the file.
    Part next(std::size_t most) {
        if (m_left == 0)
            beginPacket();
        std::size_t const count = std::min(most, m_left);
        if (!m_repeats)
            m_bytes = m_reader.next(count * m_bytesPerPixel, m_spare.data());
        m_left -= count;
        return {count, m_bytes, m_repeats};
    }

private:
    void beginPacket() {
        unsigned char const header = m_reader.readByte();
        m_left = static_cast<std::size_t>(header & 127) + 1;
        m_repeats = (header & 128) != 0;
        if (m_repeats)
            m_bytes = m_reader.next(m_bytesPerPixel, m_spare.data());
    }

    BlockReader m_reader;
    std::size_t m_bytesPerPixel;
    std::size_t m_left = 0; ///< pixels of the present packet
    bool m_repeats = false;
    unsigned char const* m_bytes = nullptr;
    std::array<unsigned char, kMostPixels * kWidestPixel> m_spare{};
};

} // namespace Zel
