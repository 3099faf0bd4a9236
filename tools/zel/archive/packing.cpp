// Looking through a directory tree: what is packed under which name, and what cannot be.

#include "archive/packing.h"

#include "archive/archive_writer.h"
#include "archive/names.h"
#include "command_line/failure.h"
#include "command_line/printable_text.h"
#include "host/host_files.h"

#include <algorithm>
#include <limits>
#include <system_error>
#include <utility>

namespace zel {
namespace {

namespace fs = std::filesystem;

/// Such a name would be taken for a drive or another directory when it is looked up.
bool cannotBeLookedUp(std::string const& relative) {
    return relative.find_first_of(":\\") != std::string::npos;
}

/// The host would hand such a name to the library in another encoding.
bool isAmbiguous(std::string const& relative) {
    return !namesKeepTheirBytes() && std::any_of(relative.begin(), relative.end(), [](char character) {
        return static_cast<unsigned char>(character) > 0x7F;
    });
}

bool isSameFile(fs::path const& a, fs::path const& b) {
    std::error_code error; // a file that does not exist is no other one
    return fs::equivalent(a, b, error);
}

[[noreturn]] void throwCannotRead(fs::path const& path, std::error_code reason) {
    throw Failure(kOperatingFailure, "cannot read " + printableName(path.string()) + ": " + reason.message());
}

/// Calls `look` with everything below a directory that is no directory itself.
template <class Look>
void lookThrough(fs::path const& directory, Look look) {
    std::vector<fs::path> pending = {directory};
    while (!pending.empty()) {
        fs::path const current = std::move(pending.back());
        pending.pop_back();
        std::error_code error;
        for (fs::directory_iterator entry(current, error); entry != fs::directory_iterator();
             entry.increment(error)) {
            std::error_code ignored; // met again where the entry is looked at
            if (!entry->is_symlink() && entry->is_directory(ignored))
                pending.push_back(entry->path());
            else
                look(*entry);
        }
        if (error)
            throwCannotRead(current, error);
    }
}

/// Puts what stands under a name where it belongs in the plan.
void addTo(PackingPlan& plan, fs::directory_entry const& entry, std::string const& relative,
           fs::path const& archive, PackingChoices const& choices) {
    fs::path const& source = entry.path();
    std::string const shown = printableName(source.string());
    bool const isLink = entry.is_symlink();
    std::error_code error;
    fs::file_status const status = entry.status(error);
    if (status.type() == fs::file_type::none && !isLink)
        throwCannotRead(source, error);
    if (isLink && fs::is_directory(status))
        return plan.leftOut.push_back(shown + " is a link to a directory");
    if (!fs::is_regular_file(status))
        return plan.leftOut.push_back(shown + " is no file");
    if (isLink && choices.noLinks)
        return plan.leftOut.push_back(shown + " is a link to a file");
    if (isSameFile(source, archive))
        return plan.leftOut.push_back(shown + " is the archive itself");
    if (cannotBeLookedUp(relative))
        return plan.refusals.push_back(shown + " has a ':' or a '\\' in its name");
    if (isAmbiguous(relative))
        return plan.refusals.push_back(shown + " has a character outside ASCII in its name");
    std::uint64_t const size = entry.file_size(error);
    if (error)
        throwCannotRead(source, error);
    if (size == 0)
        return (choices.skipEmpty ? plan.leftOut : plan.refusals).push_back(shown + " is empty");
    if (isLink)
        plan.followed.push_back(shown + " is a link to a file");
    plan.files.push_back({storedName(relative), source, size});
}

/// Each of the names but the first is told with the first.
void refuseNamesThatAreStoredAsOne(PackingPlan& plan) {
    PackedFile const* first = nullptr;
    for (PackedFile const& file : plan.files) {
        if (first == nullptr || file.name != first->name)
            first = &file;
        else
            plan.refusals.push_back(printableName(first->source.string()) + " and " +
                                    printableName(file.source.string()) + " would be the same entry");
    }
}

void readInPieces(fs::path const& source, ArchiveWriter::Take const& take) {
    constexpr std::size_t kPieceSize = 65536;
    whileReading(source.string(), [&] {
        SourceFile file(source);
        std::string buffer(kPieceSize, '\0');
        while (std::size_t const count = file.read(buffer.data(), buffer.size()))
            take(std::string_view(buffer).substr(0, count));
    });
}

} // namespace

PackingPlan planPacking(fs::path const& directory, fs::path const& archive, PackingChoices const& choices) {
    PackingPlan plan;
    lookThrough(directory, [&](fs::directory_entry const& entry) {
        addTo(plan, entry, entry.path().lexically_relative(directory).generic_string(), archive, choices);
    });
    std::sort(plan.files.begin(), plan.files.end(), [](PackedFile const& a, PackedFile const& b) {
        return a.name != b.name ? a.name < b.name : a.source < b.source;
    });

    refuseNamesThatAreStoredAsOne(plan);
    std::string const shown = printableName(directory.string());
    if (plan.files.empty() && plan.refusals.empty())
        plan.refusals.push_back(shown + " holds no file to pack");
    if (writerFor(plan).archiveSize() > static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max()))
        plan.refusals.push_back(shown + " holds more than 2 GiB");
    return plan;
}

ArchiveWriter writerFor(PackingPlan const& plan) {
    ArchiveWriter writer;
    for (PackedFile const& file : plan.files)
        writer.add(file.name, file.size,
                   [source = file.source](ArchiveWriter::Take const& take) { readInPieces(source, take); });
    return writer;
}

} // namespace zel
