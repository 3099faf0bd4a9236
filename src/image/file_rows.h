// Reads and writes rows of pixels in large blocks: a call of File for each row would take longer than the
// pixels.
#pragma once

#include <algorithm>
#include <cstddef>
#include <vector>
#include <zel/file.h>

namespace Zel {

/// How many whole rows make a large block: at least one, at most all.
inline int rowsInBlock(std::size_t rowSize, int rows) {
    constexpr std::size_t kBlockSize = 65536;
    std::size_t const fitting = std::max<std::size_t>(kBlockSize / rowSize, 1);
    return static_cast<int>(std::min(fitting, static_cast<std::size_t>(rows)));
}

/// Reads rows of `rowSize` bytes, at least one, and calls `take` with the number and the bytes of each row.
/// Throws as File::read does.
template <class Take>
void readRows(File& file, std::size_t rowSize, int rows, Take take) {
    int const most = rowsInBlock(rowSize, rows);
    std::vector<unsigned char> block(rowSize * static_cast<std::size_t>(most));
    for (int first = 0; first < rows; first += most) {
        int const count = std::min(most, rows - first);
        file.read(block.data(), static_cast<int>(rowSize) * count);
        for (int i = 0; i < count; ++i)
            take(first + i, block.data() + rowSize * static_cast<std::size_t>(i));
    }
}

/// Writes rows of `rowSize` bytes, at least one. `fill` gets the number of each row, and where to put its
/// bytes. Throws as File::write does.
template <class Fill>
void writeRows(File& file, std::size_t rowSize, int rows, Fill fill) {
    int const most = rowsInBlock(rowSize, rows);
    std::vector<unsigned char> block(rowSize * static_cast<std::size_t>(most));
    for (int first = 0; first < rows; first += most) {
        int const count = std::min(most, rows - first);
        for (int i = 0; i < count; ++i)
            fill(first + i, block.data() + rowSize * static_cast<std::size_t>(i));
        file.write(block.data(), static_cast<int>(rowSize) * count);
    }
}

} // namespace Zel
