// One small valid file of every format that the library reads, and what reading it whole means.
#pragma once

#include "support/library_test.h"

#include <functional>
#include <ostream>

namespace test {

struct Sample {
    std::string what;
    std::string fileName; ///< what the file must be called
    std::string content;
    /// Reads the file, whose directory is the data directory and the working directory.
    std::function<void(std::string const& fileName)> read;
    std::size_t headerSize; ///< of the bytes that are not plain contents

    friend std::ostream& operator<<(std::ostream& out, Sample const& sample) { return out << sample.what; }
};

std::vector<Sample> const& samples();

} // namespace test
