// zel pack

#include "archive_writer.h"
#include "commands.h"
#include "packing.h"
#include "pending_file.h"
#include "progress.h"

#include <CLI/CLI.hpp>
#include <filesystem>
#include <memory>

namespace zel {
namespace {

struct PackOptions {
    std::string directory;
    std::string archive;
    bool skipEmpty = false;
};

void writeArchive(ArchiveWriter const& writer, std::string const& archive, Console const& console) {
    PendingFile file(archive);
    Progress progress(console.terminal, "packing", writer.archiveSize());
    writer.write(file.stream(), [&progress](std::uint64_t bytes) { progress.advance(bytes); });
    file.commit();
}

ExitCode pack(PackOptions const& options, Console const& console) {
    if (!std::filesystem::is_directory(options.directory))
        throw Failure(kOperatingFailure, options.directory + " is no directory");
    PackingPlan const plan = planPacking(options.directory, options.archive, options.skipEmpty);
    for (std::string const& what : plan.leftOut)
        console.message("left out: " + what);
    for (std::string const& what : plan.refusals)
        console.message("refused: " + what);
    if (!plan.refusals.empty())
        return kFinding;

    ArchiveWriter const writer = writerFor(plan);
    writeArchive(writer, options.archive, console);
    console.out << "packed " << plan.files.size() << (plan.files.size() == 1 ? " file" : " files") << " into "
                << options.archive << ", " << writer.archiveSize() << " bytes\n";
    return kSuccess;
}

} // namespace

void addPackCommand(CLI::App& program, Console& console) {
    auto const options = std::make_shared<PackOptions>();
    CLI::App* const command = program.add_subcommand(
        "pack", "Packs a directory tree into an archive; names are folded to lower case. An archive that "
                "exists is replaced only when the new one is complete.");
    command->add_option("DIR", options->directory, "the directory to pack")->required();
    command->add_option("ARCHIVE", options->archive, "the archive file to write")->required();
    command->add_flag("--skip-empty", options->skipEmpty, "leave empty files out, instead of refusing them");
    command->callback([options, &console] { console.exitCode = pack(*options, console); });
}

} // namespace zel
