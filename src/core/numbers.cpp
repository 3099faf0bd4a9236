// Numbers from text.

#include "core/numbers.h"

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>

namespace Zel {
namespace {

std::string_view withoutLeadingSpace(std::string_view text) {
    return text.substr(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
}

bool isHexadecimal(std::string_view number) {
    if (!number.starts_with("0x") && !number.starts_with("0X"))
        return false;
    number.remove_prefix(2);
    return number.find_first_of(".0123456789abcdefABCDEF") == 0;
}

/// The infinity or the 0 that a number outside the range of `double` becomes. The C library tells which, and
/// expects the point that its locale has.
double outOfRange(std::string number) {
    std::size_t const point = number.find('.');
    if (point != std::string::npos)
        number.replace(point, 1, std::localeconv()->decimal_point);
    return std::strtod(number.c_str(), nullptr);
}

/// A number without a sign; nothing when the text does not begin with one.
std::optional<double> toPositive(std::string_view text) {
    bool const isHex = isHexadecimal(text);
    char const* const digits = text.data() + (isHex ? 2 : 0);
    double value = 0;
    auto const [end, error] = std::from_chars(digits, text.data() + text.size(), value,
                                              isHex ? std::chars_format::hex : std::chars_format::general);
    if (error == std::errc::result_out_of_range)
        return outOfRange(std::string(text.data(), end));
    if (error != std::errc() && !isHex)
        return std::nullopt;
    return value;
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
    bool const isNegative = text.starts_with('-');
    if (isNegative || text.starts_with('+'))
        text.remove_prefix(1);
    auto const value =
        text.starts_with('-') ? std::nullopt : toPositive(text); // from_chars takes a sign, too
    if (!value)
        return 0.0F;
    return static_cast<float>(isNegative ? -*value : *value);
}

} // namespace Zel
