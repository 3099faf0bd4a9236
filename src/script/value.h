// The value of a variable, and how its text tells the type.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <zel/vector.h>

namespace Zel {

/// The index is the Script::VarType. A string belongs to the tree of the script.
using ScriptValue = std::variant<std::int32_t, bool, std::string const*, float, Vector2Template<float>,
                                 Vector3Template<float>, Vector4Template<float>, IntervalTemplate<float>>;

/// The value that a text without a leading quote stands for; nothing when it stands for none.
std::optional<ScriptValue> parseValue(std::string_view text);

/// The text with its backslash sequences decoded: \n is a line feed, \\ is a backslash. Meant: a backslash
/// before any other character stays, and that character is lost. A backslash at the end stays.
std::string processEscapes(std::string_view text);

} // namespace Zel
