// zel verify

#include "archive/mounted_archive.h"
#include "command_line/commands.h"
#include "command_line/json.h"
#include "command_line/progress.h"

#include <CLI/CLI.hpp>
#include <memory>
#include <utility>

namespace zel {
namespace {

struct VerifyOptions {
    std::string archive;
    bool json = false;
};

struct Damage {
    std::string name;    ///< the entry; empty for the archive's table
    std::string problem; ///< as the library words it
};

struct Findings {
    std::size_t entries = 0;
    std::uint64_t bytes = 0;
    std::vector<Damage> damages;
};

Findings examine(VerifyOptions const& options, Console const& console) {
    Findings findings;
    try {
        MountedArchive archive(options.archive);
        findings.entries = archive.entries().size();
        findings.bytes = totalSize(archive.entries());
        Progress progress(console.terminal, "verifying", findings.bytes);
        for (ArchiveEntry const& entry : archive.entries()) {
            try {
                archive.check(entry);
            } catch (Zel::FileException const& exception) {
                findings.damages.push_back({entry.name, exception.getError()});
            }
            progress.advance(entry.info.size);
        }
    } catch (Zel::FileException_OpenFailed const&) {
        throw; // there is nothing to examine
    } catch (Zel::FileException_DirectoryNotFound const&) {
        throw;
    } catch (Zel::Exception const& exception) {
        findings.damages.push_back({"", exception.getError()});
    }
    return findings;
}

void reportAsText(VerifyOptions const& options, Findings const& findings, Console const& console) {
    std::string const archive = printableName(options.archive);
    for (Damage const& damage : findings.damages)
        console.message(archive + ": " + damage.problem);
    if (findings.damages.empty())
        console.out << archive << ": " << findings.entries << " entries, " << findings.bytes
                    << " bytes, all intact\n";
    else
        console.out << archive << ": " << findings.damages.size() << " damaged\n";
}

void reportAsJson(VerifyOptions const& options, Findings const& findings, Console const& console) {
    Json damages = Json::array();
    for (Damage const& damage : findings.damages)
        damages.push_back(
            {{"name", damage.name.empty() ? Json() : Json(damage.name)}, {"problem", damage.problem}});
    printJson(console.out, {{"archive", options.archive},
                            {"count", findings.entries},
                            {"bytes", findings.bytes},
                            {"intact", findings.damages.empty()},
                            {"damaged", std::move(damages)}});
}

} // namespace

void addVerifyCommand(CLI::App& program, Console& console) {
    auto const options = std::make_shared<VerifyOptions>();
    CLI::App* const command = program.add_subcommand("verify", "Checks an archive's table and every entry.");
    command->add_option("ARCHIVE", options->archive, "the archive file")->required();
    command->add_flag("--json", options->json, "as JSON");
    command->callback([options, &console] {
        Findings const findings = examine(*options, console);
        if (options->json)
            reportAsJson(*options, findings, console);
        else
            reportAsText(*options, findings, console);
        console.exitCode = findings.damages.empty() ? kSuccess : kFinding;
    });
}

} // namespace zel
