// What a directory tree becomes in an archive.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace zel {

class ArchiveWriter;

struct PackedFile {
    std::string name; ///< as the archive stores it: below the directory, in lower case, with backslashes
    std::filesystem::path source;
    std::uint64_t size = 0;
};

struct PackingPlan {
    std::vector<PackedFile> files;     ///< in order of their names
    std::vector<std::string> followed; ///< links to files, which are packed
    std::vector<std::string> leftOut;  ///< what is no file, and why
    std::vector<std::string> refusals; ///< what keeps the tree from being packed
};

struct PackingChoices {
    bool skipEmpty = false; ///< leave empty files out, instead of refusing them
    bool noLinks = false;   ///< leave links to files out, instead of following them
};

/// Looks through the tree below `directory`. `archive`, where it lies inside, is left out, and so are links
/// to directories. The lists name what they hold printably. Throws Failure, naming what cannot be read.
PackingPlan planPacking(std::filesystem::path const& directory, std::filesystem::path const& archive,
                        PackingChoices const& choices);

/// The writer of what the plan holds; it reads each file when it writes it.
ArchiveWriter writerFor(PackingPlan const& plan);

} // namespace zel
