// zel diff

#include "archive/mounted_archive.h"
#include "command_line/commands.h"
#include "command_line/json.h"

#include <CLI/CLI.hpp>
#include <map>
#include <memory>

namespace zel {
namespace {

struct DiffOptions {
    std::string before;
    std::string after;
    bool json = false;
};

struct Differences {
    std::vector<std::string> added;
    std::vector<std::string> removed;
    std::vector<std::string> changed;
    std::size_t same = 0;

    bool any() const { return !added.empty() || !removed.empty() || !changed.empty(); }
};

using EntriesByName = std::map<std::string, Zel::Archive::FileInfo>;

/// One archive at a time is mounted, so that no entry of one can stand in for the other.
EntriesByName entriesOf(std::string const& hostPath) {
    MountedArchive const archive(hostPath);
    EntriesByName entries;
    for (auto const& [name, info] : archive.entries())
        entries.emplace(name, info);
    return entries;
}

Differences compare(EntriesByName const& before, EntriesByName const& after) {
    Differences differences;
    for (auto const& [name, info] : before) {
        auto const other = after.find(name);
        if (other == after.end())
            differences.removed.push_back(name);
        else if (other->second.size != info.size || other->second.crc != info.crc)
            differences.changed.push_back(name);
        else
            ++differences.same;
    }
    for (auto const& [name, info] : after) {
        if (!before.contains(name))
            differences.added.push_back(name);
    }
    return differences;
}

void reportAsText(Differences const& differences, std::ostream& out) {
    auto const list = [&out](char const* label, std::vector<std::string> const& names) {
        for (std::string const& name : names)
            out << label << printableName(name) << '\n';
    };
    list("added    ", differences.added);
    list("removed  ", differences.removed);
    list("changed  ", differences.changed);
    out << differences.added.size() << " added, " << differences.removed.size() << " removed, "
        << differences.changed.size() << " changed, " << differences.same << " the same\n";
}

void reportAsJson(DiffOptions const& options, Differences const& differences, std::ostream& out) {
    printJson(out, {{"before", options.before},
                    {"after", options.after},
                    {"identical", !differences.any()},
                    {"added", differences.added},
                    {"removed", differences.removed},
                    {"changed", differences.changed},
                    {"same", differences.same}});
}

} // namespace

void addDiffCommand(CLI::App& program, Console& console) {
    auto const options = std::make_shared<DiffOptions>();
    CLI::App* const command = program.add_subcommand(
        "diff",
        "Tells which entries archive B has more or fewer than archive A, or other content for, by size "
        "and checksum. The order of the entries does not matter.");
    command->add_option("A", options->before, "the archive file to compare with")->required();
    command->add_option("B", options->after, "the archive file to compare")->required();
    command->add_flag("--json", options->json, "as JSON");
    command->callback([options, &console] {
        Differences const differences = compare(entriesOf(options->before), entriesOf(options->after));
        if (options->json)
            reportAsJson(*options, differences, console.out);
        else
            reportAsText(differences, console.out);
        console.exitCode = differences.any() ? kFinding : kSuccess;
    });
}

} // namespace zel
