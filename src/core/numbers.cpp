// Numbers from text.

#include "core/numbers.h"

#include <algorithm>
#include <charconv>
#include <cstdlib>
#include <limits>
#include <string>

namespace Zel {
namespace {

std::string_view withoutLeadingSpace(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
}

/// What from_chars has another idea of: a hexadecimal number, which it takes for the 0 in front.
bool isHexadecimal(std::string_view text) {
    if (text.starts_with('-'))
        text.remove_prefix(1);
    return text.starts_with("0x") || text.starts_with("0X");
}

} // namespace

std::int32_t toInt(std::string_view text) {
    text = withoutLeadingSpace(text);
    bool const isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+'))
        text.remove_prefix(1);
    std::int64_t value = 0;
    for (char digit : text) {
        if (digit < '0' || digit > '9')
            break;
        value = std::min<std::int64_t>(value * 10 + (digit - '0'), std::numeric_limits<std::uint32_t>::max());
    }
    value = std::clamp<std::int64_t>(isNegative ? -value : value, std::numeric_limits<std::int32_t>::min(),
                                     std::numeric_limits<std::int32_t>::max());
    return static_cast<std::int32_t>(value);
}

float toFloat(std::string_view text) {
    text = withoutLeadingSpace(text);
    if (text.starts_with('+') && !text.starts_with("+-"))
        text.remove_prefix(1);
    double value = 0;
    auto const result = std::from_chars(text.data(), text.data() + text.size(), value);
    // What is out of range is told without telling to which side.
    if (result.ec == std::errc::result_out_of_range || isHexadecimal(text))
        value = std::strtod(std::string(text).c_str(), nullptr);
    return static_cast<float>(value);
}

} // namespace Zel
