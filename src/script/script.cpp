// Queries of a parsed script.

#include "core/usage_error.h"
#include "script/parser.h"
#include "script/tree.h"

#include <type_traits>
#include <utility>
#include <zel/script.h>

namespace Zel {
namespace {

template <class... Visitors>
struct Overloaded : Visitors... {
    using Visitors::operator()...;
};
template <class... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

} // namespace

static_assert(std::is_same_v<std::variant_alternative_t<Script::TYPE_INT, ScriptValue>, std::int32_t>);
static_assert(
    std::is_same_v<std::variant_alternative_t<Script::TYPE_STRING, ScriptValue>, std::string const*>);
static_assert(
    std::is_same_v<std::variant_alternative_t<Script::TYPE_INTERVAL, ScriptValue>, IntervalTemplate<float>>);

// Each constructor gives every member its value at once: there is nothing to initialise before.

Script::Script(std::string const& fileName)
    : m_fileName(fileName), m_tree(Parser(fileName).parse().release()), m_current(&m_tree->blocks.front()) {
    ++m_tree->scripts;
}

Script::Script(Script const& other)
    : m_fileName(other.m_fileName), m_tree(other.m_tree), m_current(other.m_current) {
    ++m_tree->scripts;
}

Script& Script::operator=(Script const& other) {
    Script copy(other);
    m_fileName.swap(copy.m_fileName);
    std::swap(m_tree, copy.m_tree);
    m_current = copy.m_current;
    return *this;
}

/// The last script that shares the tree frees it. The tree's containers hold all blocks side by side, so
/// nothing is freed block by block.
Script::~Script() {
    if (--m_tree->scripts == 0)
        delete m_tree;
}

std::string const& Script::getFilename() const { return m_fileName; }

// The cursor.

Script::Block const& Script::current() const {
    if (m_current == nullptr)
        usageError("Script: no block is locked in %s: ROOT was unlocked", m_fileName.c_str());
    return *m_current;
}

void Script::lock(int index) {
    auto const& children = current().children;
    if (index < 0 || static_cast<std::size_t>(index) >= children.size())
        usageError("Script::lock: no block %d among %d", index, getBlockCount());
    m_current = children[static_cast<std::size_t>(index)];
}

void Script::lock(std::string const& name) {
    Block const* const child = current().findChild(name);
    if (child == nullptr)
        throw ScriptException_BlockNotFound(m_fileName.c_str(), name.c_str());
    m_current = child;
}

void Script::unlock() { m_current = current().parent; }

int Script::getBlockCount() const { return static_cast<int>(current().children.size()); }

std::string const& Script::getBlockName() const { return current().name; }

bool Script::hasBlock(std::string const& name) const { return current().findChild(name) != nullptr; }

// Variables.

Script::StoredVariable const* Script::find(std::string const& name) const {
    return current().findVariable(name);
}

Script::StoredVariable const& Script::checked(StoredVariable const& variable, VarType type) const {
    if (variable.type() != type)
        throw ScriptException_TypeMismatch(m_fileName.c_str(), std::string(variable.name()).c_str());
    return variable;
}

Script::StoredVariable const& Script::lookup(std::string const& name, VarType type) const {
    StoredVariable const* const variable = find(name);
    if (variable == nullptr)
        throw ScriptException_UndefinedVariable(m_fileName.c_str(), getBlockName().c_str(), name.c_str());
    return checked(*variable, type);
}

template <Script::VarType type>
auto const& Script::value(std::string const& name) const {
    return std::get<type>(lookup(name, type).value);
}

template <Script::VarType type, class Value>
Value const& Script::valueOr(std::string const& name, Value const& defaultValue) const {
    StoredVariable const* const variable = find(name);
    return variable != nullptr ? std::get<type>(checked(*variable, type).value) : defaultValue;
}

bool Script::isDefined(std::string const& name) const { return find(name) != nullptr; }

std::vector<Script::Variable> Script::getVariables() const {
    std::vector<Variable> variables;
    for (StoredVariable const* stored = current().firstVariable; stored != nullptr; stored = stored->next) {
        Variable& variable = variables.emplace_back();
        variable.name = stored->name();
        variable.type = stored->type();
        variable.text = stored->text();
        std::visit(Overloaded{[&](std::int32_t value) { variable.intValue = value; },
                              [&](bool value) { variable.boolValue = value; },
                              [&](std::string const*) {}, // the text is the string
                              [&](float value) { variable.floatValue = value; },
                              [&](Vector2Template<float> const& value) { variable.vector2Value = value; },
                              [&](Vector3Template<float> const& value) { variable.vector3Value = value; },
                              [&](Vector4Template<float> const& value) { variable.vector4Value = value; },
                              [&](IntervalTemplate<float> const& value) {
                                  variable.intervalValue = value;
                              }},
                   stored->value);
    }
    return variables;
}

int Script::getInt(std::string const& name) const { return value<TYPE_INT>(name); }

int Script::getInt(std::string const& name, int defaultValue) const {
    return valueOr<TYPE_INT>(name, defaultValue);
}

bool Script::getBool(std::string const& name) const { return value<TYPE_BOOL>(name); }

bool Script::getBool(std::string const& name, bool defaultValue) const {
    return valueOr<TYPE_BOOL>(name, defaultValue);
}

std::string const& Script::getString(std::string const& name) const { return *value<TYPE_STRING>(name); }

std::string const& Script::getString(std::string const& name, std::string const& defaultValue) const {
    return *valueOr<TYPE_STRING>(name, &defaultValue);
}

float Script::getFloat(std::string const& name) const { return value<TYPE_FLOAT>(name); }

float Script::getFloat(std::string const& name, float defaultValue) const {
    return valueOr<TYPE_FLOAT>(name, defaultValue);
}

Vector2Template<float> const& Script::getVector2(std::string const& name) const {
    return value<TYPE_VECTOR2>(name);
}

Vector2Template<float> const& Script::getVector2(std::string const& name,
                                                 Vector2Template<float> const& defaultValue) const {
    return valueOr<TYPE_VECTOR2>(name, defaultValue);
}

Vector3Template<float> const& Script::getVector3(std::string const& name) const {
    return value<TYPE_VECTOR3>(name);
}

Vector3Template<float> const& Script::getVector3(std::string const& name,
                                                 Vector3Template<float> const& defaultValue) const {
    return valueOr<TYPE_VECTOR3>(name, defaultValue);
}

Vector4Template<float> const& Script::getVector4(std::string const& name) const {
    return value<TYPE_VECTOR4>(name);
}

Vector4Template<float> const& Script::getVector4(std::string const& name,
                                                 Vector4Template<float> const& defaultValue) const {
    return valueOr<TYPE_VECTOR4>(name, defaultValue);
}

IntervalTemplate<float> const& Script::getInterval(std::string const& name) const {
    return value<TYPE_INTERVAL>(name);
}

IntervalTemplate<float> const& Script::getInterval(std::string const& name,
                                                   IntervalTemplate<float> const& defaultValue) const {
    return valueOr<TYPE_INTERVAL>(name, defaultValue);
}

} // namespace Zel
