// zel script check

#include "command_line/commands.h"
#include "script/commands.h"
#include "script/environment.h"
#include "script/include_search.h"
#include "script/text.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>
#include <new>
#include <zel/script.h>

namespace zel {
namespace {

struct CheckOptions {
    ScriptSources sources;
    std::vector<std::string> files;
};

/// The files that were named. "-" stands for the names on standard input, one a line.
std::vector<std::string> filesToCheck(CheckOptions const& options, Console const& console) {
    std::vector<std::string> files;
    for (std::string const& file : options.files) {
        if (file != "-") {
            files.push_back(file);
            continue;
        }
        for (std::string line; std::getline(console.in, line);) {
            if (line.ends_with('\r'))
                line.pop_back();
            if (!line.empty())
                files.push_back(line);
        }
    }
    return files;
}

/// The number of the last line of a file: where a text that ends too soon is wrong.
int lastLine(std::string const& name) {
    try {
        std::string const text = scriptText(name);
        auto const breaks = std::count(text.begin(), text.end(), '\n');
        return static_cast<int>(breaks) + (text.ends_with('\n') ? 0 : 1);
    } catch (Zel::FileException const&) { // the file has changed since the library has read it
        return 1;
    }
}

/// Where a script is wrong. Fills in what the exception does not tell.
Zel::ScriptPlace placeOf(Zel::Exception const& exception, std::string const& script) {
    // A failed file is one that is included; its exception does not tell where.
    bool const isFailedFile = dynamic_cast<Zel::FileException const*>(&exception) != nullptr;
    auto place = isFailedFile ? findFailedInclude(script) : Zel::findScriptPlace(exception);
    if (!place)
        return {script, 1};
    if (place->line == 0)
        place->line = lastLine(place->file);
    return *place;
}

ExitCode check(std::string const& file, ScriptEnvironment& environment, Console const& console) {
    try {
        environment.require(file);
        try {
            Zel::Script const script(file);
            return kSuccess;
        } catch (Zel::Exception const& exception) {
            Zel::ScriptPlace const place = placeOf(exception, file);
            console.out << printableLine(environment.hostPath(place.file)) << ':' << place.line << ": "
                        << printableLine(exception.getError()) << '\n';
            return kFinding;
        }
    } catch (Zel::Exception const& exception) {
        console.message(exception.getError());
    } catch (std::bad_alloc const&) {
        console.message(outOfMemory(file).what());
    } catch (std::exception const& exception) {
        console.message(exception.what());
    }
    return kOperatingFailure;
}

ExitCode checkAll(CheckOptions const& options, Console const& console) {
    ScriptEnvironment environment(options.sources);
    ExitCode worst = kSuccess;
    for (std::string const& file : filesToCheck(options, console))
        worst = std::max(worst, check(file, environment, console));
    return worst;
}

} // namespace

void addScriptSources(CLI::App& command, ScriptSources& sources) {
    command.add_option("--data", sources.data,
                       "the data directory: names of scripts and includes start there");
    command.add_option("--archive", sources.archives,
                       "an archive to mount in the data directory; repeatable");
}

void addScriptCheckCommand(CLI::App& script, Console& console) {
    auto const options = std::make_shared<CheckOptions>();
    CLI::App* const command =
        script.add_subcommand("check", "Parses scripts and reports what is wrong as FILE:LINE: MESSAGE.");
    command->add_option("FILE", options->files, "the scripts; - reads their names from standard input")
        ->required();
    addScriptSources(*command, options->sources);
    command->callback([options, &console] { console.exitCode = checkAll(*options, console); });
}

} // namespace zel
