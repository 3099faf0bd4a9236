// A parsed script: all blocks and variables, each in one container that owns them. Nothing here is freed
// recursively, however deep the blocks are nested.
#pragma once

#include "core/name_index.h"
#include "script/budget.h"
#include "script/value.h"

#include <cstdint>
#include <deque>
#include <memory_resource>
#include <string>
#include <string_view>
#include <utility>
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
    /// What an index of many names is held for; fewer are sought one after the other.
    static constexpr std::size_t kFew = 8;
    static constexpr std::size_t kIndexedSize = 24; // of a name, in any index, at most about

    struct VariableIndex {
        std::pmr::vector<StoredVariable const*> variables; // in order of appearance
        NameIndex names{};

        auto nameOfVariable() const {
            return [this](std::size_t i) {
                return variables[i]->name();
            };
        }
    };

    std::string name;
    Block const* parent;
    std::pmr::vector<Block const*> children; // in order of appearance
    StoredVariable* firstVariable = nullptr;
    StoredVariable* lastVariable = nullptr;
    std::size_t variableCount = 0;
    NameIndex childNames{};                       // of many children
    VariableIndex const* variableIndex = nullptr; // of many variables

    auto nameOfChild() const {
        return [this](std::size_t i) -> std::string_view {
            return children[i]->name;
        };
    }

    void append(StoredVariable& variable) {
        (lastVariable != nullptr ? lastVariable->next : firstVariable) = &variable;
        lastVariable = &variable;
        ++variableCount;
    }

    /// To be called once all blocks and variables are there, before anything is sought.
    void index(Tree& tree);

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

    /// The first variable of that name; null when there is none.
    StoredVariable const* findVariable(std::string_view wanted) const {
        if (variableIndex != nullptr) {
            auto const position = variableIndex->names.find(wanted, variableIndex->nameOfVariable());
            return position ? variableIndex->variables[*position] : nullptr;
        }
        StoredVariable const* variable = firstVariable;
        while (variable != nullptr && variable->name() != wanted)
            variable = variable->next;
        return variable;
    }
};

struct Script::Tree {
    Budget budget{};                        // where all of the others take their memory from
    std::pmr::deque<Block> blocks{&budget}; // ROOT first, then in the order of their headers
    std::pmr::deque<StoredVariable> variables{&budget};
    std::pmr::deque<Block::VariableIndex> variableIndexes{&budget};
    std::pmr::deque<std::string> strings{&budget};
    std::pmr::monotonic_buffer_resource characters{&budget};
    std::size_t scripts = 0; // that share this tree

    Block& addBlock(std::string_view name, Block* parent) {
        budget.hold(name.size());
        Block& block =
            blocks.emplace_back(Block{std::string(name), parent, std::pmr::vector<Block const*>(&budget)});
        if (parent != nullptr)
            parent->children.push_back(&block);
        return block;
    }
};

inline void Script::Block::index(Tree& tree) {
    if (children.size() > kFew) {
        tree.budget.hold(kIndexedSize * children.size());
        childNames = NameIndex(children.size(), nameOfChild());
    }
    if (variableCount > kFew) {
        tree.budget.hold(kIndexedSize * variableCount);
        std::pmr::vector<StoredVariable const*> variables(&tree.budget);
        variables.reserve(variableCount);
        for (StoredVariable const* variable = firstVariable; variable != nullptr; variable = variable->next)
            variables.push_back(variable);
        VariableIndex& index = tree.variableIndexes.emplace_back(VariableIndex{std::move(variables)});
        index.names = NameIndex(variableCount, index.nameOfVariable());
        variableIndex = &index;
    }
}

} // namespace Zel
