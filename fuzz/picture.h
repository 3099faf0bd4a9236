// What the targets of the picture formats share.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace fuzz {

/// Loads the input as a file of that extension. Always 0.
int loadPicture(std::uint8_t const* data, std::size_t size, std::string const& extension);

} // namespace fuzz
