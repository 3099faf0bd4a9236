// zel script dump

#include "command_line/commands.h"
#include "command_line/json.h"
#include "script/commands.h"
#include "script/environment.h"

#include <CLI/CLI.hpp>
#include <array>
#include <charconv>
#include <cstdlib>
#include <memory>
#include <zel/script.h>

namespace zel {
namespace {

struct DumpOptions {
    ScriptSources sources;
    std::string file;
    bool json = false;
};

constexpr std::array kTypeNames = {"int",     "bool",    "string",  "float",
                                   "vector2", "vector3", "vector4", "interval"};

char const* typeName(Zel::Script::VarType type) { return kTypeNames.at(static_cast<std::size_t>(type)); }

/// The number with the fewest digits that reads back as this float. JSON has no infinite numbers: they become
/// null.
Json shortest(float value) {
    std::array<char, 32> digits{};
    std::to_chars(digits.data(), digits.data() + digits.size() - 1, value);
    return std::strtod(digits.data(), nullptr);
}

template <class... Floats>
Json listOf(Floats... values) {
    return Json::array({shortest(values)...});
}

Json valueOf(Zel::Script::Variable const& variable) {
    switch (variable.type) {
    case Zel::Script::TYPE_INT:
        return variable.intValue;
    case Zel::Script::TYPE_BOOL:
        return variable.boolValue;
    case Zel::Script::TYPE_STRING:
        return variable.text;
    case Zel::Script::TYPE_FLOAT:
        return shortest(variable.floatValue);
    case Zel::Script::TYPE_VECTOR2:
        return listOf(variable.vector2Value.x, variable.vector2Value.y);
    case Zel::Script::TYPE_VECTOR3:
        return listOf(variable.vector3Value.x, variable.vector3Value.y, variable.vector3Value.z);
    case Zel::Script::TYPE_VECTOR4:
        return listOf(variable.vector4Value.x, variable.vector4Value.y, variable.vector4Value.z,
                      variable.vector4Value.w);
    case Zel::Script::TYPE_INTERVAL:
        return listOf(variable.intervalValue.min, variable.intervalValue.max);
    }
    return {};
}

/// Visits all blocks below the current one. Calls `enter` with the depth of a block and its index among its
/// siblings, and `leave` with its depth. A function that calls itself for each block would overflow the call
/// stack where blocks are nested deep enough.
template <class Enter, class Leave>
void walk(Zel::Script& script, Enter enter, Leave leave) {
    std::vector<int> nextChild{0};
    for (;;) {
        if (nextChild.back() < script.getBlockCount()) {
            int const index = nextChild.back()++;
            script.lock(index);
            enter(nextChild.size() - 1, index);
            nextChild.push_back(0);
        } else {
            nextChild.pop_back();
            if (nextChild.empty())
                return;
            leave(nextChild.size() - 1);
            script.unlock();
        }
    }
}

void dumpAsText(Zel::Script& script, std::ostream& out) {
    auto const enter = [&](std::size_t depth, int /*index*/) {
        std::string const indent(2 * depth, ' ');
        out << indent << '[' << printableName(script.getBlockName()) << "]\n";
        for (Zel::Script::Variable const& variable : script.getVariables()) {
            bool const isString = variable.type == Zel::Script::TYPE_STRING;
            out << indent << "  " << printableName(variable.name) << " = "
                << (isString ? quotedText(variable.text) : variable.text) << " (" << typeName(variable.type)
                << ")\n";
        }
    };
    walk(script, enter, [](std::size_t /*depth*/) {});
}

/// Written block by block: a JSON value of the whole tree would be as deep as the blocks.
void dumpAsJson(Zel::Script& script, std::ostream& out) {
    auto const enter = [&](std::size_t depth, int index) {
        std::string const indent(2 * depth + 2, ' ');
        out << (index > 0 ? ",\n" : "\n") << indent << "{\"name\": " << jsonText(script.getBlockName())
            << ", \"variables\": [";
        char const* separator = "";
        for (Zel::Script::Variable const& variable : script.getVariables()) {
            Json const value = {
                {"name", variable.name}, {"type", typeName(variable.type)}, {"value", valueOf(variable)}};
            out << separator << jsonText(value);
            separator = ", ";
        }
        out << "], \"blocks\": [";
    };
    out << "{\"file\": " << jsonText(script.getFilename()) << ", \"blocks\": [";
    walk(script, enter, [&](std::size_t /*depth*/) { out << "]}"; });
    out << "]}\n";
}

} // namespace

void addScriptDumpCommand(CLI::App& script, Console& console) {
    auto const options = std::make_shared<DumpOptions>();
    CLI::App* const command = script.add_subcommand("dump", "Shows the blocks and variables of a script.");
    command->add_option("FILE", options->file, "the script")->required();
    command->add_flag("--json", options->json, "as JSON");
    addScriptSources(*command, options->sources);
    command->callback([options, &console] {
        ScriptEnvironment environment(options->sources);
        environment.require(options->file);
        auto parsed = whileReading(options->file, [&] { return Zel::Script(options->file); });
        if (options->json)
            dumpAsJson(parsed, console.out);
        else
            dumpAsText(parsed, console.out);
    });
}

} // namespace zel
