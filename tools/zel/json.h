// Output for programs to read.
#pragma once

#include <nlohmann/json.hpp>
#include <ostream>

namespace zel {

/// Keeps the order in which members are added.
using Json = nlohmann::ordered_json;

/// Bytes of a name that are no UTF-8 become U+FFFD.
inline void printJson(std::ostream& out, Json const& value) {
    out << value.dump(2, ' ', false, Json::error_handler_t::replace) << '\n';
}

} // namespace zel
