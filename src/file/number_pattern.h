// Patterns of printf for one number.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace Zel {

/// The pattern with the number in the place of its integer conversion: %d, %i, %u, %x, %X or %o, with flags,
/// width and precision by the rules of C. "%%" is a percent sign. Nothing when there is another conversion, a
/// length modifier or more than one, and when the text has more than 259 characters.
std::optional<std::string> formatNumber(std::string_view pattern, unsigned number);

} // namespace Zel
