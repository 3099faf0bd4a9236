// The names in directories, found in any case.
#pragma once

#include "platform/ascii.h"

#include <optional>
#include <set>
#include <string>
#include <utility>

namespace Zel::platform {

/// The names in one directory, in an order that ignores case first.
class DirectoryNames {
public:
    DirectoryNames() = default;
    /// Of an open directory, as far as it could be read.
    explicit DirectoryNames(int directory);

    void insert(std::string const& name) { m_names.emplace(toAsciiLowerCase(name), name); }
    std::size_t size() const { return m_names.size(); }
    bool isWhole() const { return m_isWhole; }

    bool holds(std::string const& name) const { return m_names.contains({toAsciiLowerCase(name), name}); }

    /// The first name in byte order that is `name` when case is ignored.
    std::optional<std::string> match(std::string const& name) const {
        std::string const wanted = toAsciiLowerCase(name);
        auto const found = m_names.lower_bound({wanted, ""});
        return found != m_names.end() && found->first == wanted ? std::optional(found->second) : std::nullopt;
    }

private:
    std::set<std::pair<std::string, std::string>> m_names; ///< in lower case, and as they are
    bool m_isWhole = true;
};

/// What exists under the exact name in the directory of that host path ("" is the working directory, others
/// end with a separator), or else under the one that `match` finds. What a directory held is remembered, so
/// that mostly only its time of change is looked at.
std::optional<std::string> matchInDirectory(std::string const& directory, std::string const& name);

} // namespace Zel::platform
