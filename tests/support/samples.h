// One small valid file of every format that the library reads, and what reading it whole means.
#pragma once

#include "support/library_test.h"

#include <cstdint>
#include <functional>
#include <ostream>

namespace test {

struct Sample {
    std::string what;
    std::string fileName; ///< what the file must be called
    std::string content;
    /// Reads the file, whose directory is the data directory and the working directory. Returns a checksum of
    /// what it has read.
    std::function<std::uint32_t(std::string const& fileName)> read;
    std::size_t headerSize; ///< of the bytes that are not plain contents
    /// Whether no file can end after so many bytes: then one that is cut off there is refused.
    std::function<bool(std::size_t length)> isTooShort;

    friend std::ostream& operator<<(std::ostream& out, Sample const& sample) { return out << sample.what; }
};

std::vector<Sample> const& samples();

} // namespace test
