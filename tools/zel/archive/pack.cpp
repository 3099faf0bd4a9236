// zel pack

#include "archive/archive_writer.h"
#include "archive/packing.h"
#include "command_line/commands.h"
#include "command_line/progress.h"
#include "host/pending_file.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

namespace zel {
namespace {

struct PackOptions {
    std::string directory;
    std::string archive;
    PackingChoices choices;
};

void writeArchive(ArchiveWriter const& writer, std::filesystem::path const& output, Console const& console) {
    PendingFile file(output);
    Progress progress(console.terminal, "packing", writer.archiveSize());
    writer.write(file.stream(), [&progress](std::uint64_t bytes) { progress.advance(bytes); });
    file.commit();
}

void tell(PackingPlan const& plan, Console const& console) {
    auto const list = [&console](char const* label, std::vector<std::string> const& lines) {
        for (std::string const& line : lines)
            console.message(label + line);
    };
    list("followed: ", plan.followed);
    list("left out: ", plan.leftOut);
    list("refused: ", plan.refusals);
}

ExitCode pack(PackOptions const& options, Console const& console) {
    if (!std::filesystem::is_directory(options.directory))
        throw Failure(kOperatingFailure, printableName(options.directory) + " is no directory");
    std::filesystem::path const output = outputFile(options.archive);
    PackingPlan const plan = whileReading(
        options.directory, [&] { return planPacking(options.directory, output, options.choices); });
    tell(plan, console);
    if (!plan.refusals.empty())
        return kFinding;

    ArchiveWriter const writer = writerFor(plan);
    writeArchive(writer, output, console);
    console.out << "packed " << plan.files.size() << (plan.files.size() == 1 ? " file" : " files") << " into "
                << printableName(options.archive) << ", " << writer.archiveSize() << " bytes\n";
    return kSuccess;
}

} // namespace

void addPackCommand(CLI::App& program, Console& console) {
    auto const options = std::make_shared<PackOptions>();
    CLI::App* const command = program.add_subcommand(
        "pack", "Packs a directory tree into an archive; names are folded to lower case. An archive that "
                "exists is replaced only when the new one is complete and on the disk. Links to files are "
                "followed, and told; links to directories are left out.");
    command->add_option("DIR", options->directory, "the directory to pack")->required();
    command
        ->add_option("ARCHIVE", options->archive,
                     "the archive file to write; of a link the file that it leads to; no device")
        ->required();
    command->add_flag("--skip-empty", options->choices.skipEmpty,
                      "leave empty files out, instead of refusing them");
    command->add_flag("--no-links", options->choices.noLinks,
                      "leave links to files out, instead of following them");
    command->callback([options, &console] { console.exitCode = pack(*options, console); });
}

} // namespace zel
