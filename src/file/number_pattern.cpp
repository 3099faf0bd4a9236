// The C libraries of the hosts differ in the odder conversions ("% u", "%#.0o"); here all are alike.

#include "file/number_pattern.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace Zel {
namespace {

constexpr std::size_t kLongestName = 259;

/// What stands between a percent sign and the letter that ends its conversion, and that letter.
struct Conversion {
    std::string_view flags;
    std::size_t width = 0;
    std::optional<std::size_t> precision;
    char letter = '\0';

    bool has(char flag) const { return flags.find(flag) != std::string_view::npos; }
    bool isSigned() const { return letter == 'd' || letter == 'i'; }
};

/// Takes the leading characters that are in the set.
std::string_view take(std::string_view& text, std::string_view set) {
    std::string_view const taken = text.substr(0, std::min(text.find_first_not_of(set), text.size()));
    text.remove_prefix(taken.size());
    return taken;
}

/// Takes a number; what is past the longest name is as good as any number past it.
std::size_t takeNumber(std::string_view& text) {
    std::size_t number = 0;
    for (char const digit : take(text, "0123456789"))
        number = std::min(number * 10 + static_cast<std::size_t>(digit - '0'), kLongestName + 1);
    return number;
}

/// Takes a conversion behind its percent sign. Nothing when it is not one of an integer.
std::optional<Conversion> takeConversion(std::string_view& text) {
    Conversion conversion;
    conversion.flags = take(text, "-+ #0");
    conversion.width = takeNumber(text);
    if (text.starts_with('.')) {
        text.remove_prefix(1);
        conversion.precision = takeNumber(text);
    }
    if (text.empty() || std::string_view("diuxXo").find(text.front()) == std::string_view::npos)
        return std::nullopt;
    conversion.letter = text.front();
    text.remove_prefix(1);
    return conversion;
}

int baseOf(char letter) {
    switch (letter) {
    case 'o':
        return 8;
    case 'x':
    case 'X':
        return 16;
    default:
        return 10;
    }
}

/// At least as many digits as the precision; the number 0 with precision 0 has none.
std::string digitsOf(unsigned number, Conversion const& conversion) {
    std::array<char, 16> buffer;
    char* const end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, baseOf(conversion.letter)).ptr;
    std::string digits(buffer.data(), end);
    if (conversion.letter == 'X')
        std::transform(digits.begin(), digits.end(), digits.begin(),
                       [](char digit) { return digit < 'a' ? digit : static_cast<char>(digit - 'a' + 'A'); });
    if (number == 0 && conversion.precision)
        digits.clear();
    std::size_t const wanted = conversion.precision.value_or(0);
    if (digits.size() < wanted)
        digits.insert(0, wanted - digits.size(), '0');
    return digits;
}

/// The sign or the base, in front of any zeros that fill the width.
std::string prefixOf(unsigned number, Conversion const& conversion) {
    if (conversion.isSigned())
        return conversion.has('+') ? "+" : conversion.has(' ') ? " " : "";
    bool const tellsBase = conversion.has('#') && number != 0 && baseOf(conversion.letter) == 16;
    return tellsBase ? std::string("0") + conversion.letter : "";
}

std::string convert(unsigned number, Conversion const& conversion) {
    std::string digits = digitsOf(number, conversion);
    if (conversion.has('#') && conversion.letter == 'o' && !digits.starts_with('0'))
        digits.insert(0, 1, '0');
    std::string const prefix = prefixOf(number, conversion);
    std::size_t const length = prefix.size() + digits.size();
    std::size_t const missing = std::max(conversion.width, length) - length;
    if (conversion.has('-'))
        return prefix + digits + std::string(missing, ' ');
    if (conversion.has('0') && !conversion.precision)
        return prefix + std::string(missing, '0') + digits;
    return std::string(missing, ' ') + prefix + digits;
}

} // namespace

std::optional<std::string> formatNumber(std::string_view pattern, unsigned number) {
    std::string text;
    bool converted = false;
    for (;;) {
        std::size_t const percent = pattern.find('%');
        text += pattern.substr(0, percent);
        if (percent == std::string_view::npos)
            break;
        pattern.remove_prefix(percent + 1);
        if (pattern.starts_with('%')) {
            pattern.remove_prefix(1);
            text += '%';
            continue;
        }
        auto const conversion = takeConversion(pattern);
        if (!conversion || converted)
            return std::nullopt;
        text += convert(number, *conversion);
        converted = true;
    }
    if (text.size() > kLongestName)
        return std::nullopt;
    return text;
}

} // namespace Zel
