// Looking through a directory tree: what is packed under which name, and what cannot be.

#include "packing.h"

#include "archive_writer.h"
#include "failure.h"
#include "fold.h"

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <limits>
#include <system_error>
#include <utility>

namespace zel {
namespace {

namespace fs = std::filesystem;

std::string storedName(std::string relative) {
    std::replace(relative.begin(), relative.end(), '/', '\\');
    return toLowerCase(std::move(relative));
}

/// Such a name would be taken for a drive or another directory when it is looked up.
bool cannotBeLookedUp(std::string const& relative) {
    return relative.find_first_of(":\\") != std::string::npos;
}

/// A host whose names are wider than bytes would hand such a name to the library in another encoding.
bool isAmbiguous(std::string const& relative) {
    return sizeof(fs::path::value_type) > 1 &&
           std::any_of(relative.begin(), relative.end(), [](char character) { return character < 0; });
}

bool isSameFile(fs::path const& a, fs::path const& b) {
    std::error_code error; // a file that does not exist is no other one
    return fs::equivalent(a, b, error);
}

void refuseNamesThatFoldToOne(PackingPlan& plan) {
    auto const& files = plan.files;
    for (std::size_t i = 0; i < files.size(); ++i) {
        for (std::size_t j = i + 1; j < files.size() && files[j].name == files[i].name; ++j)
            plan.refusals.push_back(files[i].source.string() + " and " + files[j].source.string() +
                                    " would be the same entry");
    }
}

std::string contentOf(PackedFile const& file) {
    std::ifstream stream(file.source, std::ios::binary);
    std::string content(static_cast<std::size_t>(file.size), '\0');
    stream.read(content.data(), static_cast<std::streamsize>(content.size()));
    if (!stream)
        throw Failure(kOperatingFailure, "cannot read " + file.source.string());
    if (stream.peek() != std::ifstream::traits_type::eof())
        throw Failure(kOperatingFailure, file.source.string() + " has grown while it was packed");
    return content;
}

} // namespace

PackingPlan planPacking(fs::path const& directory, fs::path const& archive, bool skipEmpty) {
    PackingPlan plan;
    for (fs::directory_entry const& entry : fs::recursive_directory_iterator(directory)) {
        fs::path const& source = entry.path();
        std::string const relative = source.lexically_relative(directory).generic_string();
        std::error_code error; // a link that leads nowhere is no file
        if (entry.is_symlink() && entry.is_directory(error))
            plan.leftOut.push_back(source.string() + " is a link to a directory");
        else if (entry.is_directory(error))
            continue;
        else if (!entry.is_regular_file(error))
            plan.leftOut.push_back(source.string() + " is no file");
        else if (isSameFile(source, archive))
            plan.leftOut.push_back(source.string() + " is the archive itself");
        else if (cannotBeLookedUp(relative))
            plan.refusals.push_back(source.string() + " has a ':' or a '\\' in its name");
        else if (isAmbiguous(relative))
            plan.refusals.push_back(source.string() + " has a character outside ASCII in its name");
        else if (entry.file_size() == 0)
            (skipEmpty ? plan.leftOut : plan.refusals).push_back(source.string() + " is empty");
        else
            plan.files.push_back({storedName(relative), source, entry.file_size()});
    }
    std::sort(plan.files.begin(), plan.files.end(), [](PackedFile const& a, PackedFile const& b) {
        return a.name != b.name ? a.name < b.name : a.source < b.source;
    });

    refuseNamesThatFoldToOne(plan);
    if (plan.files.empty() && plan.refusals.empty())
        plan.refusals.push_back(directory.string() + " holds no file to pack");
    if (writerFor(plan).archiveSize() > static_cast<std::uint64_t>(std::numeric_limits<std::int32_t>::max()))
        plan.refusals.push_back(directory.string() + " holds more than 2 GiB");
    return plan;
}

ArchiveWriter writerFor(PackingPlan const& plan) {
    ArchiveWriter writer;
    for (PackedFile const& file : plan.files)
        writer.add(file.name, file.size, [file] { return contentOf(file); });
    return writer;
}

} // namespace zel
