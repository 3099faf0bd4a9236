// The command line, and what becomes of every kind of failure.

#include "commands.h"
#include "script_commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <zel/api.h>
#include <zel/exception.h>
#include <zel/file.h>
#include <zel/script.h>

#define ZEL_TEXT_OF(value) #value
#define ZEL_TEXT(value) ZEL_TEXT_OF(value)

namespace zel {
namespace {

constexpr char const* kVersion =
    "zel " ZEL_TEXT(ZEL_VERSION_MAJOR) "." ZEL_TEXT(ZEL_VERSION_MINOR) "." ZEL_TEXT(ZEL_VERSION_PATCH);

/// Whether the library met bad data, rather than a host that refused.
bool isFinding(Zel::Exception const& exception) {
    return dynamic_cast<Zel::Exception_ArchiveCorrupt const*>(&exception) != nullptr ||
           dynamic_cast<Zel::Exception_ArchiveVersionInvalid const*>(&exception) != nullptr ||
           dynamic_cast<Zel::ScriptException const*>(&exception) != nullptr ||
           dynamic_cast<Zel::ScriptPreprocessorException const*>(&exception) != nullptr ||
           dynamic_cast<Zel::FileException_FileCorrupted const*>(&exception) != nullptr ||
           dynamic_cast<Zel::FileException_ReadError const*>(&exception) != nullptr;
}

ExitCode parseAndRun(std::vector<std::string> arguments, Console& console) {
    CLI::App program("Packs and checks archives of data files, and the scripts that belong to them.", "zel");
    program.set_version_flag("--version", kVersion);
    program.require_subcommand(1);
    addPackCommand(program, console);
    addListCommand(program, console);
    addVerifyCommand(program, console);
    addCatCommand(program, console);
    addScriptCommand(program, console);

    std::reverse(arguments.begin(), arguments.end()); // the parser takes them from the end
    try {
        program.parse(std::move(arguments));
    } catch (CLI::CallForHelp const&) {
        console.out << program.help();
    } catch (CLI::CallForVersion const&) {
        console.out << kVersion << '\n';
    } catch (CLI::ParseError const& error) {
        console.message(error.what());
        console.message("see 'zel --help', or 'zel COMMAND --help'");
        return kUsage;
    }
    return console.exitCode;
}

} // namespace

void addScriptCommand(CLI::App& program, Console& console) {
    CLI::App* const script = program.add_subcommand("script", "Checks and shows scripts.");
    script->require_subcommand(1);
    addScriptCheckCommand(*script, console);
    addScriptDumpCommand(*script, console);
}

int run(std::vector<std::string> arguments, Console console) {
    ExitCode exitCode = kOperatingFailure;
    try {
        exitCode = parseAndRun(std::move(arguments), console);
    } catch (Failure const& failure) {
        console.message(failure.what());
        exitCode = failure.exitCode();
    } catch (Zel::Exception const& exception) {
        console.message(exception.getError());
        exitCode = isFinding(exception) ? kFinding : kOperatingFailure;
    } catch (std::exception const& exception) {
        console.message(exception.what());
    }

    if (!console.out.flush()) {
        console.message("cannot write the output");
        return kOperatingFailure;
    }
    return exitCode;
}

} // namespace zel
