// The dump of a script's blocks to the verbose log.

#include "script/tree.h"

#include <cstdio>
#include <string>
#include <vector>
#include <zel/verbose.h>

namespace Zel {
namespace {

/// The block itself, without its children.
template <class Block>
void dumpBlock(Block const& block, std::string const& indent) {
    verbose("%s[%s]\n", indent.c_str(), block.name.c_str());
    for (auto const* variable = block.firstVariable; variable != nullptr; variable = variable->next)
        verbose("%s%s = %s (type %d)\n", indent.c_str(), std::string(variable->name()).c_str(),
                std::string(variable->text()).c_str(), static_cast<int>(variable->type()));
}

} // namespace

/// A list holds the blocks that are open: a function that calls itself would overflow the call stack where
/// blocks are nested deep enough.
void Script::dump() {
    struct Visit {
        Block const* block;
        std::size_t nextChild = 0;
    };
    std::vector<Visit> visits{{&current()}};
    std::string indent;
    for (;;) {
        Visit& visit = visits.back();
        if (visit.nextChild < visit.block->children.size()) {
            Block const* const child = visit.block->children[visit.nextChild++];
            indent.resize(2 * (visits.size() - 1), ' ');
            dumpBlock(*child, indent);
            visits.push_back({child});
        } else {
            visits.pop_back();
            if (visits.empty())
                return;
            std::printf("\n"); // Meant: to standard output, whatever the settings of the log.
        }
    }
}

} // namespace Zel
