// zel extract

#include "archive/mounted_archive.h"
#include "archive/names.h"
#include "archive/unpacking.h"
#include "command_line/commands.h"
#include "command_line/progress.h"

#include <CLI/CLI.hpp>
#include <algorithm>
#include <memory>

namespace zel {
namespace {

struct ExtractOptions {
    std::string archive;
    std::string directory;
    std::string part;
};

std::vector<ArchiveEntry> entriesToExtract(ExtractOptions const& options, MountedArchive const& archive) {
    std::vector<ArchiveEntry> entries;
    std::copy_if(archive.entries().begin(), archive.entries().end(), std::back_inserter(entries),
                 [wanted = storedName(options.part)](ArchiveEntry const& entry) {
                     return storedName(entry.name).find(wanted) != std::string::npos;
                 });
    if (entries.empty())
        throw Failure(kOperatingFailure, printableName(options.archive) + " has no entry with " +
                                             printableName(options.part) + " in its name");
    return entries;
}

/// What kept an entry from being extracted.
struct Refusal {
    std::string entry;
    std::string reason;
    ExitCode exitCode;
};

class Extraction {
public:
    Extraction(ExtractOptions const& options, Console const& console)
        : m_archive(options.archive),
          m_entries(entriesToExtract(options, m_archive)),
          m_unpacking(options.directory),
          m_progress(console.terminal, "extracting", totalSize(m_entries)) {}

    /// Extracts every entry that can be; returns the others.
    std::vector<Refusal> run() {
        std::vector<Refusal> refusals;
        for (ArchiveEntry const& entry : m_entries) {
            try {
                extract(entry);
            } catch (Failure const& failure) {
                refusals.push_back({entry.name, failure.what(), failure.exitCode()});
            } catch (Zel::FileException const& exception) {
                refusals.push_back({entry.name, exception.getError(), kFinding});
            } catch (std::filesystem::filesystem_error const& error) {
                refusals.push_back({entry.name, error.what(), kOperatingFailure});
            }
        }
        return refusals;
    }

    std::size_t entryCount() const { return m_entries.size(); }

private:
    void extract(ArchiveEntry const& entry) {
        UnpackedFile file(m_unpacking, entry.name);
        m_archive.readInPieces(entry, [&](std::string const& piece) {
            file.write(piece);
            m_progress.advance(piece.size());
        });
        file.commit();
    }

    MountedArchive m_archive;
    std::vector<ArchiveEntry> m_entries;
    Unpacking m_unpacking;
    Progress m_progress;
};

ExitCode extract(ExtractOptions const& options, Console const& console) {
    auto extraction = std::make_unique<Extraction>(options, console);
    std::size_t const total = extraction->entryCount();
    std::vector<Refusal> const refusals = extraction->run();
    extraction.reset(); // and with it the progress bar, before anything is said

    ExitCode exitCode = kSuccess;
    for (Refusal const& refusal : refusals) {
        console.message("not extracted: " + printableName(refusal.entry) + ": " + refusal.reason);
        exitCode = std::max(exitCode, refusal.exitCode);
    }
    console.out << "extracted " << total - refusals.size() << " of " << total
                << (total == 1 ? " entry" : " entries") << " into " << printableName(options.directory)
                << '\n';
    return exitCode;
}

} // namespace

void addExtractCommand(CLI::App& program, Console& console) {
    auto const options = std::make_shared<ExtractOptions>();
    CLI::App* const command = program.add_subcommand(
        "extract", "Extracts an archive's entries below a directory, which is made when it is missing. Files "
                   "that are there are replaced, each when its new content is complete. What cannot be "
                   "extracted is named, and the rest goes on.");
    command->add_option("ARCHIVE", options->archive, "the archive file")->required();
    command->add_option("DIR", options->directory, "the directory to extract into")->required();
    command->add_option("PART", options->part,
                        "extract only entries with this in their names, in any case and with either slash");
    command->callback([options, &console] { console.exitCode = extract(*options, console); });
}

} // namespace zel
