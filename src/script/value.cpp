// Tells the types of values.

#include "script/value.h"

#include "core/numbers.h"
#include "script/characters.h"

#include <algorithm>
#include <array>

namespace Zel {
namespace {

struct Counts {
    std::ptrdiff_t letters, digits, points, commas;
};

Counts count(std::string_view text) {
    Counts counts{};
    for (char const character : text) {
        counts.letters += isLetter(character) ? 1 : 0;
        counts.digits += isDigit(character) ? 1 : 0;
        counts.points += character == '.' ? 1 : 0;
        counts.commas += character == ',' ? 1 : 0;
    }
    return counts;
}

/// The numbers between brackets or parentheses, separated by commas.
std::array<float, 4> components(std::string_view text) {
    std::string_view rest = text.substr(1, text.size() - 2);
    std::array<float, 4> numbers{};
    for (float& number : numbers) {
        std::size_t const comma = std::min(rest.find(','), rest.size());
        number = toFloat(rest.substr(0, comma));
        rest.remove_prefix(std::min(comma + 1, rest.size()));
    }
    return numbers;
}

} // namespace

// The first rule that matches decides. Meant: a text with exactly one point is a float even when it has
// brackets, so "(1.5,2)" is the float 0. Vectors are written with no point or with two or more.
std::optional<ScriptValue> parseValue(std::string_view text) {
    auto const [letters, digits, points, commas] = count(text);
    auto const length = static_cast<std::ptrdiff_t>(text.size());
    if (digits == length || (text.starts_with('-') && digits == length - 1))
        return toInt(text);
    if (points == 1 && letters == 0)
        return toFloat(text);
    if (text == "TRUE" || text == "FALSE")
        return text == "TRUE";
    if (text.starts_with('(') && text.ends_with(')') && letters == 0 && commas >= 1 && commas <= 3) {
        auto const [x, y, z, w] = components(text);
        if (commas == 1)
            return Vector2Template<float>(x, y);
        if (commas == 2)
            return Vector3Template<float>(x, y, z);
        return Vector4Template<float>(x, y, z, w);
    }
    if (text.starts_with('[') && text.ends_with(']') && letters == 0 && commas == 1) {
        auto const numbers = components(text);
        return IntervalTemplate<float>(numbers[0], numbers[1]);
    }
    return std::nullopt;
}

std::string processEscapes(std::string_view text) {
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char character = text[i];
        if (character == '\\' && i + 1 < text.size()) {
            ++i;
            character = text[i] == 'n' ? '\n' : '\\';
        }
        decoded += character;
    }
    return decoded;
}

} // namespace Zel
