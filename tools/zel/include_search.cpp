// Looking for #include lines, file after file.

#include "include_search.h"

#include "script_text.h"

#include <deque>
#include <set>
#include <sstream>
#include <zel/exception.h>

namespace zel {
namespace {

/// The file that a line includes; empty when it includes none.
std::string includedBy(std::string const& line) {
    std::size_t const hash = line.find('#');
    if (hash == std::string::npos)
        return {};
    std::istringstream words(line.substr(hash + 1));
    std::string keyword;
    std::string name;
    words >> keyword >> name;
    if (keyword != "include")
        return {};
    if (name.starts_with('"'))
        name.erase(0, 1);
    if (name.ends_with('"'))
        name.pop_back();
    return name;
}

} // namespace

std::optional<IncludePlace> findInclude(std::string const& script, std::string const& included) {
    std::deque<std::string> files{script};
    std::set<std::string> seen{script};
    for (; !files.empty(); files.pop_front()) {
        std::istringstream text(scriptText(files.front()));
        int number = 0;
        for (std::string line; std::getline(text, line);) {
            ++number;
            std::string const name = includedBy(line);
            if (!name.empty() && name == included)
                return IncludePlace{files.front(), number};
            if (!name.empty() && seen.insert(name).second)
                files.push_back(name);
        }
    }
    return std::nullopt;
}

} // namespace zel
