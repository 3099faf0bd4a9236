// zel list

#include "archive/mounted_archive.h"
#include "command_line/commands.h"
#include "command_line/json.h"

#include <CLI/CLI.hpp>
#include <iomanip>
#include <memory>

namespace zel {
namespace {

struct ListOptions {
    std::string archive;
    bool json = false;
};

void listAsText(MountedArchive const& archive, std::ostream& out) {
    out << "      size  crc32     name\n";
    for (auto const& [name, info] : archive.entries())
        out << std::setw(10) << info.size << "  " << std::hex << std::setfill('0') << std::setw(8) << info.crc
            << std::dec << std::setfill(' ') << "  " << printableName(name) << '\n';
    out << archive.entries().size() << " entries, " << totalSize(archive.entries()) << " bytes\n";
}

void listAsJson(ListOptions const& options, MountedArchive const& archive, std::ostream& out) {
    Json entries = Json::array();
    for (auto const& [name, info] : archive.entries())
        entries.push_back(
            {{"name", name}, {"size", info.size}, {"offset", info.offset}, {"crc32", info.crc}});
    printJson(out, {{"archive", options.archive},
                    {"count", archive.entries().size()},
                    {"bytes", totalSize(archive.entries())},
                    {"entries", std::move(entries)}});
}

} // namespace

void addListCommand(CLI::App& program, Console& console) {
    auto const options = std::make_shared<ListOptions>();
    CLI::App* const command =
        program.add_subcommand("list", "Lists the names, sizes and checksums of an archive's entries.");
    command->add_option("ARCHIVE", options->archive, "the archive file")->required();
    command->add_flag("--json", options->json, "as JSON");
    command->callback([options, &console] {
        MountedArchive const archive(options->archive);
        if (options->json)
            listAsJson(*options, archive, console.out);
        else
            listAsText(archive, console.out);
    });
}

} // namespace zel
