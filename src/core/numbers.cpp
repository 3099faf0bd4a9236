// Numbers from text.

#include "core/numbers.h"

#include <algorithm>
#include <array>
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

/// A number of up to 15 digits, with a point or without; nothing for any other text. The digits and the power
/// of ten are exact, so the division rounds once, as every right conversion does (W. D. Clinger, How to Read
/// Floating Point Numbers Accurately, 1990).
std::optional<double> toShortNumber(std::string_view text) {
    constexpr std::size_t kMostDigits = 15;
    constexpr std::array<double, kMostDigits + 1> kPowers = {1,   1e1, 1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                                             1e8, 1e9, 1e10, 1e11, 1e12, 1e13, 1e14, 1e15};
    if (text.size() > kMostDigits + 1)
        return std::nullopt;
    std::int64_t digits = 0;
    std::size_t point = text.size();
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] >= '0' && text[i] <= '9')
            digits = digits * 10 + (text[i] - '0');
        else if (text[i] == '.' && point == text.size())
            point = i;
        else
            return std::nullopt;
    }
    bool const hasPoint = point < text.size();
    std::size_t const count = text.size() - (hasPoint ? 1 : 0);
    if (count == 0 || count > kMostDigits)
        return std::nullopt;
    return static_cast<double>(digits) / kPowers[hasPoint ? count - point : 0];
}

/// A number without a sign; nothing when the text does not begin with one.
std::optional<double> toPositive(std::string_view text) {
    if (auto const number = toShortNumber(text))
        return number;
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
