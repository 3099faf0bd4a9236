// Numbers from text, by the rules of the C library but the same on every host and in every locale.
#pragma once

#include <cstdint>
#include <string_view>

namespace Zel {

/// As atoi, but numbers outside 32 bits become the nearest one inside.
std::int32_t toInt(std::string_view text);

/// As atof in the "C" locale, narrowed to single precision: white space and a sign may lead the number, and a
/// text without one is 0.
float toFloat(std::string_view text);

} // namespace Zel
