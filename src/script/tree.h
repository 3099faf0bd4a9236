// A parsed script: all blocks and variables, each in one container that owns them. Nothing here is freed
// recursively, however deep the blocks are nested.
#pragma once

#include "core/name_index.h"
#include "script/value.h"

#include <cstdint>
#include <deque>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>
#include <zel/script.h>

namespace Zel {

/// Kept small, as a script may hold many: the name and the text stand one behind the other.
struct Script::StoredVariable {
    char const* characters;
    std::uint32_t nameLength;
    std::uint32_t textLength;
    StoredVariable* next; // of the same block, in order of appearance
    ScriptValue value;

    std::string_view name() const { return {characters, nameLength}; }

    /// The text of the value without blanks; for a string, the string.
    std::string_view text() const {
        if (auto const* string = std::get_if<TYPE_STRING>(&value))
            return **string;
        return {characters + nameLength, textLength};
    }
    VarType type() const { return static_cast<VarType>(value.index()); }
};

struct Script::Block {
    std::string name;
    Block const* parent;
    std::vector<Block const*> children; // in order of appearance
    StoredVariable* firstVariable = nullptr;
    StoredVariable* lastVariable = nullptr;
    NameIndex childNames{}; // of many children; few are sought one after the other

    auto nameOfChild() const {
        return [this](std::size_t i) -> std::string_view {
            return children[i]->name;
        };
    }

    /// To be called once all children are there, before findChild.
    void indexChildren() {
        constexpr std::size_t kFew = 8;
        if (children.size() <= kFew)
            return;
        childNames = NameIndex(children.size(), nameOfChild());
    }

    /// The first child of that name; null when there is none.
    Block const* findChild(std::string_view wanted) const {
        if (!childNames.empty()) {
            auto const position = childNames.find(wanted, nameOfChild());
            return position ? children[*position] : nullptr;
        }
        for (Block const* child : children)
            if (child->name == wanted)
                return child;
        return nullptr;
    }
};

struct Script::Tree {
    std::deque<Block> blocks; // ROOT first, then in the order of their headers
    std::deque<StoredVariable> variables;
    std::deque<std::string> strings;
    std::pmr::monotonic_buffer_resource characters;
};

} // namespace Zel
