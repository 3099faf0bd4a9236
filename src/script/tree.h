// A parsed script. One container owns all blocks, and one all variables, so that no destructor calls itself
// however deep the blocks are nested.
#pragma once

#include "core/name_index.h"
#include "script/budget.h"
#include "script/value.h"

#include <cstdint>
#include <deque>
#include <memory_resource>
#include <string>
#include <string_view>
#include <vector>
#include <zel/script.h>

namespace Zel {

/// Small, as a script may hold many: the text follows the name in the same characters.
struct Script::StoredVariable {
    char const* characters;
    std::uint32_t nameLength;
    std::uint32_t textLength;
    StoredVariable* next; // of the same block, in order of appearance
    ScriptValue value;

    std::string_view name() const { return {characters, nameLength}; }

    /// The value as written, without blanks; for a string, the string.
    std::string_view text() const {
        if (auto const* string = std::get_if<TYPE_STRING>(&value))
            return **string;
        return {characters + nameLength, textLength};
    }
    VarType type() const { return static_cast<VarType>(value.index()); }
};

/// Small, too. A few names are compared one by one; more have an index.
struct Script::Block {
    static constexpr std::size_t kFew = 8;
    static constexpr std::size_t kIndexedSize = 24; // bytes a name in any index, at most about

    struct VariableIndex {
        explicit VariableIndex(Budget& budget) : variables(&budget) {}

        std::pmr::vector<StoredVariable const*> variables; // in order of appearance
        NameIndex names;

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
    NameIndex const* childIndex = nullptr;
    VariableIndex const* variableIndex = nullptr;

    auto nameOfChild() const {
        return [this](std::size_t i) -> std::string_view {
            return children[i]->name;
        };
    }

    /// The first child of that name; null when there is none.
    Block const* findChild(std::string_view wanted) const {
        if (childIndex != nullptr) {
            auto const position = childIndex->find(wanted, nameOfChild());
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
    Budget budget{}; // counts the memory of all of the others
    KeptMemory memory{budget};
    KeptMemory blockMemory{budget};              // of their own: side by side, their names are soon indexed
    std::pmr::deque<Block> blocks{&blockMemory}; // ROOT first, then in the order of their headers
    std::pmr::deque<StoredVariable> variables{&memory};
    std::pmr::deque<NameIndex> childIndexes{&memory};
    std::pmr::deque<Block::VariableIndex> variableIndexes{&memory};
    std::pmr::deque<std::string> strings{&memory};
    std::size_t scripts = 0; // that share this tree

    /// Says how long the text is. One full of variables takes about four times as much.
    void expect(std::size_t length) {
        memory.expect(4 * length);
        blockMemory.expect(length / 2);
    }

    Block& addBlock(std::string_view name, Block* parent) {
        budget.hold(name.size());
        Block& block =
            blocks.emplace_back(Block{std::string(name), parent, std::pmr::vector<Block const*>(&budget)});
        if (parent != nullptr)
            parent->children.push_back(&block);
        return block;
    }

    /// To be called when the block has all of its children and variables, and before anything is looked up
    /// there.
    void index(Block& block, std::size_t variableCount) {
        if (block.children.size() > Block::kFew)
            indexChildren(block);
        if (variableCount > Block::kFew)
            indexVariables(block, variableCount);
    }

private:
    void indexChildren(Block& block) {
        budget.hold(Block::kIndexedSize * block.children.size());
        block.childIndex = &childIndexes.emplace_back(block.children.size(), block.nameOfChild());
    }

    void indexVariables(Block& block, std::size_t count) {
        budget.hold(Block::kIndexedSize * count);
        Block::VariableIndex& added = variableIndexes.emplace_back(budget);
        added.variables.reserve(count);
        for (auto const* variable = block.firstVariable; variable != nullptr; variable = variable->next)
            added.variables.push_back(variable);
        added.names = NameIndex(count, added.nameOfVariable());
        block.variableIndex = &added;
    }
};

} // namespace Zel
