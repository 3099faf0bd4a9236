// The command line, and what becomes of every kind of failure.

#include "command_line/commands.h"
#include "picture/commands.h"
#include "script/commands.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <new>
#include <zel/api.h>
#include <zel/exception.h>
#include <zel/file.h>
#include <zel/image.h>
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
           dynamic_cast<Zel::ImageException const*>(&exception) != nullptr ||
           dynamic_cast<Zel::FileException_FileCorrupted const*>(&exception) != nullptr ||
           dynamic_cast<Zel::FileException_ReadError const*>(&exception) != nullptr;
}

ExitCode parseAndRun(std::vector<std::string> arguments, Console& console) {
    CLI::App program(
        "Packs and checks archives of data files, and the scripts and pictures that belong to them.", "zel");
    program.set_version_flag("--version", kVersion);
    program.footer(
        "Names that would control the terminal are printed in double quotes, with escapes as \\x1b.");
    program.require_subcommand(1);
    addPackCommand(program, console);
    addListCommand(program, console);
    addVerifyCommand(program, console);
    addExtractCommand(program, console);
    addCatCommand(program, console);
    addDiffCommand(program, console);
    addScriptCommand(program, console);
    addImageCommand(program, console);
    addNoiseCommand(program);

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

void addImageCommand(CLI::App& program, Console& console) {
    CLI::App* const image = program.add_subcommand("image", "Looks at pictures and converts them.");
    image->require_subcommand(1);
    addImageInfoCommand(*image, console);
    addImageConvertCommand(*image);
    addImageSheetCommand(*image, console);
}

ExitCode reportFailures(Console const& console, std::function<void()> const& act) {
    try {
        act();
        return kSuccess;
    } catch (Failure const& failure) {
        console.message(failure.what());
        return failure.exitCode();
    } catch (Zel::Exception const& exception) {
        console.message(exception.getError());
        return isFinding(exception) ? kFinding : kOperatingFailure;
    } catch (std::bad_alloc const&) {
        console.message("out of memory");
        return kOperatingFailure;
    } catch (std::exception const& exception) {
        console.message(exception.what());
        return kOperatingFailure;
    }
}

int run(std::vector<std::string> arguments, Console console) {
    ExitCode const failure =
        reportFailures(console, [&] { console.exitCode = parseAndRun(std::move(arguments), console); });
    if (!console.out.flush()) {
        console.message("cannot write the output");
        return kOperatingFailure;
    }
    return failure != kSuccess ? failure : console.exitCode;
}

} // namespace zel
