// zel cat

#include "archive/mounted_archive.h"
#include "command_line/commands.h"

#include <CLI/CLI.hpp>
#include <memory>

namespace zel {
namespace {

struct CatOptions {
    std::string archive;
    std::string name;
};

void cat(CatOptions const& options, Console const& console) {
    MountedArchive archive(options.archive);
    auto const entry = archive.find(options.name);
    if (!entry)
        throw Failure(kOperatingFailure,
                      printableName(options.archive) + " has no entry " + printableName(options.name));
    archive.check(*entry); // before anything is printed
    archive.readInPieces(*entry, [&console](std::string const& piece) { console.out << piece; });
}

} // namespace

void addCatCommand(CLI::App& program, Console& console) {
    auto const options = std::make_shared<CatOptions>();
    CLI::App* const command = program.add_subcommand(
        "cat", "Writes one entry, whose checksum is right, to standard output as it is.");
    command->add_option("ARCHIVE", options->archive, "the archive file")->required();
    command->add_option("NAME", options->name, "the entry, in any case and with either slash")->required();
    command->callback([options, &console] { cat(*options, console); });
}

} // namespace zel
