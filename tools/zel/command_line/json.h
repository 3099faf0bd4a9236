// Output for programs to read.
#pragma once

#include <nlohmann/json.hpp>
#include <ostream>
#include <string>

namespace zel {

/// Keeps the order in which members are added.
using Json = nlohmann::ordered_json;

/// Characters outside ASCII are escaped: a name means nothing to a terminal. Bytes of a name that are no
/// UTF-8 become U+FFFD, as JSON has no other bytes.
inline std::string jsonText(Json const& value, int indent = -1) {
    return value.dump(indent, ' ', true, Json::error_handler_t::replace);
}

inline void printJson(std::ostream& out, Json const& value) { out << jsonText(value, 2) << '\n'; }

} // namespace zel
