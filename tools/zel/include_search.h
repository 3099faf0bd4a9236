// Where a script includes a file that cannot be read: the library's exception names the file alone.
#pragma once

#include <optional>
#include <string>
#include <zel/script.h>

namespace zel {

/// The first #include, in the order in which the library reads a script and what it includes, that cannot be
/// read. Nothing when all can, or when the script itself cannot. The script must be one that is in order up
/// to there.
std::optional<Zel::ScriptPlace> findFailedInclude(std::string const& script);

} // namespace zel
