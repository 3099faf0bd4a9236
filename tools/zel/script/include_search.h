// Finds the #include that failed: the library's exception names the file that cannot be read, and not where
// it is included.
#pragma once

#include <optional>
#include <string>
#include <zel/script.h>

namespace zel {

/// The place of the first #include whose file cannot be read, in the order in which the library reads.
/// Nothing when all can be read, or when the script itself cannot. Up to that place the script must be free
/// of errors.
std::optional<Zel::ScriptPlace> findFailedInclude(std::string const& script);

} // namespace zel
